#include "text/json.h"

#include <fmt/format.h>

#include "coefficients.h"
#include "layouts/exported_filter.h"
#include "targets.h"
#include "text/numbers.h"

namespace layouts {
namespace {

using text::json_string;

std::string json_list(const std::vector<std::string> &values) {
  std::string list;
  for (const std::string &value : values) list += (list.empty() ? "" : ", ") + json_string(value);
  return '[' + list + ']';
}

// Written by hand: a page of JSON would have all sections on one line.
std::string write(const ExportedFilter &filter) {
  std::string file = "{\n";
  const auto add = [&](const char *key, const std::string &value) {
    file += fmt::format("  \"{}\": {},\n", key, value);
  };
  add("veltane", json_string(VELTANE_VERSION));
  add("command", json_list(filter.command));
  add("filter", json_string(filter.title));
  add("samplerate", text::double_text(filter.samplerate));
  add("equation", json_string("y[n] = b0 x[n] + b1 x[n-1] + b2 x[n-2] - a1 y[n-1] - a2 y[n-2], "
                              "one section after the other"));
  add("feedback", json_string("subtracted"));
  add("gain", json_list(filter.scaling));
  add("notes", json_list(filter.remarks));
  add("columns", R"(["b0", "b1", "b2", "a1", "a2"])");
  file += "  \"sections\": [\n";
  const char *separator = "";
  for (const analysis::Section &section : filter.sections) {
    file += fmt::format("{}    [{}]", separator,
                        coefficient_list(section, Feedback::subtracted, text::double_text));
    separator = ",\n";
  }
  return file + "\n  ]\n}\n";
}

}  // namespace

constinit const Target json_target{"json", "sections, equation and sample rate for programs",
                                   Arithmetic::doubles, Form::sections, write};

}  // namespace layouts
