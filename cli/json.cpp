#include <cmath>

#include <fmt/format.h>
#include <nlohmann/json.hpp>

#include "present.h"

namespace cli {
namespace {

using Json = nlohmann::ordered_json;
using patchbay::Value;
using patchbay::Values;

Json to_json(const Value &value) {
  return std::visit([](const auto &held) { return Json(held); }, value);
}

Json to_json(const Values &values) {
  Json list = Json::array();
  for (const Value &value : values) list.push_back(to_json(value));
  return list;
}

Json to_json(const patchbay::Entry &entry) {
  if (const auto *values = std::get_if<Values>(&entry)) return to_json(*values);
  if (const auto *number = std::get_if<double>(&entry)) return Json(*number);
  return Json(std::get<std::string>(entry));
}

// Always with 17 digits, so that the digits say what the double is, and always
// with a point or an exponent, so that a reader takes it for a floating number.
std::string number_text(double number) {
  if (!std::isfinite(number)) return "null";
  std::string text = fmt::format("{:.17g}", number);
  if (text.find_first_of(".e") == std::string::npos) text += ".0";
  return text;
}

// The library writes the fewest digits; this writes the same JSON with 17, a
// list on one line.
void write(std::string &out, const Json &json, int depth) {
  const std::string indent(static_cast<std::size_t>(depth) * 2, ' ');
  if (json.is_number_float()) {
    out += number_text(json.get<double>());
  } else if (json.is_array()) {
    out += '[';
    for (std::size_t i = 0; i < json.size(); ++i) {
      if (i > 0) out += ", ";
      write(out, json[i], depth);
    }
    out += ']';
  } else if (json.is_object()) {
    out += '{';
    const char *separator = "\n";
    for (const auto &[key, value] : json.items()) {
      out += fmt::format("{}{}  {}: ", separator, indent, Json(key).dump());
      write(out, value, depth + 1);
      separator = ",\n";
    }
    out += '\n' + indent + '}';
  } else {
    out += json.dump(-1, ' ', false, Json::error_handler_t::replace);
  }
}

}  // namespace

std::string to_json(const Design &design, const std::vector<std::string> &command) {
  Json settings = Json::object();
  for (const auto &[name, values] : design.settings)
    settings[name] =
        name == "frequency" || values.size() != 1 ? to_json(values) : to_json(values.front());
  Json dictionary = Json::object();
  for (const auto &[key, entry] : design.dictionary) dictionary[key] = to_json(entry);
  const Json document = {{"veltane", VELTANE_VERSION},
                         {"command", command},
                         {"settings", settings},
                         {"dictionary", dictionary}};
  std::string out;
  write(out, document, 0);
  return out + '\n';
}

}  // namespace cli
