#include "elf.h"

#include <link.h>

#include <algorithm>
#include <bit>
#include <cstring>
#include <fstream>
#include <limits>

namespace patchbay {
namespace {

constexpr unsigned char native_class = sizeof(void *) == 8 ? ELFCLASS64 : ELFCLASS32;
constexpr unsigned char native_order =
    std::endian::native == std::endian::little ? ELFDATA2LSB : ELFDATA2MSB;

// Where `count` items of a size end; if that overflows, beyond the end of any file.
std::uint64_t end_of(std::uint64_t offset, std::uint64_t count, std::uint64_t size) {
  std::uint64_t length = 0;
  std::uint64_t end = 0;
  if (__builtin_mul_overflow(count, size, &length) || __builtin_add_overflow(offset, length, &end))
    return std::numeric_limits<std::uint64_t>::max();
  return end;
}

template <typename Record>
bool read(std::ifstream &file, std::uint64_t offset, Record &record) {
  file.seekg(static_cast<std::streamoff>(offset));
  return !file.read(reinterpret_cast<char *>(&record), sizeof record).fail();
}

}  // namespace

std::uint64_t claimed_size(const std::filesystem::path &path) {
  std::ifstream file(path, std::ios::binary);
  unsigned char identity[EI_NIDENT]{};
  if (!read(file, 0, identity) || std::memcmp(identity, ELFMAG, SELFMAG) != 0 ||
      identity[EI_CLASS] != native_class || identity[EI_DATA] != native_order)
    return 0;
  ElfW(Ehdr) header{};
  if (!read(file, 0, header)) return sizeof header;
  std::uint64_t size = end_of(header.e_phoff, header.e_phnum, header.e_phentsize);
  if (header.e_shoff != 0)
    size = std::max(size, end_of(header.e_shoff, std::max<std::uint64_t>(header.e_shnum, 1),
                                 header.e_shentsize));
  for (std::uint64_t i = 0; i < header.e_phnum; ++i) {
    ElfW(Phdr) segment{};
    if (!read(file, end_of(header.e_phoff, i, header.e_phentsize), segment)) break;
    size = std::max(size, end_of(segment.p_offset, segment.p_filesz, 1));
  }
  return size;
}

}  // namespace patchbay
