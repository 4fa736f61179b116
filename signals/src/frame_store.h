// Frames in a temporary file, for signals that are needed from their end.
#ifndef SIGNALS_FRAME_STORE_H
#define SIGNALS_FRAME_STORE_H

#include <cstddef>
#include <cstdint>
#include <span>

#include "temporary_bytes.h"

namespace signals {

/** They wait in a temporary file, 8 bytes a sample. Raises std::runtime_error when that cannot be
 *  made, read or written. */
class FrameStore {
 public:
  /** @param channels  of each frame */
  explicit FrameStore(std::size_t channels) : channels_(channels) {}

  /** @return how many frames it holds. */
  std::uint64_t size() const { return size_; }

  void append(std::span<const double> frames);

  /** Both take frames that it holds, from number `first` on. */
  void read(std::uint64_t first, std::span<double> frames) const;
  void write(std::uint64_t first, std::span<const double> frames);

 private:
  std::size_t channels_;
  std::uint64_t size_ = 0;
  TemporaryBytes bytes_;
};

}  // namespace signals

#endif
