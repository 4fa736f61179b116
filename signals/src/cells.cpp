#include "cells.h"

#include <algorithm>

#include <fast_float/fast_float.h>

namespace signals {
namespace {

bool is_blank(char c) { return c == ' ' || c == '\t' || c == '\r'; }

bool is_digit(char c) { return c >= '0' && c <= '9'; }

std::string_view trimmed(std::string_view text) {
  while (!text.empty() && is_blank(text.front())) text.remove_prefix(1);
  while (!text.empty() && is_blank(text.back())) text.remove_suffix(1);
  return text;
}

std::vector<std::string_view> words_of(std::string_view line) {
  std::vector<std::string_view> words;
  for (std::size_t at = 0; at < line.size();) {
    const std::size_t begin = at;
    while (at < line.size() && !is_blank(line[at])) ++at;
    if (at > begin) words.push_back(line.substr(begin, at - begin));
    while (at < line.size() && is_blank(line[at])) ++at;
  }
  return words;
}

}  // namespace

char delimiter_of(std::string_view line) {
  line = trimmed(line);
  for (const char delimiter : {'\t', ';', ','})
    if (line.find(delimiter) != std::string_view::npos) return delimiter;
  return ' ';
}

std::vector<std::string_view> cells_of(std::string_view line, char delimiter) {
  if (delimiter == ' ') return words_of(trimmed(line));
  std::vector<std::string_view> cells;
  std::size_t begin = 0;
  bool quoted = false;
  for (std::size_t at = 0; at < line.size(); ++at) {
    if (line[at] == '"') quoted = !quoted;
    if (quoted || line[at] != delimiter) continue;
    cells.push_back(trimmed(line.substr(begin, at - begin)));
    begin = at + 1;
  }
  cells.push_back(trimmed(line.substr(begin)));
  return cells;
}

std::string_view unquoted(std::string_view cell) {
  if (cell.size() >= 2 && cell.front() == '"' && cell.back() == '"')
    return trimmed(cell.substr(1, cell.size() - 2));
  return cell;
}

std::optional<double> number_in(std::string_view cell) {
  cell = unquoted(cell);
  if (cell.size() > 1 && cell.front() == '+' && cell[1] != '-') cell.remove_prefix(1);
  double number = 0.0;
  const char *const end = cell.data() + cell.size();
  const auto [stop, error] = fast_float::from_chars(cell.data(), end, number);
  if (cell.empty() || error != std::errc() || stop != end) return std::nullopt;
  return number;
}

bool has_decimal_comma(std::string_view cell) {
  cell = unquoted(cell);
  const std::size_t comma = cell.find(',');
  if (comma == 0 || comma == std::string_view::npos || comma + 1 == cell.size()) return false;
  if (cell.front() == '-' || cell.front() == '+') cell.remove_prefix(1);
  return std::all_of(cell.begin(), cell.end(), [](char c) { return is_digit(c) || c == ','; }) &&
         std::count(cell.begin(), cell.end(), ',') == 1;
}

}  // namespace signals
