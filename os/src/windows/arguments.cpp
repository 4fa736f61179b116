#include "os/arguments.h"

#include <windows.h>

#include <shellapi.h>

#include <memory>

#include "wide.h"

namespace os {

// What `main` is given has lost every letter that the code page of the machine does not have.
std::vector<std::string> arguments(int, char **) {
  int count = 0;
  const std::unique_ptr<LPWSTR, decltype(&LocalFree)> words(
      CommandLineToArgvW(GetCommandLineW(), &count), LocalFree);
  std::vector<std::string> texts;
  for (int i = 1; words && i < count; ++i) texts.push_back(narrow(words.get()[i]));
  return texts;
}

}  // namespace os
