#include "signals/sound_writer.h"

#include <sndfile.h>

#include <algorithm>
#include <cerrno>
#include <cmath>
#include <stdexcept>
#include <system_error>
#include <utility>

#include <fmt/format.h>

#include "sound_texts.h"

namespace signals {

struct SoundWriter::File {
  SF_INFO info{};
  SNDFILE *handle = nullptr;
  ~File() {
    if (handle != nullptr) sf_close(handle);
  }
};

SoundWriter::SoundWriter(int descriptor, std::string name, SoundFormat format, std::size_t channels,
                         int samplerate, const std::vector<SoundText> &texts)
    : name_(std::move(name)), format_(format), file_(std::make_unique<File>()) {
  file_->info.format = format.container | format.encoding;
  file_->info.channels = static_cast<int>(channels);
  file_->info.samplerate = samplerate;
  file_->handle = sf_open_fd(descriptor, SFM_WRITE, &file_->info, SF_FALSE);
  if (file_->handle == nullptr)
    throw std::runtime_error(fmt::format("{} cannot be written: {}", name_, sf_strerror(nullptr)));
  // It would hold the time of day: the same signal gives the same file.
  sf_command(file_->handle, SFC_SET_ADD_PEAK_CHUNK, nullptr, SF_FALSE);
  set_texts(file_->handle, texts);
}

SoundWriter::~SoundWriter() = default;

bool SoundWriter::write(std::span<const double> frames) {
  if (std::any_of(frames.begin(), frames.end(), [](double x) { return !std::isfinite(x); }))
    throw std::runtime_error("the output is larger than any double");
  bytes_ += frames.size() * bytes_of_sample(format_);
  if (const auto most = most_bytes(format_); most && bytes_ > *most)
    throw std::runtime_error(
        fmt::format("{} would be larger than the 4 GiB that {} holds; a file that ends in .rf64 or "
                    ".w64 holds more",
                    name_, container_name(format_)));
  return integer_bits(format_) > 0 ? write_integers(frames) : write_numbers(frames);
}

// The bits of a sample are the upper ones of an int.
bool SoundWriter::write_integers(std::span<const double> frames) {
  const int bits = integer_bits(format_);
  const double scale = std::ldexp(1.0, bits - 1);
  const double step = std::ldexp(1.0, 32 - bits);
  integers_.resize(frames.size());
  for (std::size_t i = 0; i < frames.size(); ++i) {
    const double whole = std::nearbyint(frames[i] * scale);
    // Full scale itself, 1, is one step above the largest: rounding, not clipping.
    if (whole > scale || whole < -scale) ++clipped_;
    integers_[i] = static_cast<int>(std::clamp(whole, -scale, scale - 1.0) * step);
  }
  errno = 0;
  return complete(
      sf_write_int(file_->handle, integers_.data(), static_cast<sf_count_t>(integers_.size())),
      frames.size());
}

bool SoundWriter::write_numbers(std::span<const double> frames) {
  numbers_.assign(frames.begin(), frames.end());
  if (!holds_floats(format_))
    for (double &number : numbers_) {
      if (std::abs(number) > 1.0) ++clipped_;
      number = std::clamp(number, -1.0, 1.0);
    }
  errno = 0;
  return complete(
      sf_write_double(file_->handle, numbers_.data(), static_cast<sf_count_t>(numbers_.size())),
      frames.size());
}

bool SoundWriter::complete(std::int64_t written, std::size_t samples) const {
  if (written == static_cast<std::int64_t>(samples)) return true;
  if (errno == EPIPE) return false;
  throw std::runtime_error(fmt::format(
      "{} cannot be written: {}", name_,
      errno != 0 ? std::generic_category().message(errno) : sf_strerror(file_->handle)));
}

void SoundWriter::finish() {
  SNDFILE *const handle = std::exchange(file_->handle, nullptr);
  if (const int error = sf_close(handle); error != 0)
    throw std::runtime_error(
        fmt::format("{} cannot be written: {}", name_, sf_error_number(error)));
}

}  // namespace signals
