#include "runtime/blocks.h"

#include <cstddef>
#include <cstdlib>
#include <cstring>
#include <limits>
#include <new>

namespace runtime {
namespace {

// The size is stored in front of the block, in a slot that keeps the block aligned
// for any type.
struct alignas(std::max_align_t) Header {
  t_long size;
};

// Up to here it is cheaper to fill memory with zeros than to ask for some that is cleared: the
// C library keeps small blocks at hand for malloc, and not for calloc. Beyond, fresh pages are
// zero without being touched.
constexpr std::size_t most_filled = 4096;

Header *header_of(void *block) noexcept { return static_cast<Header *>(block) - 1; }

// As `new` asks for memory: a handler that the program has set is called when there is none, and
// may end the program, or free some memory so that the request can be repeated.
template <typename Ask>
Header *obtained(const Ask &ask) noexcept {
  void *memory = ask();
  while (memory == nullptr) {
    const std::new_handler handler = std::get_new_handler();
    if (handler == nullptr) return nullptr;
    try {
      handler();
    } catch (const std::bad_alloc &) {
      return nullptr;
    }
    memory = ask();
  }
  return static_cast<Header *>(memory);
}

bool representable(t_long size) noexcept {
  return size >= 0 &&
         size <= std::numeric_limits<std::ptrdiff_t>::max() - static_cast<t_long>(sizeof(Header));
}

}  // namespace

void *new_block(t_long size, bool clear) noexcept {
  if (!representable(size)) return nullptr;
  const auto bytes = sizeof(Header) + static_cast<std::size_t>(size);
  const bool large = bytes > most_filled;
  Header *header =
      obtained([&] { return clear && large ? std::calloc(1, bytes) : std::malloc(bytes); });
  if (header == nullptr) return nullptr;
  header->size = size;
  if (clear && !large) std::memset(header + 1, 0, static_cast<std::size_t>(size));
  return header + 1;
}

void *resize_block(void *block, t_long size) noexcept {
  if (block == nullptr) return new_block(size, true);
  if (!representable(size)) return nullptr;
  const t_long old_size = block_size(block);
  Header *header = obtained([&] {
    return std::realloc(header_of(block), sizeof(Header) + static_cast<std::size_t>(size));
  });
  if (header == nullptr) return nullptr;
  header->size = size;
  auto *bytes = reinterpret_cast<std::byte *>(header + 1);
  if (size > old_size) std::memset(bytes + old_size, 0, static_cast<std::size_t>(size - old_size));
  return bytes;
}

void free_block(void *block) noexcept {
  if (block != nullptr) std::free(header_of(block));
}

t_long block_size(const void *block) noexcept {
  return (static_cast<const Header *>(block) - 1)->size;
}

}  // namespace runtime
