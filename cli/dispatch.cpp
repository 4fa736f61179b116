#include "dispatch.h"

#include <algorithm>
#include <array>
#include <filesystem>

#include <fmt/format.h>
#include <fmt/ranges.h>

#include "args/command_line.h"
#include "args/completion.h"
#include "args/manual.h"
#include "args/nearest.h"
#include "args/shared_options.h"
#include "args/subcommands.h"
#include "base/installation.h"
#include "base/messages.h"
#include "designer/refusal.h"
#include "os/path.h"

namespace cli {

namespace {

const std::array table{
#define SUBCOMMAND(name) &name##_subcommand,
#include "args/subcommands.inc"
#undef SUBCOMMAND
};

constexpr Option version_option{.names = "--version", .help = "Print the version"};
constexpr Option manual_option{.names = "--man",
                               .help = "Print the manual page: veltane --man | man -l -"};
constexpr Option completion_option{
    .names = "--completion",
    .value = "SHELL",
    .help =
        "Print the completion script for a shell: bash, zsh, fish; for example "
        "'source <(veltane --completion bash)'",
    .choices = completion_shells};

constexpr std::array<std::string_view, 2> examples{
    "veltane design", "veltane design --topology butterworth --order 4 --frequency 1000"};

std::string list() {
  std::string text = "Subcommands:\n";
  for (const Subcommand *subcommand : table)
    text += fmt::format("  {:<28}{}\n", subcommand->name, subcommand->summary);
  return text + "\n'veltane SUBCOMMAND --help' shows the options of a subcommand.\n";
}

CommandLine own_line() {
  return {.name = "veltane",
          .description =
              "Designs digital IIR filters with the veltane module and shows what it "
              "published.",
          .operand = "",
          .most_operands = 0,
          .options = {&version_option, &manual_option, &completion_option},
          .examples = examples,
          .notes = list()};
}

// The module lies beside the program: PREFIX/bin/veltane, PREFIX/lib/veltane/.
std::filesystem::path installed_module() {
  return installation() / "lib" / "veltane" / VELTANE_MODULE_NAME;
}

std::string answer(const Words &words) {
  const CommandLine line = own_line();
  const auto arguments = parse(line, words);
  if (!arguments) return help(line);
  if (arguments->given(version_option)) return "veltane " VELTANE_VERSION "\n";
  if (arguments->given(manual_option)) return manual_page(table);
  if (arguments->given(completion_option))
    return completion(arguments->choice(completion_option), line, table);
  throw designer::Refusal("veltane needs a subcommand, such as design; --help lists them");
}

const Subcommand &subcommand_named(const std::string &name) {
  const auto found = std::find_if(table.begin(), table.end(), [&](const Subcommand *subcommand) {
    return subcommand->name == name;
  });
  if (found != table.end()) return **found;
  std::vector<std::string_view> names(table.size());
  std::transform(table.begin(), table.end(), names.begin(),
                 [](const Subcommand *subcommand) { return subcommand->name; });
  if (const auto near = nearest(name, names))
    throw designer::Refusal(fmt::format("unknown subcommand '{}'; did you mean {}?", name, *near));
  throw designer::Refusal(
      fmt::format("unknown subcommand '{}'; it is one of {}", name, fmt::join(names, ", ")));
}

// 'veltane help design' is what people try first.
std::string help_on(const Words &words) {
  if (words.empty()) return help(own_line());
  if (words.size() > 1)
    throw designer::Refusal(fmt::format("unexpected '{}'; help takes one subcommand", words[1]));
  return help(command_line(subcommand_named(words.front())));
}

}  // namespace

int run(const Words &words) {
  if (!words.empty() && words.front() == "help") {
    print(help_on(Words(words.begin() + 1, words.end())));
    return 0;
  }
  if (words.empty() || words.front().starts_with("-")) {
    print(answer(words));
    return 0;
  }
  const Subcommand &subcommand = subcommand_named(words.front());
  const CommandLine line = command_line(subcommand);
  const auto arguments = parse(line, Words(words.begin() + 1, words.end()));
  if (!arguments) {
    print(help(line));
    return 0;
  }
  Request request{{"veltane"}, installed_module(), *arguments};
  request.command.insert(request.command.end(), words.begin(), words.end());
  if (const auto module = arguments->value(module_option)) request.module = os::path_of(*module);
  return subcommand.run(request);
}

}  // namespace cli
