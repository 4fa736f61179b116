#include "json_document.h"

#include <set>
#include <vector>

#include <fmt/format.h>

#include "designer/refusal.h"

namespace designer {
namespace {

constexpr std::size_t deepest = 16;

// The library's "[json.exception.parse_error.101] parse error at line 1, ...".
std::string without_label(std::string text) {
  const std::size_t label = text.find("] ");
  if (label != std::string::npos) text.erase(0, label + 2);
  return text;
}

}  // namespace

Json parse_document(const std::string &text, const std::string &what) {
  std::vector<std::set<std::string>> keys;  // of the objects and lists around the place
  std::size_t values = 0;
  const auto check = [&](int, Json::parse_event_t event, Json &parsed) {
    using Event = Json::parse_event_t;
    if (event == Event::object_start || event == Event::array_start || event == Event::value)
      if (++values > most_values)
        throw Refusal(
            fmt::format("{} holds more than {} values, which no design does", what, most_values));
    if (event == Event::object_start || event == Event::array_start) {
      keys.emplace_back();
      if (keys.size() > deepest)
        throw Refusal(fmt::format("{} nests deeper than {} levels", what, deepest));
    } else if (event == Event::object_end || event == Event::array_end) {
      keys.pop_back();
    } else if (event == Event::key) {
      if (!keys.back().insert(parsed.get<std::string>()).second)
        throw Refusal(fmt::format("{} has '{}' twice", what, parsed.get<std::string>()));
      if (keys.back().size() > most_keys)
        throw Refusal(fmt::format("{} has an object of more than {} keys, which no design has",
                                  what, most_keys));
    }
    return true;
  };
  try {
    return Json::parse(text, check);
  } catch (const Json::exception &error) {
    throw Refusal(fmt::format("{} is not JSON: {}", what, without_label(error.what())));
  }
}

}  // namespace designer
