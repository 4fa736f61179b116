#include "text/shell.h"

#include <algorithm>
#include <cctype>
#include <string_view>

#include <fmt/format.h>

#include "text/printable.h"

namespace text {
namespace {

bool is_plain(char c) {
  return std::isalnum(static_cast<unsigned char>(c)) != 0 ||
         std::string_view("-_./:=,+@%").find(c) != std::string_view::npos;
}

std::string in_hexadecimal(const Hidden &hidden) {
  std::string codes;
  for (const char c : hidden.bytes)
    codes += fmt::format("\\x{:02x}", static_cast<unsigned char>(c));
  return codes;
}

std::string quoted(const std::string &word) {
  if (!word.empty() && std::all_of(word.begin(), word.end(), is_plain)) return word;
  const bool escaped = printable(word) != word;
  std::string inner;
  for (const char c : word) {
    if (escaped && (c == '\'' || c == '\\'))
      inner += std::string("\\") + c;
    else if (c == '\'')
      inner += "'\\''";
    else
      inner += c;
  }
  return escaped ? "$'" + with_hidden(inner, in_hexadecimal) + '\'' : '\'' + inner + '\'';
}

}  // namespace

std::string shell_line(const std::vector<std::string> &words) {
  std::string line;
  for (const std::string &word : words) line += (line.empty() ? "" : " ") + quoted(word);
  return line;
}

}  // namespace text
