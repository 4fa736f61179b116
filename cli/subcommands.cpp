#include "subcommands.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <string_view>

#include <fmt/format.h>

#include "manual.h"
#include "options.h"
#include "subcommand.h"
#include "text/printable.h"

namespace cli {
namespace {

constexpr std::array table{
    Subcommand{"design", "Designs one filter and prints it", design_command},
    Subcommand{"check", "Checks one filter and says what is wrong with it", check_command},
    Subcommand{"plot", "Draws filters: level, phase, group delay, zeros and poles", plot_command},
    Subcommand{"export", "Writes one filter in another program's layout", export_command},
    Subcommand{"estimate", "Finds the least order that meets a demand", estimate_command},
};

// The module lies beside the program: PREFIX/bin/veltane, PREFIX/lib/veltane/.
std::filesystem::path installed_module() {
  const auto program = std::filesystem::read_symlink("/proc/self/exe");
  return program.parent_path().parent_path() / "lib" / "veltane" / "veltane.so";
}

std::string names() {
  std::string text;
  for (const Subcommand &subcommand : table)
    text += fmt::format("{}{}", text.empty() ? "" : ", ", subcommand.name);
  return text;
}

std::string list() {
  std::string text = "Subcommands:\n";
  for (const Subcommand &subcommand : table)
    text += fmt::format("  {:<28}{}\n", subcommand.name, subcommand.summary);
  return text + "\n'veltane SUBCOMMAND --help' shows the options of one.\n";
}

bool is_plain(char c) {
  return std::isalnum(static_cast<unsigned char>(c)) != 0 ||
         std::string_view("-_./:=,+@%").find(c) != std::string_view::npos;
}

std::string in_hexadecimal(const text::Hidden &hidden) {
  std::string text;
  for (const char c : hidden.bytes) text += fmt::format("\\x{:02x}", static_cast<unsigned char>(c));
  return text;
}

// As POSIX shells take it; with what is not to be shown as bash and its like do.
std::string quoted(const std::string &word) {
  if (!word.empty() && std::all_of(word.begin(), word.end(), is_plain)) return word;
  const bool escaped = text::printable(word) != word;
  std::string text;
  for (const char c : word) {
    if (escaped && (c == '\'' || c == '\\'))
      text += std::string("\\") + c;
    else if (c == '\'')
      text += "'\\''";
    else
      text += c;
  }
  return escaped ? "$'" + text::with_hidden(text, in_hexadecimal) + '\'' : '\'' + text + '\'';
}

}  // namespace

Words spoken(const Invocation &invocation) {
  Words words{"veltane"};
  words.insert(words.end(), invocation.words.begin(), invocation.words.end());
  return words;
}

std::string shell_line(const Invocation &invocation) {
  std::string line = "veltane";
  for (const std::string &word : invocation.words) line += ' ' + quoted(word);
  return line;
}

std::span<const Subcommand> subcommands() { return table; }

namespace {

// The page is made of the answer that each subcommand gives.
std::string manual() {
  std::string sections;
  for (const Subcommand &subcommand : table) {
    try {
      subcommand.run({{subcommand.name, "--man"}, {"--man"}, installed_module()});
    } catch (const Answer &answer) {
      sections += answer.text;
    }
  }
  return manual_page(sections);
}

void answer_itself(const Words &words) {
  Options options(
      "veltane", "Designs digital IIR filters with the veltane module and shows what it published.",
      {"veltane design", "veltane design --topology butterworth --order 4 --frequency 1000"});
  const Option &version = options.add_switch("--version", "Print the version");
  options.add_switch("--man", "Print the manual page: veltane --man | man -l -");
  options.append_help(list());
  if (words == Words{"--man"}) throw Answer{manual()};
  options.parse(words);
  if (version.given()) throw Answer{"veltane " VELTANE_VERSION "\n"};
  throw Refusal("veltane needs a subcommand, such as design; --help shows them");
}

}  // namespace

int run(const Words &words) {
  if (words.empty() || words.front().starts_with("-")) answer_itself(words);
  const auto found = std::find_if(table.begin(), table.end(), [&](const Subcommand &subcommand) {
    return subcommand.name == words.front();
  });
  if (found == table.end())
    throw Refusal(fmt::format("'{}' is no subcommand; there is {}", words.front(), names()));
  Invocation invocation{words, Words(words.begin() + 1, words.end()), {}};
  const std::string module = take_option(invocation.rest, "--module");
  invocation.module = module.empty() ? installed_module() : std::filesystem::path(module);
  return found->run(invocation);
}

}  // namespace cli
