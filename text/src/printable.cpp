#include "text/printable.h"

#include <fmt/format.h>

namespace text {
namespace {

struct Character {
  std::size_t length = 1;
  std::optional<char32_t> code;  // none: the byte is not UTF-8
};

// The character at the beginning of a text: The Unicode Standard, table 3-7.
Character first_of(std::string_view text) {
  const auto byte = [&](std::size_t i) { return static_cast<unsigned char>(text[i]); };
  const unsigned char first = byte(0);
  if (first < 0x80) return {1, first};
  const std::size_t length = first >= 0xc2 && first <= 0xdf   ? 2
                             : first >= 0xe0 && first <= 0xef ? 3
                             : first >= 0xf0 && first <= 0xf4 ? 4
                                                              : 0;
  if (length == 0 || length > text.size()) return {};
  char32_t code = first & (0x7fU >> length);
  for (std::size_t i = 1; i < length; ++i) {
    if ((byte(i) & 0xc0U) != 0x80) return {};
    code = code << 6U | (byte(i) & 0x3fU);
  }
  const bool is_overlong = (length == 3 && code < 0x800) || (length == 4 && code < 0x10000);
  const bool is_surrogate = code >= 0xd800 && code <= 0xdfff;
  if (is_overlong || is_surrogate || code > 0x10ffff) return {};
  return {length, code};
}

bool is_hidden(char32_t code) {
  const bool is_control = code < 0x20 || (code >= 0x7f && code <= 0x9f);
  const bool ends_line = code == 0x2028 || code == 0x2029;
  const bool directs = code == 0x061c || code == 0x200e || code == 0x200f ||
                       (code >= 0x202a && code <= 0x202e) || (code >= 0x2066 && code <= 0x2069);
  return is_control || ends_line || directs || code == 0xfffe || code == 0xffff;
}

std::string escaped(const Hidden &hidden) {
  if (!hidden.character || *hidden.character < 0x80)
    return fmt::format("\\x{:02x}", static_cast<unsigned char>(hidden.bytes.front()));
  return fmt::format("\\u{:04x}", static_cast<std::uint32_t>(*hidden.character));
}

}  // namespace

std::string with_hidden(std::string_view text, std::string (*written)(const Hidden &hidden)) {
  std::string out;
  for (std::size_t at = 0; at < text.size();) {
    const auto [length, code] = first_of(text.substr(at));
    const std::string_view bytes = text.substr(at, length);
    const bool ends_section = bytes == ">" && text.substr(0, at).ends_with("]]");
    if (!code || is_hidden(*code) || ends_section)
      out += written({bytes, code});
    else
      out += bytes;
    at += length;
  }
  return out;
}

std::string printable(std::string_view text) { return with_hidden(text, escaped); }

std::string shortened(const std::string &text, std::size_t head, std::size_t tail,
                      const std::string &mark) {
  if (text.size() <= head + mark.size() + tail) return text;
  const auto is_inside = [&](std::size_t at) {
    return at < text.size() && (static_cast<unsigned char>(text[at]) & 0xc0U) == 0x80;
  };
  std::size_t left = head, right = text.size() - tail;
  while (left > 0 && is_inside(left)) --left;
  while (is_inside(right)) ++right;
  return text.substr(0, left) + mark + text.substr(right);
}

}  // namespace text
