// Memory for the lists of one computation.
#ifndef FILTERMATH_SRC_SCRATCH_H
#define FILTERMATH_SRC_SCRATCH_H

#include <array>
#include <cstddef>
#include <memory>
#include <new>
#include <vector>

namespace filtermath {

/**
 * Memory that is all given back at once, with its owner. What the lists of a filter of usual order
 * need is part of it, so that nothing is allocated for them. Beyond that it raises std::bad_alloc
 * where there is no memory. The standard library's std::pmr::monotonic_buffer_resource does the
 * same, but not all standard libraries have it yet.
 */
class Scratch {
 public:
  Scratch() = default;
  Scratch(const Scratch &) = delete;
  Scratch &operator=(const Scratch &) = delete;

  /** @return memory for this many bytes, aligned as for any basic type. */
  void *take(std::size_t bytes) {
    const std::size_t size = (bytes + alignment - 1) / alignment * alignment;
    if (size > left_) grow(size);
    std::byte *taken = next_;
    next_ += size;
    left_ -= size;
    return taken;
  }

 private:
  static constexpr std::size_t alignment = alignof(std::max_align_t);

  void grow(std::size_t least) {
    const std::size_t size = least > 2 * last_size_ ? least : 2 * last_size_;
    blocks_.push_back(std::unique_ptr<std::byte[]>(new std::byte[size]));
    next_ = blocks_.back().get();
    left_ = last_size_ = size;
  }

  alignas(std::max_align_t) std::array<std::byte, 4096> room_;
  std::byte *next_ = room_.data();
  std::size_t left_ = room_.size();
  std::size_t last_size_ = room_.size();
  std::vector<std::unique_ptr<std::byte[]>> blocks_;
};

/** Has a list live in a scratch memory, or, where there is none, as any other list. */
template <typename T>
class ScratchAllocator {
 public:
  using value_type = T;

  ScratchAllocator(Scratch *scratch = nullptr) : scratch_(scratch) {}
  template <typename U>
  ScratchAllocator(const ScratchAllocator<U> &other) : scratch_(other.scratch()) {}

  T *allocate(std::size_t count) {
    static_assert(alignof(T) <= alignof(std::max_align_t));
    if (scratch_ == nullptr) return std::allocator<T>().allocate(count);
    if (count > static_cast<std::size_t>(-1) / 2 / sizeof(T)) throw std::bad_array_new_length();
    return static_cast<T *>(scratch_->take(count * sizeof(T)));
  }
  void deallocate(T *list, std::size_t count) {
    if (scratch_ == nullptr) std::allocator<T>().deallocate(list, count);
  }

  Scratch *scratch() const { return scratch_; }
  bool operator==(const ScratchAllocator &) const = default;

 private:
  Scratch *scratch_;
};

template <typename T>
using List = std::vector<T, ScratchAllocator<T>>;

}  // namespace filtermath

#endif
