#include "base/line_reader.h"

#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <system_error>

#include <fmt/format.h>

#include "designer/refusal.h"
#include "os/descriptor.h"

namespace cli {
namespace {

std::string sentence(const std::string &file, int error) {
  return fmt::format("'{}' cannot be read: {}", file, std::generic_category().message(error));
}

}  // namespace

LineReader::LineReader(const std::string &file, std::size_t first)
    : file_(file), descriptor_(file == "-" ? STDIN_FILENO : os::open_to_read(file)) {
  current_.number = first;
  if (descriptor_ < 0) throw designer::Refusal(sentence(file_, errno));
  struct stat status {};
  if (fstat(descriptor_, &status) == 0 && S_ISREG(status.st_mode))
    size_ = static_cast<double>(status.st_size);
  if (S_ISDIR(status.st_mode)) throw designer::Refusal(sentence(file_, EISDIR));
}

LineReader::~LineReader() {
  if (descriptor_ > STDERR_FILENO) close(descriptor_);
}

void LineReader::read() {
  std::array<char, std::size_t{1} << 16U> block;
  const std::ptrdiff_t count = os::read_some(descriptor_, block.data(), block.size());
  if (count < 0) throw std::runtime_error(sentence(file_, errno));
  at_end_ = count == 0;
  if (at_end_ && !current_.text.empty()) end_line();
  bytes_read_ += static_cast<std::uint64_t>(count);
  const char *at = block.data();
  const char *const end = at + count;
  while (at < end) {
    const char *const newline = std::find(at, end, '\n');
    add(at, newline);
    if (newline == end) break;
    end_line();
    at = newline + 1;
  }
}

double LineReader::fraction() const {
  return size_ > 0.0 ? std::min(static_cast<double>(bytes_read_) / size_, 1.0) : -1.0;
}

std::vector<Line> LineReader::take(std::size_t count) {
  const auto end = lines_.begin() + static_cast<std::ptrdiff_t>(std::min(count, lines_.size()));
  std::vector<Line> taken(std::make_move_iterator(lines_.begin()), std::make_move_iterator(end));
  lines_.erase(lines_.begin(), end);
  return taken;
}

void LineReader::add(const char *begin, const char *end) {
  const auto room = longest - current_.text.size();
  const auto size = static_cast<std::size_t>(end - begin);
  current_.text.append(begin, std::min(size, room));
  current_.too_long |= size > room;
}

void LineReader::end_line() {
  const std::size_t next = current_.number + 1;
  lines_.push_back(std::move(current_));
  current_ = Line{next, {}, false};
}

}  // namespace cli
