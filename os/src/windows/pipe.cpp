#include "os/pipe.h"

#include <windows.h>

#include <io.h>

#include "os/windows/arrival.h"

namespace os {

std::string waiting_bytes(int descriptor, std::size_t most) {
  auto *const pipe = reinterpret_cast<HANDLE>(_get_osfhandle(descriptor));
  while (!has_arrived(descriptor)) Sleep(5);  // a pause that a person does not notice
  std::string bytes(most, '\0');
  DWORD count = 0;
  PeekNamedPipe(pipe, bytes.data(), static_cast<DWORD>(most), &count, nullptr, nullptr);
  bytes.resize(count);
  return bytes;
}

}  // namespace os
