#include "allocations.h"

#include <bit>
#include <cerrno>

namespace {

// Plain numbers of a thread: an atomic addition would take as long as a short
// allocation, and be part of what is timed.
constinit thread_local bench::Allocations total{0, 0};

void *counted(void *block, std::size_t bytes) noexcept {
  if (block != nullptr) {
    ++total.count;
    total.bytes += bytes;
  }
  return block;
}

}  // namespace

bench::Allocations bench::allocations() noexcept { return total; }

extern "C" {

#define SHOWN __attribute__((visibility("default")))

void *__libc_malloc(std::size_t size);
void *__libc_calloc(std::size_t count, std::size_t size);
void *__libc_realloc(void *block, std::size_t size);
void *__libc_memalign(std::size_t alignment, std::size_t size);

SHOWN void *malloc(std::size_t size) { return counted(__libc_malloc(size), size); }

SHOWN void *calloc(std::size_t count, std::size_t size) {
  return counted(__libc_calloc(count, size), count * size);
}

SHOWN void *realloc(void *block, std::size_t size) {
  return counted(__libc_realloc(block, size), size);
}

SHOWN void *reallocarray(void *block, std::size_t count, std::size_t size) {
  std::size_t bytes = 0;
  if (__builtin_mul_overflow(count, size, &bytes)) {
    errno = ENOMEM;
    return nullptr;
  }
  return realloc(block, bytes);
}

SHOWN void *memalign(std::size_t alignment, std::size_t size) {
  return counted(__libc_memalign(alignment, size), size);
}

SHOWN void *aligned_alloc(std::size_t alignment, std::size_t size) {
  return memalign(alignment, size);
}

SHOWN int posix_memalign(void **block, std::size_t alignment, std::size_t size) {
  if (!std::has_single_bit(alignment) || alignment % sizeof(void *) != 0) return EINVAL;
  void *found = memalign(alignment, size);
  if (found == nullptr) return ENOMEM;
  *block = found;
  return 0;
}

#undef SHOWN
}
