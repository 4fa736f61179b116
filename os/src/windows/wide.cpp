#include "wide.h"

#include <windows.h>

namespace os {

std::wstring wide(std::string_view text) {
  const auto size = static_cast<int>(text.size());
  std::wstring result(text.size(), L'\0');  // no more units than bytes
  const int count =
      size > 0 ? MultiByteToWideChar(CP_UTF8, 0, text.data(), size, result.data(), size) : 0;
  result.resize(static_cast<std::size_t>(count));
  return result;
}

std::string narrow(std::wstring_view text) {
  const auto size = static_cast<int>(text.size());
  std::string result(3 * text.size(), '\0');  // no more than three bytes for a unit
  const int count = size > 0 ? WideCharToMultiByte(CP_UTF8, 0, text.data(), size, result.data(),
                                                   3 * size, nullptr, nullptr)
                             : 0;
  result.resize(static_cast<std::size_t>(count));
  return result;
}

}  // namespace os
