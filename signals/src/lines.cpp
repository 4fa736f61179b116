#include "lines.h"

#include <sys/stat.h>

#include <algorithm>
#include <cerrno>
#include <stdexcept>
#include <system_error>

#include <fmt/format.h>

#include "designer/refusal.h"
#include "os/descriptor.h"

namespace signals {

Lines::Lines(int descriptor, std::string name) : descriptor_(descriptor), name_(std::move(name)) {
  struct stat status {};
  if (fstat(descriptor_, &status) == 0 && S_ISREG(status.st_mode))
    size_ = static_cast<double>(status.st_size);
}

std::optional<std::string_view> Lines::next() {
  std::size_t newline = buffer_.find('\n', at_);
  while (newline == std::string::npos && !at_end_) {
    if (buffer_.size() - at_ > longest)
      throw designer::Refusal(fmt::format("{} has a line that is longer than {} MiB, line {}",
                                          name_, longest >> 20U, number_ + 1));
    buffer_.erase(0, at_);
    at_ = 0;
    const std::size_t searched = buffer_.size();
    fill();
    newline = buffer_.find('\n', searched);
  }
  if (newline == std::string::npos) newline = buffer_.size();
  if (at_ == buffer_.size()) return std::nullopt;
  const std::string_view line = std::string_view(buffer_).substr(at_, newline - at_);
  taken_ += static_cast<double>(newline + 1 - at_);
  at_ = std::min(newline + 1, buffer_.size());
  ++number_;
  return line;
}

double Lines::fraction() const { return size_ > 0.0 ? std::min(taken_ / size_, 1.0) : -1.0; }

void Lines::fill() {
  constexpr std::size_t block = std::size_t{1} << 16U;
  const std::size_t had = buffer_.size();
  buffer_.resize(had + block);
  const std::ptrdiff_t count = os::read_some(descriptor_, buffer_.data() + had, block);
  buffer_.resize(had + static_cast<std::size_t>(std::max<std::ptrdiff_t>(count, 0)));
  if (count < 0)
    throw std::runtime_error(
        fmt::format("{} cannot be read: {}", name_, std::generic_category().message(errno)));
  at_end_ = count == 0;
}

}  // namespace signals
