#include "os/program.h"

#include <windows.h>

#include <fcntl.h>
#include <io.h>

#include <cstdio>
#include <cstdlib>
#include <string>
#include <system_error>

namespace os {
namespace {

UINT code_page_before = 0;

// @return whether it is a console that does as its escape sequences say
bool takes_escapes(DWORD stream) {
  auto *const handle = GetStdHandle(stream);
  DWORD mode = 0;
  return GetConsoleMode(handle, &mode) != 0 &&
         SetConsoleMode(handle, mode | ENABLE_VIRTUAL_TERMINAL_PROCESSING) != 0;
}

bool is_console(DWORD stream) {
  DWORD mode = 0;
  return GetConsoleMode(GetStdHandle(stream), &mode) != 0;
}

}  // namespace

std::filesystem::path program_file() {
  std::wstring name(32768, L'\0');  // the longest that there is
  const DWORD size = GetModuleFileNameW(nullptr, name.data(), static_cast<DWORD>(name.size()));
  if (size == 0)
    throw std::filesystem::filesystem_error(
        "the program's file",
        std::error_code(static_cast<int>(GetLastError()), std::system_category()));
  name.resize(size);
  return std::filesystem::canonical(name);
}

// The console belongs to the shell as well, which gets its own code page back.
void prepare_streams() {
  for (std::FILE *stream : {stdin, stdout, stderr}) _setmode(_fileno(stream), _O_BINARY);
  for (const DWORD stream : {STD_OUTPUT_HANDLE, STD_ERROR_HANDLE}) {
    if (!is_console(stream)) continue;
    if (code_page_before == 0) {
      code_page_before = GetConsoleOutputCP();
      SetConsoleOutputCP(CP_UTF8);
      std::atexit([] { SetConsoleOutputCP(code_page_before); });
    }
    // One that would show the sequences gets no colours.
    if (!takes_escapes(stream)) _putenv("NO_COLOR=1");
  }
}

}  // namespace os
