#include "library.h"

#include <windows.h>

#include <system_error>

#include <fmt/format.h>

#include "patchbay/host.h"

namespace patchbay {

void *open_library(const std::filesystem::path &file, const std::filesystem::path &shown) {
  // Windows would otherwise show a box, and wait for somebody to press its button.
  const UINT mode = SetErrorMode(SEM_FAILCRITICALERRORS);
  void *library = LoadLibraryW(file.c_str());
  const auto error = static_cast<int>(GetLastError());
  SetErrorMode(mode);
  if (library != nullptr) return library;
  const std::string text =
      fmt::format("'{}' cannot be loaded: {}", shown.string(),
                  error == ERROR_BAD_EXE_FORMAT ? "it is not a library for this machine"
                                                : std::system_category().message(error));
  if (error == ERROR_NOT_ENOUGH_MEMORY || error == ERROR_OUTOFMEMORY)
    throw std::runtime_error(text);
  throw Error(text);
}

void (*function_in(void *library, const char *name))() {
  // By way of a pointer to a function of no particular kind, which the compiler lets pass.
  return reinterpret_cast<void (*)()>(GetProcAddress(static_cast<HMODULE>(library), name));
}

void close_library(void *library) { FreeLibrary(static_cast<HMODULE>(library)); }

}  // namespace patchbay
