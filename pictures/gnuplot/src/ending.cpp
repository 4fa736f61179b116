#include "ending.h"

#include <algorithm>

namespace gnuplot {

bool is_complete(const std::string &picture) {
  constexpr char png_end[] = "IEND\xae\x42\x60\x82";
  return picture.ends_with("</svg>\n") || picture.ends_with("</svg>\n\n") ||
         picture.ends_with(png_end) || picture.ends_with("\n%%EOF\n");
}

std::string last_line(const std::string &text) {
  const std::size_t end = text.find_last_not_of(" \t\r\n");
  if (end == std::string::npos) return "it gives no reason";
  const std::size_t before = text.find_last_of('\n', end);
  const std::string line = text.substr(before + 1, end - before);
  return line.substr(std::min(line.find_first_not_of(" \t"), line.size()));
}

}  // namespace gnuplot
