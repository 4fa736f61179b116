/**
 * Counts the allocations of a thread. A program that links this has its malloc,
 * calloc, realloc, reallocarray, aligned_alloc, posix_memalign and memalign
 * replaced for all of its libraries, loaded modules included; `operator new`
 * ends there too. Needs glibc.
 */
#ifndef BENCH_ALLOCATIONS_H
#define BENCH_ALLOCATIONS_H

#include <cstddef>

namespace bench {

struct Allocations {
  std::size_t count; /**< calls; one that resizes a block is one too */
  std::size_t bytes; /**< that were asked for; a resized block with its new size */
};

/** @return what this thread has allocated since it began; what it freed stays in. */
Allocations allocations() noexcept;

inline Allocations operator-(const Allocations &a, const Allocations &b) noexcept {
  return {a.count - b.count, a.bytes - b.bytes};
}

}  // namespace bench

#endif
