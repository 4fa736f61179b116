#include "base/input_file.h"

#include <unistd.h>

#include <cerrno>
#include <cstddef>
#include <system_error>
#include <vector>

#include <fmt/format.h>

#include "designer/refusal.h"
#include "os/descriptor.h"

namespace cli {
namespace {

constexpr std::size_t largest = std::size_t{64} << 20U;

struct Descriptor {
  int number;
  ~Descriptor() {
    if (number > STDERR_FILENO) close(number);
  }
};

[[noreturn]] void refuse(const std::string &file, int error) {
  throw designer::Refusal(
      fmt::format("'{}' cannot be read: {}", file, std::generic_category().message(error)));
}

}  // namespace

std::string read_input(const std::string &file) {
  const Descriptor input{file == "-" ? STDIN_FILENO : os::open_to_read(file)};
  if (input.number < 0) refuse(file, errno);
  std::string text;
  std::vector<char> block(std::size_t{1} << 16U);
  while (true) {
    const std::ptrdiff_t count = os::read_some(input.number, block.data(), block.size());
    if (count == 0) return text;
    if (count < 0) refuse(file, errno);
    text.append(block.data(), static_cast<std::size_t>(count));
    if (text.size() > largest)
      throw designer::Refusal(
          fmt::format("'{}' is larger than {} MiB, which no design is", file, largest >> 20U));
  }
}

}  // namespace cli
