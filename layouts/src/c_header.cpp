#include "c_header.h"

#include <fmt/format.h>

#include "coefficients.h"
#include "comment.h"
#include "text/numbers.h"

namespace layouts {
namespace {

// How a header writes numbers.
struct NumberType {
  const char *name;
  const char *suffix;  // of a literal
  NumberText digits;
};

NumberType number_type(Arithmetic arithmetic) {
  if (arithmetic == Arithmetic::floats) return {"float", "f", text::float_text};
  return {"double", "", text::double_text};
}

std::string rows(const analysis::Sections &sections, const NumberType &type) {
  std::string rows;
  for (const analysis::Section &s : sections) {
    rows += rows.empty() ? "    {" : ",\n    {";
    const char *separator = "";
    for (const double value : {s.b0, s.b1, s.b2, s.a1, s.a2}) {
      rows += separator + type.digits(value) + type.suffix;
      separator = ", ";
    }
    rows += '}';
  }
  return rows;
}

void replace_all(std::string &text, const std::string &word, const std::string &by) {
  for (std::size_t at = text.find(word); at != std::string::npos;
       at = text.find(word, at + by.size()))
    text.replace(at, word.size(), by);
}

}  // namespace

std::string macro_name(std::string identifier) {
  for (char &c : identifier)
    if (c >= 'a' && c <= 'z') c = static_cast<char>(c - 'a' + 'A');
  return identifier;
}

std::string c_header(const ExportedFilter &filter, Arithmetic arithmetic, std::string blank,
                     const std::string &use) {
  const NumberType type = number_type(arithmetic);
  replace_all(blank, "@ROWS@", rows(filter.sections, type));
  replace_all(blank, "@COUNT@", fmt::format("{}", filter.sections.size()));
  replace_all(blank, "@RATE@", text::double_text(filter.samplerate));
  replace_all(blank, "@TYPE@", type.name);
  replace_all(blank, "@GUARD@", macro_name(filter.identifier));
  replace_all(blank, "@NAME@", filter.identifier);
  std::vector<std::string> usage = equation(Feedback::subtracted);
  usage.push_back(use);
  return comment(filter, "// ", usage) + blank;
}

}  // namespace layouts
