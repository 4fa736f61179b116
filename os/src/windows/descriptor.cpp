#include "os/descriptor.h"

#include <windows.h>

#include <fcntl.h>
#include <io.h>

#include <algorithm>
#include <cerrno>

#include "wide.h"

namespace os {
namespace {

constexpr std::size_t most_at_once = std::size_t{1} << 20U;

HANDLE handle_of(int descriptor) { return reinterpret_cast<HANDLE>(_get_osfhandle(descriptor)); }

// What the C library calls an error of the system.
int number_of(DWORD error) {
  switch (error) {
    case ERROR_NO_DATA:
    case ERROR_BROKEN_PIPE: return EPIPE;
    case ERROR_DISK_FULL: return ENOSPC;
    case ERROR_INVALID_HANDLE: return EBADF;
    case ERROR_ACCESS_DENIED: return EACCES;
    default: return EIO;
  }
}

template <typename Call, typename Bytes>
std::ptrdiff_t at_place(Call call, int descriptor, Bytes bytes, std::size_t size,
                        std::uint64_t at) {
  OVERLAPPED place{};
  place.Offset = static_cast<DWORD>(at);
  place.OffsetHigh = static_cast<DWORD>(at >> 32U);
  DWORD count = 0;
  auto *const file = handle_of(descriptor);
  // These calls move the place of plain reading, too.
  const auto before = _lseeki64(descriptor, 0, SEEK_CUR);
  const BOOL done =
      call(file, bytes, static_cast<DWORD>(std::min(size, most_at_once)), &count, &place);
  const DWORD error = GetLastError();
  _lseeki64(descriptor, before, SEEK_SET);
  if (done != 0 || error == ERROR_HANDLE_EOF) return static_cast<std::ptrdiff_t>(count);
  errno = number_of(error);
  return -1;
}

}  // namespace

int open_to_read(const std::string &file) {
  const std::wstring name = wide(file);
  const DWORD attributes = GetFileAttributesW(name.c_str());
  if (attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0) {
    errno = EISDIR;
    return -1;
  }
  return _wopen(name.c_str(), _O_RDONLY | _O_BINARY | _O_NOINHERIT);
}

std::ptrdiff_t read_some(int descriptor, char *bytes, std::size_t size) {
  return _read(descriptor, bytes, static_cast<unsigned>(std::min(size, most_at_once)));
}

// By the system's call: the C library has no number of its own for a reader that has gone, nor for
// a full disk.
int write_all(int descriptor, std::string_view text) {
  while (!text.empty()) {
    const auto size = static_cast<DWORD>(std::min(text.size(), most_at_once));
    DWORD written = 0;
    if (WriteFile(handle_of(descriptor), text.data(), size, &written, nullptr) == 0)
      return number_of(GetLastError());
    if (written == 0) return EIO;
    text.remove_prefix(written);
  }
  return 0;
}

std::ptrdiff_t read_at(int descriptor, char *bytes, std::size_t size, std::uint64_t at) {
  return at_place(ReadFile, descriptor, bytes, size, at);
}

std::ptrdiff_t write_at(int descriptor, const char *bytes, std::size_t size, std::uint64_t at) {
  return at_place(WriteFile, descriptor, bytes, size, at);
}

}  // namespace os
