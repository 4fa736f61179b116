#include "plot/shown.h"

namespace cli::plot {
namespace {

// The length of the UTF-8 character at a place; 0 when there is none.
std::size_t character_length(const std::string &text, std::size_t at) {
  const auto byte = [&](std::size_t i) { return static_cast<unsigned char>(text[i]); };
  const unsigned char first = byte(at);
  const std::size_t length = first < 0x80                     ? 1
                             : first >= 0xc2 && first <= 0xdf ? 2
                             : first >= 0xe0 && first <= 0xef ? 3
                             : first >= 0xf0 && first <= 0xf4 ? 4
                                                              : 0;
  if (length == 0 || at + length > text.size()) return 0;
  for (std::size_t i = at + 1; i < at + length; ++i)
    if ((byte(i) & 0xc0U) != 0x80) return 0;
  if (length > 2) {  // overlong forms, surrogates, beyond the last code point
    const unsigned char second = byte(at + 1);
    if ((first == 0xe0 && second < 0xa0) || (first == 0xed && second > 0x9f) ||
        (first == 0xf0 && second < 0x90) || (first == 0xf4 && second > 0x8f))
      return 0;
    if (first == 0xef && second == 0xbf && byte(at + 2) >= 0xbe) return 0;  // no characters
  }
  return length;
}

}  // namespace

std::string shown(const std::string &text) {
  std::string out;
  for (std::size_t at = 0; at < text.size();) {
    const std::size_t length = character_length(text, at);
    const auto byte = static_cast<unsigned char>(text[at]);
    if (length == 0)
      out += "\xef\xbf\xbd";
    else if (byte < 0x20 || byte == 0x7f)
      out += ' ';
    else
      out.append(text, at, length);
    at += length == 0 ? 1 : length;
  }
  return out;
}

}  // namespace cli::plot
