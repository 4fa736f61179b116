// Without libsndfile there are no sound files, and so none of a format: the one answer is given
// where one would be read or written.
#include "signals/sound_format.h"

#include "designer/refusal.h"
#include "text/letters.h"

namespace signals {
namespace {

constexpr std::array<std::string_view, 11> extensions{"wav", "wave", "rf64", "w64", "flac", "aiff",
                                                      "aif", "ogg",  "oga",  "caf", "au"};

}  // namespace

bool is_sound_extension(std::string_view extension) {
  const std::string small = text::lower_case(extension);
  for (const std::string_view known : extensions)
    if (small == known) return true;
  return false;
}

SoundFormat output_format(std::string_view, std::optional<SoundFormat>,
                          std::optional<std::string_view>, std::size_t, int) {
  throw designer::Refusal(
      "sound files are not written by veltane for Windows; columns of numbers are, such as .csv");
}

int integer_bits(SoundFormat) { return 0; }

bool holds_floats(SoundFormat) { return true; }

std::string container_name(SoundFormat) { return "it"; }

std::string encoding_name(SoundFormat) { return "its encoding"; }

bool comes_as_it_is_written(SoundFormat) { return false; }

std::optional<std::uint64_t> most_bytes(SoundFormat) { return std::nullopt; }

std::size_t bytes_of_sample(SoundFormat) { return 0; }

}  // namespace signals
