// Texts as Windows has them, in UTF-16, and as everything here has them, in UTF-8.
#ifndef OS_WINDOWS_WIDE_H
#define OS_WINDOWS_WIDE_H

#include <string>
#include <string_view>

namespace os {

/** What is no text in the one becomes U+FFFD in the other. */
std::wstring wide(std::string_view text);
std::string narrow(std::wstring_view text);

}  // namespace os

#endif
