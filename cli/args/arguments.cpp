#include "args/arguments.h"

#include <algorithm>
#include <span>
#include <string_view>

#include <fmt/format.h>
#include <fmt/ranges.h>

#include "designer/refusal.h"

namespace cli {
namespace {

void check_count(const Option &option, const Words &values, std::size_t most) {
  const std::size_t count = values == Words{""} ? 0 : values.size();
  if (count > 0 && count <= most) return;
  const char *taken = most == 1   ? "one value"
                      : most == 2 ? "one or two values"
                                  : "at least one value";
  throw designer::Refusal(fmt::format("{} takes {}, and {} {} given", option.name(), taken, count,
                                      count == 1 ? "was" : "were"));
}

// "text", "text or json", "text, csv or json".
std::string alternatives(std::span<const std::string_view> words) {
  if (words.size() < 2) return fmt::format("{}", fmt::join(words, ""));
  return fmt::format("{} or {}", fmt::join(words.first(words.size() - 1), ", "), words.back());
}

}  // namespace

std::optional<std::string> Arguments::value(const Option &option) const {
  const auto found = values_.find(&option);
  if (found == values_.end()) return std::nullopt;
  check_count(option, found->second, 1);
  return found->second.front();
}

std::string Arguments::choice(const Option &option) const {
  std::string chosen = value(option).value_or(std::string(option.choices.front()));
  if (std::find(option.choices.begin(), option.choices.end(), chosen) == option.choices.end())
    throw designer::Refusal(
        fmt::format("{} is {}, not '{}'", option.name(), alternatives(option.choices), chosen));
  return chosen;
}

Words Arguments::values(const Option &option) const {
  const auto found = values_.find(&option);
  if (found == values_.end()) return {};
  check_count(option, found->second, option.most);
  return found->second;
}

}  // namespace cli
