#include "args/command_line.h"

#include <algorithm>
#include <deque>

#include <fmt/format.h>
#include <CLI/CLI.hpp>

#include "args/nearest.h"
#include "args/settings_options.h"
#include "args/shared_options.h"
#include "designer/refusal.h"

namespace cli {
namespace {

// The library's parser, and where it puts what it reads.
class Parser {
 public:
  explicit Parser(const CommandLine &line) : app_(line.description, line.name) {
    app_.set_help_flag("-h,--help", "Print this help");
    for (const Option *option : line.options) add(*option);
    app_.footer(footer(line));
  }

  std::string help() const { return app_.help(); }

  // Turns the library's complaints into ours. @return false where help was asked for
  bool read(const Words &words, const CommandLine &line) {
    try {
      // The library takes its words from the back.
      app_.parse(Words(words.rbegin(), words.rend()));
    } catch (const CLI::CallForHelp &) {
      return false;
    } catch (const CLI::ExtrasError &) {
      const Words extras = app_.remaining();
      refuse_word(extras.empty() ? "" : extras.front(), line);
    } catch (const CLI::ParseError &error) {
      throw designer::Refusal(error.what());
    }
    return true;
  }

  std::map<const Option *, Words> values() const {
    std::map<const Option *, Words> given;
    for (const Entry &entry : entries_)
      if (entry.read->count() > 0) given.emplace(entry.option, entry.values);
    return given;
  }

 private:
  struct Entry {
    const Option *option;
    Words values;
    const CLI::Option *read = nullptr;
  };

  static std::string footer(const CommandLine &line) {
    std::string text = "Examples:\n";
    for (const std::string_view example : line.examples) text += fmt::format("  {}\n", example);
    return line.notes.empty() ? text : text + '\n' + line.notes;
  }

  void add(const Option &option) {
    Entry &entry = entries_.emplace_back(Entry{&option, {}});
    const std::string names(option.names), help(option.help);
    if (option.is_switch())
      entry.read = app_.add_flag(names, help);
    else
      entry.read = app_.add_option(names, entry.values, help)
                       ->expected(0, -1)
                       ->option_text(std::string(option.value));
  }

  [[noreturn]] static void refuse_word(const std::string &word, const CommandLine &line) {
    if (!word.starts_with('-'))
      throw designer::Refusal(
          fmt::format("unexpected '{}'; {} --help shows what it takes", word, line.name));
    std::vector<std::string_view> names{"--help"};
    for (const Option *option : line.options)
      for (const std::string_view known : option->all_names()) names.push_back(known);
    const std::string name = word.substr(0, word.find('='));
    if (const auto near = nearest(name, names))
      throw designer::Refusal(fmt::format("unknown option '{}'; did you mean {}?", word, *near));
    throw designer::Refusal(
        fmt::format("unknown option '{}'; {} --help lists the options", word, line.name));
  }

  CLI::App app_;
  std::deque<Entry> entries_;  // which the library points into
};

}  // namespace

std::vector<const Option *> all_options(const Subcommand &subcommand) {
  std::vector<const Option *> options(subcommand.options.begin(), subcommand.options.end());
  if (subcommand.shared == SharedOptions::settings_and_module) {
    const Options settings = settings_options();
    options.insert(options.end(), settings.begin(), settings.end());
    options.push_back(&from_option);
  }
  options.push_back(&module_option);
  return options;
}

CommandLine command_line(const Subcommand &subcommand) {
  return {fmt::format("veltane {}", subcommand.name),
          subcommand.description(),
          subcommand.operand,
          all_options(subcommand),
          subcommand.examples,
          std::string(subcommand.notes)};
}

std::string help(const CommandLine &line) { return Parser(line).help(); }

std::optional<Arguments> parse(const CommandLine &line, const Words &words) {
  const bool has_operand = !line.operand.empty() && !words.empty() &&
                           (!words.front().starts_with('-') || words.front() == "-");
  Words typed;
  std::transform(words.begin() + (has_operand ? 1 : 0), words.end(), std::back_inserter(typed),
                 [&](const std::string &word) { return in_full(word, line.options); });
  for (const Option *option : line.options)
    for (const std::string &word : typed)
      if (option->is_switch() && word.starts_with(std::string(option->name()) + '='))
        throw designer::Refusal(fmt::format("{} takes no value", option->name()));
  Parser parser(line);
  if (!parser.read(typed, line)) return std::nullopt;
  return Arguments(parser.values(), has_operand ? std::optional(words.front()) : std::nullopt);
}

}  // namespace cli
