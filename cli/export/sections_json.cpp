#include <fmt/format.h>

#include "export/export.h"
#include "json_text.h"

namespace cli {
namespace {

std::string json_list(const Words &words) {
  std::string text;
  for (const std::string &word : words) text += (text.empty() ? "" : ", ") + json_text(word);
  return '[' + text + ']';
}

}  // namespace

std::string to_sections_json(const Export &filter) {
  std::string text = "{\n";
  const auto add = [&](const char *key, const std::string &value) {
    text += fmt::format("  \"{}\": {},\n", key, value);
  };
  add("veltane", json_text(VELTANE_VERSION));
  add("command", json_list(spoken(filter.invocation)));
  add("filter", json_text(filter.title));
  add("samplerate", double_text(filter.samplerate));
  add("equation", json_text("y[n] = b0 x[n] + b1 x[n-1] + b2 x[n-2] - a1 y[n-1] - a2 y[n-2], "
                            "one section after the other"));
  add("feedback", json_text("subtracted"));
  add("gain", json_list(filter.gain));
  add("notes", json_list(filter.remarks));
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
