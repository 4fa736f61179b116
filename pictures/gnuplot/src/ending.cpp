#include "ending.h"

#include <algorithm>
#include <system_error>

#include <fmt/format.h>

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

std::runtime_error too_slow(const Limits &limits) {
  return std::runtime_error(
      fmt::format("gnuplot was stopped: a picture may take at most {} s", limits.seconds));
}

std::runtime_error too_large(const Limits &limits) {
  return std::runtime_error(
      fmt::format("gnuplot was stopped: a picture may take at most {} bytes", limits.output));
}

std::runtime_error not_run(int error) {
  return std::runtime_error("gnuplot cannot be run: " + std::generic_category().message(error));
}

std::string drawn(std::string picture, Ended ended, const std::string &messages) {
  if (ended == Ended::badly || !is_complete(picture))
    throw std::runtime_error("gnuplot could not draw it: " + last_line(messages));
  return picture;
}

}  // namespace gnuplot
