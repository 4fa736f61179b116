// Memory for the lists of one computation.
#ifndef FILTERMATH_SRC_SCRATCH_H
#define FILTERMATH_SRC_SCRATCH_H

#include <array>
#include <cstddef>
#include <memory_resource>

namespace filtermath {

/**
 * Memory that is all given back at once, with its owner. What the lists of a filter of usual order
 * need is part of it, so that nothing is allocated for them. Beyond that it raises std::bad_alloc
 * where there is no memory.
 */
class Scratch {
 public:
  Scratch() : memory_(room_.data(), room_.size()) {}
  Scratch(const Scratch &) = delete;
  Scratch &operator=(const Scratch &) = delete;
  operator std::pmr::memory_resource *() { return &memory_; }

 private:
  alignas(std::max_align_t) std::array<std::byte, 4096> room_;
  std::pmr::monotonic_buffer_resource memory_;
};

}  // namespace filtermath

#endif
