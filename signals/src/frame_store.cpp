#include "frame_store.h"

namespace signals {

void FrameStore::append(std::span<const double> frames) {
  const std::uint64_t first = size_;
  size_ += frames.size() / channels_;
  write(first, frames);
}

void FrameStore::read(std::uint64_t first, std::span<double> frames) const {
  bytes_.read(first * channels_ * sizeof(double), reinterpret_cast<char *>(frames.data()),
              frames.size_bytes());
}

void FrameStore::write(std::uint64_t first, std::span<const double> frames) {
  bytes_.write(first * channels_ * sizeof(double), reinterpret_cast<const char *>(frames.data()),
               frames.size_bytes());
}

}  // namespace signals
