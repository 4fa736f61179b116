#include <cmath>

#include <fmt/format.h>

#include "json_text.h"
#include "present.h"

namespace cli {
namespace {

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
class Writer {
 public:
  /** @param pages  whether each member of an object begins a line */
  explicit Writer(bool pages) : pages_(pages) {}

  void write(const Json &json, std::size_t depth = 0) {
    if (json.is_number_float())
      out_ += number_text(json.get<double>());
    else if (json.is_array())
      write_list(json, depth);
    else if (json.is_object())
      write_object(json, depth);
    else
      out_ += json_text(json);
  }

  std::string text() { return std::move(out_); }

 private:
  void write_list(const Json &json, std::size_t depth) {
    out_ += '[';
    for (std::size_t i = 0; i < json.size(); ++i) {
      if (i > 0) out_ += ", ";
      write(json[i], depth);
    }
    out_ += ']';
  }

  void write_object(const Json &json, std::size_t depth) {
    const std::string newline = pages_ ? '\n' + std::string(depth * 2, ' ') : "";
    out_ += '{';
    bool first = true;
    for (const auto &[key, value] : json.items()) {
      if (!first) out_ += pages_ ? "," : ", ";
      out_ += newline + (pages_ ? "  " : "") + json_text(key) + ": ";
      write(value, depth + 1);
      first = false;
    }
    out_ += newline + '}';
  }

  bool pages_;
  std::string out_;
};

std::string one_line(const Json &json) {
  Writer writer(false);
  writer.write(json);
  return writer.text();
}

Json settings_json(const Design &design) {
  Json settings = Json::object();
  for (const auto &[name, values] : design.settings)
    settings[name] =
        name == "frequency" || values.size() != 1 ? to_json(values) : to_json(values.front());
  return settings;
}

Json dictionary_json(const Design &design) {
  Json dictionary = Json::object();
  for (const auto &[key, entry] : design.dictionary) dictionary[key] = to_json(entry);
  return dictionary;
}

}  // namespace

std::string json_page(const Json &document) {
  Writer writer(true);
  writer.write(document);
  return writer.text() + '\n';
}

std::string to_json(const Design &design, const std::vector<std::string> &command) {
  return json_page({{"veltane", VELTANE_VERSION},
                    {"command", command},
                    {"settings", settings_json(design)},
                    {"dictionary", dictionary_json(design)}});
}

std::string to_json_line(std::size_t number, const Design &design) {
  Json line = {{"line", number},
               {"veltane", VELTANE_VERSION},
               {"settings", settings_json(design)},
               {"dictionary", dictionary_json(design)}};
  if (!design.remarks.empty()) line["remarks"] = design.remarks;
  return one_line(line);
}

std::string error_json_line(std::size_t number, const std::string &sentence) {
  return one_line({{"line", number}, {"error", sentence}});
}

}  // namespace cli
