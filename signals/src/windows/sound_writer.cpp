#include "signals/sound_writer.h"

namespace signals {

struct SoundWriter::File {};

// Nobody gets here: `output_format` refuses every format before.
SoundWriter::SoundWriter(int, std::string name, SoundFormat format, std::size_t, int,
                         const std::vector<SoundText> &)
    : name_(std::move(name)), format_(format) {
  throw std::runtime_error(name_ + " cannot be written: it is a sound file");
}

SoundWriter::~SoundWriter() = default;

bool SoundWriter::write(std::span<const double>) { return false; }

void SoundWriter::finish() {}

}  // namespace signals
