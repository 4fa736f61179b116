#include "line_queue.h"

#include <algorithm>

namespace signals {
namespace {

constexpr std::size_t most_bytes = std::size_t{4} << 20U;
constexpr std::size_t block_bytes = std::size_t{1} << 18U;

}  // namespace

void LineQueue::push(const std::string &line) {
  if (file_size_ == 0 && first_bytes_ < most_bytes) {
    first_bytes_ += line.size() + 1;
    first_.push_back(line);
    return;
  }
  unwritten_ += line;
  unwritten_ += '\n';
  file_size_ += line.size() + 1;
  if (unwritten_.size() < block_bytes) return;
  if (file_ == nullptr) file_ = std::make_unique<TemporaryBytes>();
  file_->write(file_begin_ + file_size_ - unwritten_.size(), unwritten_.data(), unwritten_.size());
  unwritten_.clear();
}

std::string LineQueue::pop() {
  if (first_.empty()) refill();
  std::string line = std::move(first_.front());
  first_.pop_front();
  first_bytes_ -= line.size() + 1;
  return line;
}

// Takes the next lines out of the file, and, when it has no more, those that were never in it.
void LineQueue::refill() {
  std::string text;
  std::size_t end = 0;
  while (end == 0) {
    const std::size_t had = text.size();
    const auto in_file = static_cast<std::size_t>(file_size_ - unwritten_.size());
    const std::size_t more = std::min(block_bytes, in_file - had);
    if (more > 0) {
      text.resize(had + more);
      file_->read(file_begin_ + had, text.data() + had, more);
    } else {
      text += unwritten_;
      unwritten_.clear();
    }
    end = text.rfind('\n') + 1;
  }
  for (std::size_t at = 0; at < end;) {
    const std::size_t newline = text.find('\n', at);
    first_.push_back(text.substr(at, newline - at));
    at = newline + 1;
  }
  first_bytes_ += end;
  file_begin_ += end;
  file_size_ -= end;
  if (file_size_ == 0) file_begin_ = 0;
}

}  // namespace signals
