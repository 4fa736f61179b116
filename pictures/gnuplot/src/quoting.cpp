#include "gnuplot/quoting.h"

#include <cctype>

#include <fmt/format.h>

#include "text/printable.h"

namespace gnuplot {

std::string quoted(const std::string &text) {
  std::string out = "\"";
  for (const char c : text::printable(text)) {
    const auto byte = static_cast<unsigned char>(c);
    // A digit after a number would be taken for a part of it.
    const bool plain = byte < 0x80 && (std::isalpha(byte) != 0 || c == ' ');
    out += plain ? std::string(1, c) : fmt::format("\\{:03o}", byte);
  }
  return out + '"';
}

}  // namespace gnuplot
