#include "os/windows/arrival.h"

#include <windows.h>

#include <io.h>

namespace os {

bool has_arrived(int descriptor) {
  auto *const pipe = reinterpret_cast<HANDLE>(_get_osfhandle(descriptor));
  DWORD count = 0;
  return PeekNamedPipe(pipe, nullptr, 0, nullptr, &count, nullptr) == 0 || count > 0;
}

}  // namespace os
