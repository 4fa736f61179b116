#include "c_header.h"

#include <fmt/format.h>

#include "coefficients.h"
#include "comment.h"
#include "section_routine.h"
#include "structure.h"
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

std::string rows(const ExportedFilter &filter, const NumberType &type) {
  std::string rows;
  for (const std::vector<double> &row : coefficient_rows(filter)) {
    rows += rows.empty() ? "    {" : ",\n    {";
    const char *separator = "";
    for (const double value : row) {
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

// The text once for each of the lines, in the place of a word.
std::string for_each(const std::vector<std::string> &lines, const char *text, const char *word) {
  std::string all;
  for (const std::string &line : lines) {
    std::string one = text;
    replace_all(one, word, line);
    all += one;
  }
  return all;
}

}  // namespace

std::string macro_name(std::string identifier) {
  for (char &c : identifier)
    if (c >= 'a' && c <= 'z') c = static_cast<char>(c - 'a' + 'A');
  return identifier;
}

std::string c_header(const ExportedFilter &filter, Arithmetic arithmetic,
                     const HeaderLanguage &language, const std::string &usage) {
  const NumberType type = number_type(arithmetic);
  const SectionRoutine routine = section_routine(filter.structure);
  std::string header = language.blank;
  replace_all(header, "@STATE@", for_each(routine.state, language.member, "@MEMBER@"));
  replace_all(header, "@STATEMENTS@",
              for_each(routine.statements, language.statement, "@STATEMENT@"));
  for (const std::string &name : routine.state)
    replace_all(header, '@' + name + '@', for_each({name}, language.use, "@MEMBER@"));
  replace_all(header, "@ROWS@", rows(filter, type));
  replace_all(header, "@COUNT@", fmt::format("{}", filter.sections.size()));
  replace_all(header, "@COLUMNS@", fmt::format("{}", fmt::join(routine.coefficients, ", ")));
  replace_all(header, "@COLUMN_COUNT@", fmt::format("{}", routine.coefficients.size()));
  replace_all(header, "@STRUCTURE@", name_of(filter.structure));
  replace_all(header, "@RATE@", text::double_text(filter.samplerate));
  replace_all(header, "@TYPE@", type.name);
  replace_all(header, "@GUARD@", macro_name(filter.identifier));
  replace_all(header, "@NAME@", filter.identifier);
  std::vector<std::string> lines = routine.equation;
  lines.push_back(usage);
  return comment(filter, "// ", lines) + header;
}

}  // namespace layouts
