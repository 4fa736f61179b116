#include "args/completion.h"

#include <fmt/format.h>
#include <fmt/ranges.h>

#include "args/command_line.h"

namespace cli {
namespace {

std::vector<std::string_view> names_of(std::span<const Subcommand *const> subcommands) {
  std::vector<std::string_view> names;
  for (const Subcommand *subcommand : subcommands) names.push_back(subcommand->name);
  return names;
}

// "--help --format --output"
std::string long_names(const Subcommand &subcommand) {
  std::string names = "--help";
  for (const Option *option : all_options(subcommand)) names += fmt::format(" {}", option->name());
  return names;
}

// A pattern for `case`: "-o|--output".
std::string pattern(const Option &option) {
  const auto comma = option.names.find(',');
  if (comma == std::string_view::npos) return std::string(option.names);
  return fmt::format("{}|{}", option.names.substr(0, comma), option.names.substr(comma + 1));
}

std::string bash_cases(const Subcommand &subcommand) {
  std::string cases;
  for (const Option *option : all_options(subcommand))
    if (!option->choices.empty())
      cases += fmt::format("        {}) words=\"{}\" ;;\n", pattern(*option),
                           fmt::join(option->choices, " "));
    else if (!option->is_switch())
      cases += fmt::format("        {}) words= ;;\n", pattern(*option));
  return cases;
}

std::string bash(std::span<const Subcommand *const> subcommands) {
  std::string text =
      fmt::format(R"(_veltane() {{
  local word=${{COMP_WORDS[COMP_CWORD]}} before=${{COMP_WORDS[COMP_CWORD - 1]}} words
  COMPREPLY=()
  if [[ $COMP_CWORD -eq 1 ]]; then
    words="{} --help --version --man --completion"
  elif [[ $COMP_CWORD -eq 2 && $before == --completion ]]; then
    words="{}"
  else
    case ${{COMP_WORDS[1]}} in
)",
                  fmt::join(names_of(subcommands), " "), fmt::join(completion_shells, " "));
  for (const Subcommand *subcommand : subcommands)
    text +=
        fmt::format("    {})\n      words=\"{}\"\n      case $before in\n{}      esac\n      ;;\n",
                    subcommand->name, long_names(*subcommand), bash_cases(*subcommand));
  return text + R"(    esac
  fi
  # What is left without a word is completed with files.
  [[ -z $words ]] || mapfile -t COMPREPLY < <(compgen -W "$words" -- "$word")
}
complete -o default -F _veltane veltane
)";
}

// As fish takes a text: in single quotes, in which two characters are escaped.
std::string quoted(std::string_view text) {
  std::string out = "'";
  for (const char c : text) {
    if (c == '\'' || c == '\\') out += '\\';
    out += c;
  }
  return out + '\'';
}

std::string fish(std::span<const Subcommand *const> subcommands) {
  std::string text =
      "complete -c veltane -n __fish_use_subcommand -l help -d 'Print the help'\n"
      "complete -c veltane -n __fish_use_subcommand -l version\n"
      "complete -c veltane -n __fish_use_subcommand -l man\n";
  text += fmt::format("complete -c veltane -n __fish_use_subcommand -l completion -x -a '{}'\n",
                      fmt::join(completion_shells, " "));
  for (const Subcommand *subcommand : subcommands) {
    text += fmt::format("complete -c veltane -n __fish_use_subcommand -f -a {} -d {}\n",
                        subcommand->name, quoted(subcommand->summary));
    for (const Option *option : all_options(*subcommand)) {
      text +=
          fmt::format("complete -c veltane -n '__fish_seen_subcommand_from {}'", subcommand->name);
      if (option->names.find(',') != std::string_view::npos)
        text += fmt::format(" -s {}", option->names.substr(1, 1));
      text += fmt::format(" -l {}", option->name().substr(2));
      if (!option->choices.empty())
        text += fmt::format(" -x -a '{}'", fmt::join(option->choices, " "));
      else if (!option->is_switch())
        text += " -r";
      text += fmt::format(" -d {}\n", quoted(option->help));
    }
  }
  return text;
}

}  // namespace

std::string completion(std::string_view shell, std::span<const Subcommand *const> subcommands) {
  return shell == "fish" ? fish(subcommands) : bash(subcommands);
}

}  // namespace cli
