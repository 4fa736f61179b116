#include "base/colour.h"

#include <unistd.h>

#include <cstdlib>
#include <string_view>

namespace cli {
namespace {

// ECMA-48, 8.3.117: select graphic rendition.
constexpr char bold_red[] = "\033[1;31m";
constexpr char plain[] = "\033[0m";

std::string_view variable(const char *name) {
  const char *value = std::getenv(name);
  return value != nullptr ? value : "";
}

}  // namespace

Colour colour_for(int descriptor) {
  const bool wanted = variable("NO_COLOR").empty() && variable("TERM") != "dumb";
  return wanted && isatty(descriptor) != 0 ? Colour::on : Colour::off;
}

std::string alarming(const std::string &text, Colour colour) {
  return colour == Colour::on ? bold_red + text + plain : text;
}

}  // namespace cli
