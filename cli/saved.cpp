#include "saved.h"

#include <algorithm>
#include <cstdint>
#include <limits>

#include <fmt/format.h>

#include "json_text.h"

namespace cli {
namespace {

using patchbay::Value;
using patchbay::Values;

Value value_of(const std::string &name, const Json &json) {
  if (json.is_boolean()) return std::string(json.get<bool>() ? "true" : "false");
  constexpr auto largest = static_cast<std::uint64_t>(std::numeric_limits<t_long>::max());
  if (json.is_number_unsigned() && json.get<std::uint64_t>() > largest) return json.get<double>();
  if (json.is_number_integer()) return json.get<t_long>();
  if (json.is_number()) return json.get<double>();
  if (!json.is_string())
    throw Refusal(fmt::format("{} is a number, a text, true or false, not {}", name,
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
    for (const auto &earlier : settings)
      if (earlier.first == name) throw Refusal(fmt::format("{} has '{}' twice", what, name));
    Values values;
    if (value.is_array())
      for (const Json &item : value) values.push_back(value_of(name, item));
    else
      values.push_back(value_of(name, value));
    settings.emplace_back(name, values);
  }
  return settings;
}

double number_of(const Json &value, const std::string &what) {
  if (value.is_null()) return std::numeric_limits<double>::quiet_NaN();
  if (!value.is_number()) throw Refusal(what + " holds what is no number");
  return value.get<double>();
}

patchbay::Dictionary dictionary_of(const Json &object, const std::string &what) {
  if (!object.is_object()) throw Refusal(what + " has a dictionary that is no object");
  patchbay::Dictionary dictionary;
  for (const auto &[key, value] : object.items()) {
    const std::string name = fmt::format("'{}' of {}", key, what);
    if (value.is_string()) {
      dictionary.emplace_back(key, value.get<std::string>());
    } else if (value.is_array()) {
      Values numbers;
      for (const Json &item : value) numbers.emplace_back(number_of(item, name));
      dictionary.emplace_back(key, numbers);
    } else {
      dictionary.emplace_back(key, number_of(value, name));
    }
  }
  return dictionary;
}

double highest_order(const patchbay::Host &host) {
  for (const patchbay::AttributeInfo &attribute : host.attributes("veltane"))
    if (attribute.name == "order" && attribute.highest) return *attribute.highest;
  throw std::runtime_error("the module tells no highest order");
}

// A band response has two poles for each of its order, in one section of five numbers.
void check_lengths(const patchbay::Host &host, const Design &saved, const std::string &what) {
  const double highest = highest_order(host);
  for (const auto &[key, entry] : saved.dictionary)
    if (const auto *list = std::get_if<Values>(&entry);
        list != nullptr && static_cast<double>(list->size()) > 5 * highest)
      throw Refusal(
          fmt::format("'{}' of {} has {} numbers, and a filter of order {} has {} at most", key,
                      what, list->size(), highest, 5 * highest));
}

// The family and the response stand in both.
void check_kind(const Design &design, const std::string &what) {
  for (const auto &[key, entry] : design.dictionary) {
    const auto *held = std::get_if<std::string>(&entry);
    if (held == nullptr || (key != "topology" && key != "response")) continue;
    for (const auto &[name, values] : design.settings)
      if (name == key && values != Values{*held})
        throw Refusal(fmt::format("{} has settings for a {} and the coefficients of a {}", what,
                                  patchbay::to_text(values.at(0)), *held));
  }
}

}  // namespace

Design read_saved(const std::string &file) {
  const std::string what = fmt::format("'{}'", file);
  const Json document = parse_json(read_input(file), what);
  if (!document.is_object() || !document.contains("settings"))
    throw Refusal(what +
                  " is no saved design: it has no \"settings\"; "
                  "'veltane design --format json -o FILE' saves one");
  Design design;
  design.settings = settings_of(document["settings"], "\"settings\" of " + what);
  std::erase_if(design.settings, [](const auto &setting) { return setting.first == "name"; });
  if (document.contains("dictionary"))
    design.dictionary = dictionary_of(document["dictionary"], what);
  return design;
}

Design saved_filter(patchbay::Host &host, const std::string &file, const Design &saved) {
  const std::string what = fmt::format("'{}'", file);
  check_lengths(host, saved, what);
  Design design;
  try {
    design = accepted(host, saved.settings);
  } catch (const Refusal &refusal) {
    throw Refusal(fmt::format("{}: {}", what, refusal.what()));
  }
  design.dictionary = saved.dictionary;
  check_kind(design, what);
  return design;
}

Settings read_settings(const std::string &json) {
  return settings_of(parse_json(json, "the line"), "the line");
}

}  // namespace cli
