#include "designer/saved_design.h"

#include <algorithm>
#include <cstdint>
#include <limits>
#include <stdexcept>
#include <utility>

#include <fmt/format.h>

#include "designer/names.h"
#include "designer/refusal.h"
#include "json_document.h"
#include "settings_line.h"

namespace designer {
namespace {

Value value_of(const std::string &name, const Json &json) {
  if (json.is_boolean()) return std::string(json.get<bool>() ? "true" : "false");
  constexpr auto largest = static_cast<std::uint64_t>(std::numeric_limits<t_long>::max());
  if (json.is_number_unsigned() && json.get<std::uint64_t>() > largest) return json.get<double>();
  if (json.is_number_integer()) return json.get<t_long>();
  if (json.is_number()) return json.get<double>();
  if (!json.is_string())
    throw Refusal(fmt::format("{} takes a number, a text, true or false, not {}", name,
                              json.is_null()     ? "null"
                              : json.is_object() ? "an object"
                                                 : "a list"));
  auto text = json.get<std::string>();
  if (text.empty() || text.find('\0') != std::string::npos)
    throw Refusal(fmt::format("{} cannot be '{}'", name, text));
  return text;
}

Settings settings_of(const Json &object, const std::string &what) {
  if (!object.is_object())
    throw Refusal(what + " is not an object of settings, such as {\"order\": 4}");
  Settings settings;
  for (const auto &[key, value] : object.items()) {
    std::string name = key;
    std::replace(name.begin(), name.end(), '-', '_');
    if (settings.has(name)) throw Refusal(fmt::format("{} has '{}' twice", what, name));
    Values values;
    if (value.is_array())
      for (const Json &item : value) values.push_back(value_of(name, item));
    else
      values.push_back(value_of(name, value));
    settings.set(name, std::move(values));
  }
  return settings;
}

double number_of(const Json &value, const std::string &what) {
  if (value.is_null()) return std::numeric_limits<double>::quiet_NaN();
  if (!value.is_number()) throw Refusal(what + " holds something that is not a number");
  return value.get<double>();
}

patchbay::Dictionary dictionary_of(const Json &object, const std::string &what) {
  if (!object.is_object()) throw Refusal(what + " has a dictionary that is not an object");
  patchbay::Dictionary dictionary;
  for (const auto &[key, value] : object.items()) {
    const std::string name = fmt::format("'{}' of {}", key, what);
    if (value.is_string()) {
      dictionary.emplace_back(key, value.get<std::string>());
    } else if (value.is_array()) {
      Values numbers;
      for (const Json &item : value) numbers.emplace_back(number_of(item, name));
      dictionary.emplace_back(key, std::move(numbers));
    } else {
      dictionary.emplace_back(key, number_of(value, name));
    }
  }
  return dictionary;
}

// A band response has two poles for each of its order, in one section of five numbers.
void check_lengths(const Designer &designer, const SavedDesign &saved, const std::string &what) {
  const double highest = designer.range("order").highest;
  for (const auto &[key, entry] : saved.dictionary)
    if (const auto *list = std::get_if<Values>(&entry);
        list != nullptr && static_cast<double>(list->size()) > 5 * highest)
      throw Refusal(fmt::format("'{}' of {} has {} numbers; a filter of order {} has at most {}",
                                key, what, list->size(), highest, 5 * highest));
}

// Both hold the family and the response.
void check_kind(const Design &design, const std::string &what) {
  for (const auto &[key, entry] : design.dictionary) {
    const auto *held = std::get_if<std::string>(&entry);
    if (held == nullptr || (key != "topology" && key != "response")) continue;
    if (design.settings.text(key) != *held)
      throw Refusal(fmt::format("{} has settings for a {} and the coefficients of a {}", what,
                                design.settings.text(key), *held));
  }
}

}  // namespace

SavedDesign parse_saved_design(const std::string &json, const std::string &what) {
  const Json document = parse_document(json, what);
  if (!document.is_object() || !document.contains("settings"))
    throw Refusal(what +
                  " is not a saved design: it has no \"settings\"; "
                  "'veltane design --format json -o FILE' saves one");
  SavedDesign saved;
  saved.settings = settings_of(document["settings"], "\"settings\" of " + what);
  saved.settings.erase("name");
  if (document.contains("dictionary"))
    saved.dictionary = dictionary_of(document["dictionary"], what);
  return saved;
}

Design opened(Designer &designer, const SavedDesign &saved, const std::string &what) {
  check_lengths(designer, saved, what);
  Design design;
  try {
    design = designer.accepted(saved.settings);
  } catch (const Refusal &refusal) {
    throw Refusal(fmt::format("{}: {}", what, refusal.what()));
  }
  design.dictionary = saved.dictionary;
  check_kind(design, what);
  return design;
}

PublishedFilter filter_in_file(const Design &opened, const std::string &what) {
  try {
    return published_filter(opened);
  } catch (const std::runtime_error &error) {
    throw Refusal(fmt::format("{}: {}", what, error.what()));
  }
}

Settings parse_settings(const std::string &json, const std::string &what) {
  if (auto settings = read_settings_line(json)) return std::move(*settings);
  return settings_of(parse_document(json, what), what);
}

}  // namespace designer
