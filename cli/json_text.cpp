#include "json_text.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdint>
#include <set>
#include <system_error>
#include <vector>

#include <fmt/format.h>

#include "subcommand.h"
#include "text/printable.h"

namespace cli {
namespace {

constexpr std::size_t deepest = 16;
constexpr std::size_t largest = std::size_t{64} << 20U;

// The library's "[json.exception.parse_error.101] parse error at line 1, ...".
std::string without_label(std::string text) {
  const std::size_t label = text.find("] ");
  if (label != std::string::npos) text.erase(0, label + 2);
  return text;
}

std::string as_code(const text::Hidden &hidden) {
  return fmt::format("\\u{:04x}", static_cast<std::uint32_t>(hidden.character.value()));
}

struct Descriptor {
  int number;
  ~Descriptor() {
    if (number > STDERR_FILENO) close(number);
  }
};

[[noreturn]] void refuse(const std::string &file, int error) {
  throw Refusal(
      fmt::format("'{}' cannot be read: {}", file, std::generic_category().message(error)));
}

}  // namespace

std::string json_text(const Json &value) {
  return text::with_hidden(value.dump(-1, ' ', false, Json::error_handler_t::replace), as_code);
}

Json parse_json(const std::string &text, const std::string &name) {
  std::vector<std::set<std::string>> keys;  // of the objects and lists around the place
  std::size_t values = 0;
  const auto check = [&](int, Json::parse_event_t event, Json &parsed) {
    using Event = Json::parse_event_t;
    if (event == Event::object_start || event == Event::array_start || event == Event::value)
      if (++values > most_values)
        throw Refusal(
            fmt::format("{} holds more than {} values, and no design does", name, most_values));
    if (event == Event::object_start || event == Event::array_start) {
      keys.emplace_back();
      if (keys.size() > deepest)
        throw Refusal(fmt::format("{} nests deeper than {} levels", name, deepest));
    } else if (event == Event::object_end || event == Event::array_end) {
      keys.pop_back();
    } else if (event == Event::key) {
      if (!keys.back().insert(parsed.get<std::string>()).second)
        throw Refusal(fmt::format("{} has '{}' twice", name, parsed.get<std::string>()));
      if (keys.back().size() > most_keys)
        throw Refusal(fmt::format("{} has an object of more than {} keys, and no design has one",
                                  name, most_keys));
    }
    return true;
  };
  try {
    return Json::parse(text, check);
  } catch (const Json::exception &error) {
    throw Refusal(fmt::format("{} is not JSON: {}", name, without_label(error.what())));
  }
}

std::string read_input(const std::string &file) {
  const Descriptor input{file == "-" ? STDIN_FILENO : open(file.c_str(), O_RDONLY | O_CLOEXEC)};
  if (input.number < 0) refuse(file, errno);
  std::string text;
  std::vector<char> block(std::size_t{1} << 16U);
  while (true) {
    const ssize_t count = read(input.number, block.data(), block.size());
    if (count == 0) return text;
    if (count < 0 && errno == EINTR) continue;
    if (count < 0) refuse(file, errno);
    text.append(block.data(), static_cast<std::size_t>(count));
    if (text.size() > largest)
      throw Refusal(
          fmt::format("'{}' is larger than {} MiB, and no design is", file, largest >> 20U));
  }
}

}  // namespace cli
