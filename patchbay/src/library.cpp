#include "library.h"

#include <dlfcn.h>
#include <sys/mman.h>

#include <cerrno>
#include <cstdint>
#include <system_error>

#include <fmt/format.h>

#include "elf.h"
#include "patchbay/host.h"

namespace patchbay {
namespace {

// Whether there is room to load a file. The loader maps it; its libraries have some already.
bool has_room_for(const std::filesystem::path &file) {
  std::error_code unseen;
  const auto size = static_cast<std::size_t>(std::filesystem::file_size(file, unseen));
  if (unseen || size == 0) return true;
  const std::size_t needed = 2 * size;
  void *room = mmap(nullptr, needed, PROT_NONE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
  if (room == MAP_FAILED) return false;
  munmap(room, needed);
  return true;
}

}  // namespace

void *open_library(const std::filesystem::path &file, const std::filesystem::path &shown) {
  if (const auto claimed = claimed_size(file),
      size = std::uint64_t{std::filesystem::file_size(file)};
      claimed > size)
    throw Error(fmt::format("'{}' cannot be loaded: it is truncated, {} bytes of at least {}",
                            shown.string(), size, claimed));
  errno = 0;
  void *library = dlopen(file.c_str(), RTLD_NOW | RTLD_LOCAL);
  if (library != nullptr) return library;
  // The loader's own words for this are often others.
  if (errno == ENOMEM || !has_room_for(file))
    throw std::runtime_error(fmt::format("'{}' cannot be loaded: {}", shown.string(),
                                         std::generic_category().message(ENOMEM)));
  throw Error(fmt::format("'{}' cannot be loaded: {}", shown.string(), dlerror()));
}

void (*function_in(void *library, const char *name))() {
  return reinterpret_cast<void (*)()>(dlsym(library, name));
}

void close_library(void *library) { dlclose(library); }

}  // namespace patchbay
