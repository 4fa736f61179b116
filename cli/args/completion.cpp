#include "args/completion.h"

#include <fmt/format.h>
#include <fmt/ranges.h>

namespace cli {
namespace {

std::vector<std::string_view> names_of(std::span<const Subcommand *const> subcommands) {
  std::vector<std::string_view> names;
  for (const Subcommand *subcommand : subcommands) names.push_back(subcommand->name);
  return names;
}

// "--help --format --output"
std::string long_names(Options options) {
  std::string names = "--help";
  for (const Option *option : options) names += fmt::format(" {}", option->name());
  return names;
}

// A pattern for `case`: "-o|--output".
std::string pattern(const Option &option) {
  return fmt::format("{}", fmt::join(option.all_names(), "|"));
}

std::string bash_cases(Options options) {
  std::string cases;
  for (const Option *option : options)
    if (!option->choices.empty())
      cases += fmt::format("        {}) words=\"{}\" ;;\n", pattern(*option),
                           fmt::join(option->choices, " "));
    else if (!option->is_switch())
      cases += fmt::format("        {}) words= ;;\n", pattern(*option));
  return cases;
}

std::string bash(const CommandLine &own, std::span<const Subcommand *const> subcommands) {
  std::string text = fmt::format(R"(_veltane() {{
  local word=${{COMP_WORDS[COMP_CWORD]}} before=${{COMP_WORDS[COMP_CWORD - 1]}} words
  COMPREPLY=()
  if [[ $COMP_CWORD -eq 1 ]]; then
    words="{} {}"
  elif [[ ${{COMP_WORDS[1]}} == -* ]]; then
    case $before in
{}    esac
  else
    case ${{COMP_WORDS[1]}} in
)",
                                 fmt::join(names_of(subcommands), " "), long_names(own.options),
                                 bash_cases(own.options));
  for (const Subcommand *subcommand : subcommands) {
    const std::vector<const Option *> options = all_options(*subcommand);
    text +=
        fmt::format("    {})\n      words=\"{}\"\n      case $before in\n{}      esac\n      ;;\n",
                    subcommand->name, long_names(options), bash_cases(options));
  }
  return text + R"(    esac
  fi
  # What is left without a word is completed with files.
  [[ -z $words ]] || mapfile -t COMPREPLY < <(compgen -W "$words" -- "$word")
}
complete -o default -F _veltane veltane
)";
}

// As fish takes a text: in single quotes, in which two characters are escaped.
std::string fish_text(std::string_view text) {
  std::string out = "'";
  for (const char c : text) {
    if (c == '\'' || c == '\\') out += '\\';
    out += c;
  }
  return out + '\'';
}

// Completes an option where a condition of fish holds.
std::string fish_line(const std::string &condition, const Option &option) {
  std::string line = fmt::format("complete -c veltane -n {}", fish_text(condition));
  for (const std::string_view name : option.all_names())
    line += name.starts_with("--") ? fmt::format(" -l {}", name.substr(2))
                                   : fmt::format(" -s {}", name.substr(1));
  if (!option.choices.empty())
    line += fmt::format(" -x -a '{}'", fmt::join(option.choices, " "));
  else if (!option.is_switch())
    line += " -r";
  return line + fmt::format(" -d {}\n", fish_text(option.help));
}

std::string fish(const CommandLine &own, std::span<const Subcommand *const> subcommands) {
  std::string text = "complete -c veltane -l help -d 'Print this help'\n";
  for (const Option *option : own.options) text += fish_line("__fish_use_subcommand", *option);
  for (const Subcommand *subcommand : subcommands) {
    text += fmt::format("complete -c veltane -n __fish_use_subcommand -f -a {} -d {}\n",
                        subcommand->name, fish_text(subcommand->summary));
    for (const Option *option : all_options(*subcommand))
      text += fish_line(fmt::format("__fish_seen_subcommand_from {}", subcommand->name), *option);
  }
  return text;
}

// As zsh takes a text inside the description of an argument, in single quotes: there a colon and
// brackets end it.
std::string zsh_text(std::string_view text) {
  std::string out;
  for (const char c : text) {
    if (c == ':' || c == '[' || c == ']' || c == '\\') out += '\\';
    out += c == '\'' ? std::string("'\\''") : std::string(1, c);
  }
  return out;
}

// An option for _arguments, a line for each name: '--order[Order: 2 to 200]:NUMBER:'. One
// name excludes the others.
std::string zsh_arguments(const Option &option) {
  const std::vector<std::string_view> names = option.all_names();
  std::string value;
  if (!option.choices.empty())
    value = fmt::format(":{}:({})", zsh_text(option.value), fmt::join(option.choices, " "));
  else if (!option.is_switch())
    value = fmt::format(":{}:{}", zsh_text(option.value),
                        option.value.find("FILE") != std::string_view::npos ? "_files" : " ");
  std::string text;
  for (const std::string_view name : names)
    text += fmt::format("        '({})'{}'[{}]{}' \\\n", fmt::join(names, " "), name,
                        zsh_text(option.help), value);
  return text;
}

std::string zsh(const CommandLine &own, std::span<const Subcommand *const> subcommands) {
  std::string text = "#compdef veltane\n_veltane() {\n  local -a subcommands\n  subcommands=(\n";
  for (const Subcommand *subcommand : subcommands)
    text += fmt::format("    '{}:{}'\n", subcommand->name, zsh_text(subcommand->summary));
  text += R"(  )
  if (( CURRENT == 2 )) && [[ $words[2] != -* ]]; then
    _describe -t subcommands subcommand subcommands
    return
  fi
  case $words[2] in
)";
  for (const Subcommand *subcommand : subcommands) {
    text += fmt::format("    {})\n      shift words; (( CURRENT-- ))\n      _arguments \\\n",
                        subcommand->name);
    for (const Option *option : all_options(*subcommand)) text += zsh_arguments(*option);
    text += "        '--help[Print this help]' '*:FILE:_files'\n      ;;\n";
  }
  text += "    *)\n      _arguments \\\n";
  for (const Option *option : own.options) text += zsh_arguments(*option);
  return text + R"(        '--help[Print this help]'
      ;;
  esac
}
if [[ $zsh_eval_context[-1] == loadautofunc ]]; then _veltane "$@"; else compdef _veltane veltane; fi
)";
}

}  // namespace

std::string completion(std::string_view shell, const CommandLine &own,
                       std::span<const Subcommand *const> subcommands) {
  if (shell == "fish") return fish(own, subcommands);
  return shell == "zsh" ? zsh(own, subcommands) : bash(own, subcommands);
}

}  // namespace cli
