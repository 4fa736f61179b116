#include "signals/column_reader.h"

#include <algorithm>
#include <cmath>
#include <optional>

#include <fmt/format.h>
#include <fmt/ranges.h>

#include "cells.h"
#include "designer/refusal.h"
#include "line_queue.h"
#include "lines.h"
#include "row_marks.h"

namespace signals {
namespace {

constexpr std::string_view byte_order_mark = "\xEF\xBB\xBF";

bool has_frame(std::string_view line) {
  const std::size_t first = line.find_first_not_of(" \t\r");
  return first != std::string_view::npos && line[first] != '#' && line[first] != '%';
}

std::vector<std::string> as_names(const std::vector<std::string_view> &cells) {
  std::vector<std::string> names;
  names.reserve(cells.size());
  for (const std::string_view cell : cells) names.emplace_back(unquoted(cell));
  return names;
}

std::optional<std::size_t> column_number(const std::string &word) {
  const std::optional<double> number = number_in(word);
  if (!number || !(*number >= 1.0 && *number <= 1e6) || *number != std::floor(*number))
    return std::nullopt;
  return static_cast<std::size_t>(*number);
}

}  // namespace

ColumnReader::ColumnReader(int descriptor, std::string name, const std::vector<std::string> &wanted,
                           RestOfText rest)
    : name_(std::move(name)), lines_(std::make_unique<Lines>(descriptor, name_)) {
  if (rest == RestOfText::kept) rest_ = std::make_unique<LineQueue>();
  begin(wanted);
}

ColumnReader::~ColumnReader() = default;

void ColumnReader::begin(const std::vector<std::string> &wanted) {
  std::optional<std::string_view> line = lines_->next();
  while (line && !has_frame(*line)) {
    if (rest_) rest_->push(text_mark + std::string(*line));
    line = lines_->next();
  }
  if (!line) throw designer::Refusal(fmt::format("{} is empty", name_));
  std::string_view text = *line;
  if (text.starts_with(byte_order_mark)) text.remove_prefix(byte_order_mark.size());
  layout_.delimiter = delimiter_of(text);
  const std::vector<std::string_view> cells = cells_of(text, layout_.delimiter);
  layout_.columns = cells.size();
  layout_.channels = chosen(wanted, as_names(cells));
  const bool is_frame =
      std::all_of(layout_.channels.begin(), layout_.channels.end(),
                  [&](std::size_t column) { return number_in(cells[column]).has_value(); });
  for (const std::size_t column : layout_.channels)
    if (has_decimal_comma(cells[column])) refuse_cell(cells[column], column);
  first_.resize(channels());
  if (is_frame) {
    for (std::size_t i = 0; i < channels(); ++i)
      first_[i] = number_in(cells[layout_.channels[i]]).value();
    if (rest_) rest_->push(frame_mark + std::string(text));
    for (std::size_t i = 0; i < channels(); ++i)
      if (!std::isfinite(first_[i])) refuse_cell(cells[layout_.channels[i]], layout_.channels[i]);
    return;
  }
  if (rest_) rest_->push(text_mark + std::string(*line));
  if (!read_frame(first_.data()))
    throw designer::Refusal(fmt::format("{} has no numbers after its first line", name_));
}

std::vector<std::size_t> ColumnReader::chosen(const std::vector<std::string> &wanted,
                                              const std::vector<std::string> &names) const {
  std::vector<std::size_t> columns;
  if (wanted.empty() && names.size() > 1)
    throw designer::Refusal(
        fmt::format("{} has {} columns ({}); --column says which to filter, such as --column 2, "
                    "or all",
                    name_, names.size(), fmt::join(names, ", ")));
  if (wanted.empty()) return {0};
  for (const std::string &word : wanted) {
    const auto named = std::find(names.begin(), names.end(), word);
    if (named == names.end() && word == "all") {
      for (std::size_t i = 0; i < names.size(); ++i) columns.push_back(i);
      continue;
    }
    const std::size_t column = named != names.end() && !number_in(word)
                                   ? static_cast<std::size_t>(named - names.begin()) + 1
                                   : column_number(word).value_or(0);
    if (column < 1 || column > names.size())
      throw designer::Refusal(fmt::format("{} has no column '{}'; its columns are 1 to {} ({})",
                                          name_, word, names.size(), fmt::join(names, ", ")));
    columns.push_back(column - 1);
  }
  std::vector<std::size_t> sorted = columns;
  std::sort(sorted.begin(), sorted.end());
  const auto twice = std::adjacent_find(sorted.begin(), sorted.end());
  if (twice != sorted.end())
    throw designer::Refusal(fmt::format("--column names column {} twice", *twice + 1));
  return columns;
}

double ColumnReader::fraction() const { return lines_->fraction(); }

std::size_t ColumnReader::read(std::span<double> frames) {
  const std::size_t room = frames.size() / channels();
  std::size_t count = 0;
  if (!first_.empty()) {
    std::copy(first_.begin(), first_.end(), frames.begin());
    first_.clear();
    ++count;
  }
  while (count < room && (count == 0 || lines_->ready()))
    if (!read_frame(&frames[count * channels()]))
      break;
    else
      ++count;
  return count;
}

bool ColumnReader::read_frame(double *frame) {
  std::optional<std::string_view> line = lines_->next();
  while (line && !has_frame(*line)) {
    if (rest_) rest_->push(text_mark + std::string(*line));
    line = lines_->next();
  }
  if (!line) return false;
  const std::vector<std::string_view> cells = cells_of(*line, layout_.delimiter);
  if (cells.size() != layout_.columns)
    throw designer::Refusal(
        fmt::format("line {} of {} has {} {}, and the first has {}; it is damaged, or ends early",
                    lines_->number(), name_, cells.size(), cells.size() == 1 ? "column" : "columns",
                    layout_.columns));
  for (std::size_t i = 0; i < channels(); ++i) {
    const std::string_view cell = cells[layout_.channels[i]];
    const std::optional<double> number = number_in(cell);
    if (!number || !std::isfinite(*number)) refuse_cell(cell, layout_.channels[i]);
    frame[i] = *number;
  }
  if (rest_) rest_->push(frame_mark + std::string(*line));
  return true;
}

void ColumnReader::refuse_cell(std::string_view cell, std::size_t column) const {
  const std::string where =
      fmt::format("line {}, column {} of {}", lines_->number(), column + 1, name_);
  if (has_decimal_comma(cell))
    throw designer::Refusal(
        fmt::format("{} is '{}', with a decimal comma; numbers have decimal points here, as in 1.5",
                    where, cell));
  if (cell.empty()) throw designer::Refusal(fmt::format("{} is empty", where));
  if (number_in(cell))
    throw designer::Refusal(
        fmt::format("{} is '{}'; a gap has to be filled before a filter can run", where, cell));
  throw designer::Refusal(fmt::format("{} is '{}', which is not a number", where, cell));
}

}  // namespace signals
