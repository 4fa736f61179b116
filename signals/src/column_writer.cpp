#include "signals/column_writer.h"

#include <algorithm>
#include <cmath>
#include <iterator>
#include <stdexcept>

#include <fmt/format.h>

#include "cells.h"
#include "line_queue.h"
#include "row_marks.h"

namespace signals {

ColumnWriter::ColumnWriter(Text text, std::size_t channels, char delimiter)
    : text_(std::move(text)), channels_(channels), delimiter_(delimiter) {}

ColumnWriter::ColumnWriter(Text text, const ColumnReader &reader)
    : text_(std::move(text)),
      channels_(reader.channels()),
      delimiter_(reader.layout().delimiter),
      layout_(reader.layout()),
      rest_(reader.rest()) {}

bool ColumnWriter::write(std::span<const double> frames) {
  if (std::any_of(frames.begin(), frames.end(), [](double x) { return !std::isfinite(x); }))
    throw std::runtime_error("the output is larger than any double");
  for (std::size_t at = 0; at < frames.size(); at += channels_)
    add_frame(frames.subspan(at, channels_));
  const bool read = text_(block_);
  block_.clear();
  return read;
}

void ColumnWriter::finish() {
  while (rest_ != nullptr && !rest_->empty()) {
    block_ += rest_->pop().substr(1);
    block_ += '\n';
  }
  text_(block_);
  block_.clear();
}

void ColumnWriter::add_frame(std::span<const double> frame) {
  const auto into = std::back_inserter(block_);
  std::string line;
  // Lines without a frame stay where they were.
  while (rest_ != nullptr && !rest_->empty()) {
    line = rest_->pop();
    if (line.front() == frame_mark) break;
    block_.append(line, 1);
    block_ += '\n';
    line.clear();
  }
  if (line.empty()) {  // of a signal without a text, or beyond its end
    for (std::size_t i = 0; i < channels_; ++i) {
      if (i > 0) block_ += delimiter_;
      fmt::format_to(into, "{}", frame[i]);
    }
    block_ += '\n';
    return;
  }
  const std::string_view row = std::string_view(line).substr(1);
  const std::vector<std::string_view> cells = cells_of(row, delimiter_);
  std::size_t done = 0;
  for (std::size_t column = 0; column < cells.size(); ++column) {
    const auto channel = std::find(layout_->channels.begin(), layout_->channels.end(), column);
    if (channel == layout_->channels.end()) continue;
    const auto begin = static_cast<std::size_t>(cells[column].data() - row.data());
    block_ += row.substr(done, begin - done);
    fmt::format_to(into, "{}",
                   frame[static_cast<std::size_t>(channel - layout_->channels.begin())]);
    done = begin + cells[column].size();
  }
  block_ += row.substr(done);
  block_ += '\n';
}

}  // namespace signals
