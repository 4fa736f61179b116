#include "args/option.h"

#include <algorithm>

#include <fmt/format.h>
#include <fmt/ranges.h>

#include "designer/refusal.h"

namespace cli {
namespace {

// Two hyphens and a letter say too little.
constexpr std::size_t shortest_beginning = 4;

constexpr std::string_view help_name = "--help";

}  // namespace

std::vector<std::string_view> Option::all_names() const {
  std::vector<std::string_view> list;
  for (std::string_view rest = names; !rest.empty();) {
    const std::size_t end = std::min(rest.find(','), rest.size());
    list.push_back(rest.substr(0, end));
    rest.remove_prefix(std::min(end + 1, rest.size()));
  }
  return list;
}

std::string in_full(const std::string &typed, Options options) {
  if (!typed.starts_with("--")) return typed;
  const std::size_t end = std::min(typed.find('='), typed.size());
  std::string name = typed.substr(0, end);
  std::replace(name.begin(), name.end(), '_', '-');
  const std::string value = typed.substr(end);

  std::vector<std::string_view> begun;
  for (const Option *option : options) {
    bool begins = false;
    for (const std::string_view known : option->all_names()) {
      if (known == name) return name + value;
      begins = begins || known.starts_with(name);
    }
    if (begins) begun.push_back(option->name());
  }
  if (help_name.starts_with(name)) begun.push_back(help_name);
  if (name.size() < shortest_beginning || begun.empty()) return name + value;
  if (begun.size() == 1) return std::string(begun.front()) + value;
  throw designer::Refusal(fmt::format("'{}' may be {}", name, fmt::join(begun, " or ")));
}

}  // namespace cli
