#include <fmt/format.h>
#include <nlohmann/json.hpp>

#include "export/export.h"

namespace cli {
namespace {

using Json = nlohmann::ordered_json;

std::string json_text(const Json &value) {
  return value.dump(-1, ' ', false, Json::error_handler_t::replace);
}

std::string json_text(const Words &words) {
  std::string text;
  for (const std::string &word : words) text += (text.empty() ? "" : ", ") + json_text(Json(word));
  return '[' + text + ']';
}

}  // namespace

std::string to_sections_json(const Export &filter) {
  std::string text = "{\n";
  const auto add = [&](const char *key, const std::string &value) {
    text += fmt::format("  \"{}\": {},\n", key, value);
  };
  add("veltane", json_text(Json(VELTANE_VERSION)));
  add("command", json_text(spoken(filter.invocation)));
  add("filter", json_text(Json(filter.title)));
  add("samplerate", double_text(filter.samplerate));
  add("equation", json_text(Json("y[n] = b0 x[n] + b1 x[n-1] + b2 x[n-2] - a1 y[n-1] - a2 y[n-2], "
                                 "one section after the other")));
  add("feedback", json_text(Json("subtracted")));
  add("gain", json_text(filter.gain));
  add("notes", json_text(filter.remarks));
  add("columns", R"(["b0", "b1", "b2", "a1", "a2"])");
  text += "  \"sections\": [\n";
  const char *separator = "";
  for (const analysis::Section &section : filter.sections) {
    text += fmt::format("{}    [{}]", separator, coefficient_list(section, double_text, false));
    separator = ",\n";
  }
  return text + "\n  ]\n}\n";
}

}  // namespace cli
