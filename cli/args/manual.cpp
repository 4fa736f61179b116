#include "args/manual.h"

#include <sstream>

#include <fmt/format.h>

#include "args/command_line.h"

namespace cli {
namespace {

// Text that troff takes as it is: hyphens for typing, no escapes, and no line that
// would be a request.
std::string escaped(std::string_view text) {
  std::string out;
  bool line_begins = true;
  for (const char c : text) {
    if (line_begins && (c == '.' || c == '\'')) out += "\\&";
    line_begins = c == '\n';
    if (c == '\\')
      out += "\\e";
    else if (c == '-')
      out += "\\-";
    else if (c == '\'')
      out += "\\(aq";
    else if (c == '"')
      out += "\\(dq";
    else
      out += c;
  }
  return out;
}

std::string paragraphs(const std::string &text) {
  std::string out = ".PP\n";
  std::istringstream lines(text);
  for (std::string line; std::getline(lines, line);)
    out += line.empty() ? ".PP\n" : escaped(line) + '\n';
  return out;
}

std::string names_of(const Option &option) {
  std::string names;
  std::istringstream list{std::string(option.names)};
  for (std::string name; std::getline(list, name, ',');)
    names += fmt::format("{}\\fB{}\\fR", names.empty() ? "" : ", ", escaped(name));
  if (option.is_switch()) return names;
  return fmt::format("{} \\fI{}\\fR", names, escaped(option.value));
}

std::string section(const CommandLine &line) {
  std::string out = fmt::format(".SS {}\n", escaped(line.name)) + paragraphs(line.description);
  for (const Option *option : line.options)
    out += fmt::format(".TP\n{}\n{}\n", names_of(*option), escaped(option->help));
  if (!line.notes.empty()) out += paragraphs(line.notes);
  out += ".PP\nExamples:\n.PP\n.nf\n.RS 4\n";
  for (const std::string_view example : line.examples) out += escaped(example) + '\n';
  return out + ".RE\n.fi\n";
}

}  // namespace

std::string manual_page(std::span<const Subcommand *const> subcommands) {
  std::string sections;
  for (const Subcommand *subcommand : subcommands) sections += section(command_line(*subcommand));
  return R"(.TH VELTANE 1 "" "veltane )" VELTANE_VERSION R"(" "User Commands"
.SH NAME
veltane \- design digital IIR filters
.SH SYNOPSIS
.B veltane
.I SUBCOMMAND
.RI [ OPTION ...]
.br
.B veltane
.BR \-\-help " | " \-\-version " | " \-\-man " | " \-\-completion
.SH DESCRIPTION
Designs digital IIR filters with the veltane module, and shows what it published:
zeros, poles and gain, second\-order sections, and the transfer function.
Options may be typed with hyphens or underscores.
A setting that is not given keeps its default, which is shown in brackets.
.SH SUBCOMMANDS
)" + sections +
         R"(.SH EXIT STATUS
.TP
.B 0
Success.
.TP
.B 1
The filter has a problem, no family meets the demand, or lines of a batch failed.
.TP
.B 2
The request was wrong. One sentence says what was wrong and what is allowed.
.TP
.B 3
Something else failed, such as a full disk or exhausted memory.
)";
}

}  // namespace cli
