#include "text/numbers.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <string_view>

namespace text {
namespace {

void append(std::string &out, double value, int digits) {
  std::array<char, 32> buffer;  // a sign, 17 digits, a point and an exponent of three digits
  const char *const end = std::to_chars(buffer.data(), buffer.data() + buffer.size(), value,
                                        std::chars_format::general, digits)
                              .ptr;
  const std::string_view written(buffer.data(), static_cast<std::size_t>(end - buffer.data()));
  out += written;
  const auto marks = [](char c) { return c == '.' || c == 'e'; };
  if (std::none_of(written.begin(), written.end(), marks)) out += ".0";
}

}  // namespace

void append_double(std::string &out, double value) { append(out, value, 17); }

std::string double_text(double value) {
  std::string out;
  append(out, value, 17);
  return out;
}

std::string float_text(double value) {
  std::string out;
  append(out, value, 9);
  return out;
}

}  // namespace text
