#include "text/numbers.h"

#include <algorithm>
#include <array>
#include <charconv>

#include <fmt/format.h>

namespace text {
namespace {

// As printf's %g writes it in the "C" locale.
char *write_general(char *at, double value, int digits) {
#ifdef __cpp_lib_to_chars
  return std::to_chars(at, at + most_number_characters, value, std::chars_format::general, digits)
      .ptr;
#else
  return fmt::format_to(at, "{:.{}g}", value, digits);
#endif
}

char *write(char *at, double value, int digits) {
  char *const end = write_general(at, value, digits);
  const auto marks = [](char c) { return c == '.' || c == 'e'; };
  return std::none_of(at, end, marks) ? std::copy_n(".0", 2, end) : end;
}

std::string written(double value, int digits) {
  std::array<char, most_number_characters> buffer;
  return {buffer.data(), write(buffer.data(), value, digits)};
}

}  // namespace

char *write_double(char *at, double value) { return write(at, value, 17); }

std::string double_text(double value) { return written(value, 17); }

std::string float_text(double value) { return written(value, 9); }

}  // namespace text
