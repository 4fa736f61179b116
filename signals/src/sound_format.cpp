#include "signals/sound_format.h"

#include <sndfile.h>

#include <algorithm>

#include <fmt/format.h>

#include "designer/refusal.h"
#include "text/letters.h"

namespace signals {
namespace {

struct Container {
  std::string_view extension;
  int code;
  std::string_view name;
};

// The first with a code gives it its name.
constexpr std::array containers{
    Container{"wav", SF_FORMAT_WAV, "WAV"},    Container{"wave", SF_FORMAT_WAV, "WAV"},
    Container{"wav", SF_FORMAT_WAVEX, "WAV"},  Container{"rf64", SF_FORMAT_RF64, "RF64"},
    Container{"w64", SF_FORMAT_W64, "Wave64"}, Container{"flac", SF_FORMAT_FLAC, "FLAC"},
    Container{"aiff", SF_FORMAT_AIFF, "AIFF"}, Container{"aif", SF_FORMAT_AIFF, "AIFF"},
    Container{"ogg", SF_FORMAT_OGG, "Ogg"},    Container{"oga", SF_FORMAT_OGG, "Ogg"},
    Container{"caf", SF_FORMAT_CAF, "CAF"},    Container{"au", SF_FORMAT_AU, "AU"}};

struct Encoding {
  std::string_view word;  // empty where it cannot be asked for
  int code;
  int integer_bits;
  std::size_t bytes;
  std::string_view name;
};

// Of two with the same word a container holds only one.
constexpr std::array encodings{Encoding{"double", SF_FORMAT_DOUBLE, 0, 8, "64-bit floats"},
                               Encoding{"32", SF_FORMAT_PCM_32, 32, 4, "32-bit integers"},
                               Encoding{"float", SF_FORMAT_FLOAT, 0, 4, "32-bit floats"},
                               Encoding{"24", SF_FORMAT_PCM_24, 24, 3, "24-bit integers"},
                               Encoding{"16", SF_FORMAT_PCM_16, 16, 2, "16-bit integers"},
                               Encoding{"8", SF_FORMAT_PCM_S8, 8, 1, "8-bit integers"},
                               Encoding{"8", SF_FORMAT_PCM_U8, 8, 1, "8-bit integers"},
                               Encoding{"", SF_FORMAT_VORBIS, 0, 0, "Vorbis"},
                               Encoding{"", SF_FORMAT_OPUS, 0, 0, "Opus"}};

bool is_wav(int container) { return container == SF_FORMAT_WAV || container == SF_FORMAT_WAVEX; }

const Container *container_for(std::string_view extension) {
  const std::string small = text::lower_case(extension);
  const auto found =
      std::find_if(containers.begin(), containers.end(),
                   [&](const Container &container) { return container.extension == small; });
  return found == containers.end() ? nullptr : &*found;
}

const Encoding *encoding_of(int code) {
  const auto found = std::find_if(encodings.begin(), encodings.end(),
                                  [&](const Encoding &encoding) { return encoding.code == code; });
  return found == encodings.end() ? nullptr : &*found;
}

bool holds(int container, int encoding, std::size_t channels, int samplerate) {
  SF_INFO info{};
  info.format = container | encoding;
  info.channels = static_cast<int>(channels);
  info.samplerate = samplerate;
  return sf_format_check(&info) != 0;
}

// Without losses where there is a choice: with floats where the input had some or was no sound
// file, and else with integers of no more bits than are of use.
constexpr std::array lossless_order{SF_FORMAT_FLOAT,  SF_FORMAT_PCM_24, SF_FORMAT_PCM_16,
                                    SF_FORMAT_PCM_S8, SF_FORMAT_PCM_U8, SF_FORMAT_VORBIS,
                                    SF_FORMAT_OPUS};

}  // namespace

bool is_sound_extension(std::string_view extension) { return container_for(extension) != nullptr; }

SoundFormat output_format(std::string_view extension, std::optional<SoundFormat> input,
                          std::optional<std::string_view> bits, std::size_t channels,
                          int samplerate) {
  SoundFormat format{SF_FORMAT_WAV, SF_FORMAT_FLOAT};
  if (input) format = *input;
  if (const Container *container = container_for(extension))
    if (!(is_wav(format.container) && is_wav(container->code))) format.container = container->code;
  const auto fits = [&](int encoding) {
    return holds(format.container, encoding, channels, samplerate);
  };
  if (bits) {
    for (const Encoding &encoding : encodings)
      if (encoding.word == *bits && fits(encoding.code)) return {format.container, encoding.code};
    std::string held;
    for (const std::string_view word : encoding_words)
      if (std::any_of(encodings.begin(), encodings.end(), [&](const Encoding &encoding) {
            return encoding.word == word && fits(encoding.code);
          }))
        held += fmt::format("{}{}", held.empty() ? "" : ", ", word);
    throw designer::Refusal(held.empty() ? fmt::format("{} takes no --bits", container_name(format))
                                         : fmt::format("{} does not hold --bits {}; it holds {}",
                                                       container_name(format), *bits, held));
  }
  if (fits(format.encoding)) return format;
  // Eight bits are signed in one container and unsigned in another.
  for (const Encoding &encoding : encodings)
    if (integer_bits(format) > 0 && encoding.integer_bits == integer_bits(format) &&
        fits(encoding.code))
      return {format.container, encoding.code};
  // Half the bytes of a float are enough for what had losses already.
  if (!holds_floats(format) && integer_bits(format) == 0 && fits(SF_FORMAT_PCM_16))
    return {format.container, SF_FORMAT_PCM_16};
  for (const int encoding : lossless_order)
    if (fits(encoding)) return {format.container, encoding};
  throw designer::Refusal(fmt::format("{} does not hold {} channels at {} Hz",
                                      container_name(format), channels, samplerate));
}

int integer_bits(SoundFormat format) {
  const Encoding *encoding = encoding_of(format.encoding);
  return encoding != nullptr ? encoding->integer_bits : 0;
}

bool holds_floats(SoundFormat format) {
  return format.encoding == SF_FORMAT_FLOAT || format.encoding == SF_FORMAT_DOUBLE;
}

std::string container_name(SoundFormat format) {
  for (const Container &container : containers)
    if (container.code == format.container) return std::string(container.name);
  SF_FORMAT_INFO info{};
  info.format = format.container;
  return sf_command(nullptr, SFC_GET_FORMAT_INFO, &info, sizeof info) == 0 ? info.name : "it";
}

std::string encoding_name(SoundFormat format) {
  if (const Encoding *encoding = encoding_of(format.encoding)) return std::string(encoding->name);
  SF_FORMAT_INFO info{};
  info.format = format.encoding;
  return sf_command(nullptr, SFC_GET_FORMAT_INFO, &info, sizeof info) == 0 ? info.name
                                                                           : "its encoding";
}

bool comes_as_it_is_written(SoundFormat format) { return format.container == SF_FORMAT_AU; }

std::optional<std::uint64_t> most_bytes(SoundFormat format) {
  constexpr std::uint64_t header = 4096;
  if (is_wav(format.container) || format.container == SF_FORMAT_AIFF ||
      format.container == SF_FORMAT_AU)
    return (std::uint64_t{1} << 32U) - header;
  return std::nullopt;
}

std::size_t bytes_of_sample(SoundFormat format) {
  const Encoding *encoding = encoding_of(format.encoding);
  return encoding != nullptr && format.container != SF_FORMAT_FLAC ? encoding->bytes : 0;
}

}  // namespace signals
