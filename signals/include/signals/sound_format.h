/** What a sound file is: its container, and how it holds samples. */
#ifndef SIGNALS_SOUND_FORMAT_H
#define SIGNALS_SOUND_FORMAT_H

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace signals {

/** A container and an encoding, as libsndfile numbers them. */
struct SoundFormat {
  int container;
  int encoding;
};

/** The encodings that can be asked for, by their words; the file's own where none is. */
inline constexpr std::array<std::string_view, 6> encoding_words{"8",  "16",    "24",
                                                                "32", "float", "double"};

/** @param extension  of a file name, without its point; capitals count as small letters
 *  @return whether files with it are sound files that can be written */
bool is_sound_extension(std::string_view extension);

/**
 * The format of a file to write.
 * @param extension  as above; empty, or not of a sound file, for the container of the input
 * @param input      the format of the input; none where it was no sound file, and then WAV and
 *                   floats take the place of its own
 * @param bits       one of `encoding_words`; none for the encoding of the input or, where the
 *                   container cannot hold it, the one that loses least
 * Raises designer::Refusal when the container does not hold so many channels, such a sample rate,
 * or what `bits` asks for.
 */
SoundFormat output_format(std::string_view extension, std::optional<SoundFormat> input,
                          std::optional<std::string_view> bits, std::size_t channels,
                          int samplerate);

/** @return how many bits an integer sample has; 0 where samples are floats, or are compressed with
 *          losses. */
int integer_bits(SoundFormat format);

/** @return whether samples are floats, so that they may be above full scale. */
bool holds_floats(SoundFormat format);

/** @return such as "WAV" and "16-bit integers". */
std::string container_name(SoundFormat format);
std::string encoding_name(SoundFormat format);

/** @return whether a file can go into a pipe while it is written: its beginning does not hold its
 *          length. */
bool comes_as_it_is_written(SoundFormat format);

/** @return how many bytes of samples the container may hold; none if there is no end. */
std::optional<std::uint64_t> most_bytes(SoundFormat format);

/** @return bytes of a sample; 0 where samples are compressed. */
std::size_t bytes_of_sample(SoundFormat format);

}  // namespace signals

#endif
