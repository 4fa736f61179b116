#include "signals/sound_reader.h"

#include <fmt/format.h>

#include "designer/refusal.h"

namespace signals {

struct SoundReader::File {};

SoundReader::SoundReader(int, std::string name) : name_(std::move(name)) {
  throw designer::Refusal(
      fmt::format("{} is not columns of numbers, and sound files are not read by veltane for "
                  "Windows",
                  name_));
}

SoundReader::~SoundReader() = default;

SoundFormat SoundReader::format() const { return {}; }

std::size_t SoundReader::channels() const { return 0; }

double SoundReader::samplerate() const { return 0.0; }

double SoundReader::fraction() const { return -1.0; }

std::size_t SoundReader::read(std::span<double>) { return 0; }

}  // namespace signals
