#include "os/temporary.h"

#include <windows.h>

#include <fcntl.h>
#include <io.h>

#include <atomic>
#include <cerrno>
#include <cstdint>
#include <string>

namespace os {

std::filesystem::path temporary_folder() {
  std::error_code none;
  const std::filesystem::path folder = std::filesystem::temp_directory_path(none);
  return none ? "." : folder;
}

// It has a name, and goes with its last handle.
int open_temporary() {
  static std::atomic<unsigned> made = 0;
  const std::filesystem::path folder = temporary_folder();
  for (;;) {
    const std::filesystem::path name =
        folder / (".veltane-" + std::to_string(GetCurrentProcessId()) + "-" +
                  std::to_string(GetTickCount64()) + "-" + std::to_string(made++));
    HANDLE file =
        CreateFileW(name.c_str(), GENERIC_READ | GENERIC_WRITE | DELETE,
                    FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr, CREATE_NEW,
                    FILE_ATTRIBUTE_TEMPORARY | FILE_FLAG_DELETE_ON_CLOSE, nullptr);
    if (file != INVALID_HANDLE_VALUE)
      return _open_osfhandle(reinterpret_cast<std::intptr_t>(file),
                             _O_RDWR | _O_BINARY | _O_NOINHERIT);
    if (GetLastError() == ERROR_FILE_EXISTS) continue;
    errno = GetLastError() == ERROR_ACCESS_DENIED ? EACCES : ENOENT;
    return -1;
  }
}

}  // namespace os
