#include "args/command_line.h"

#include <algorithm>
#include <cstdlib>
#include <deque>

#include <fmt/format.h>
#include <CLI/CLI.hpp>

#include "args/nearest.h"
#include "args/option_words.h"
#include "args/settings_options.h"
#include "args/shared_options.h"
#include "designer/refusal.h"

namespace cli {
namespace {

// Whether a word is a number, or several, as an option takes them: "3k", "300,3400". One that is
// refused later, such as "inf", is meant as one as well.
bool is_number(const std::string &word, const Option &option) {
  const Words numbers = in_own_words(option, {word});
  return std::all_of(numbers.begin(), numbers.end(), [](const std::string &number) {
    char *stopped = nullptr;
    std::strtod(number.c_str(), &stopped);
    return !number.empty() && *stopped == '\0';
  });
}

bool is_option(const std::string &word) {
  return word.size() > 1 && word.front() == '-' && word.find_first_of("0123456789.") != 1;
}

// The option of this name; null where there is none.
const Option *option_named(std::string_view name, Options options) {
  for (const Option *option : options) {
    const std::vector<std::string_view> names = option->all_names();
    if (std::find(names.begin(), names.end(), name) != names.end()) return option;
  }
  return nullptr;
}

// Whether a word is an option together with its value: --order=5, -oFILE.
bool has_its_value(const std::string &word, Options options) {
  if (word.starts_with("--")) return word.find('=') != std::string::npos;
  return word.size() > 2 && option_named(std::string_view(word).substr(0, 2), options) != nullptr;
}

// The words that no option takes as its values: the option before has as many as it takes, or is a
// switch, or takes numbers only.
std::vector<Words::const_iterator> operands_in(const Words &words, Options options) {
  std::vector<Words::const_iterator> found;
  const Option *option = nullptr;
  std::size_t taken = 0, most = 0;
  for (auto word = words.begin(); word != words.end(); ++word) {
    if (is_option(*word)) {
      option = option_named(in_full(*word, options), options);
      const bool complete = has_its_value(*word, options);
      // The parser complains of an option that does not exist.
      if (option == nullptr && !complete) return {};
      taken = 0;
      most = complete || option->is_switch() ? 0 : option->most;
      continue;
    }
    // A number too many is more likely meant for the option, and so is the first word after it.
    const bool numbers = most > 0 && option->value.starts_with("NUMBER");
    if (numbers ? taken > 0 && !is_number(*word, *option) : taken == most)
      found.push_back(word);
    else
      ++taken;
  }
  return found;
}

// The library's parser, and where it puts what it reads.
class Parser {
 public:
  explicit Parser(const CommandLine &line) : app_(line.description, line.name) {
    app_.set_help_flag("-h,--help", "Print this help");
    // Elsewhere that is how it is: a word with a slash in front is a file.
    app_.allow_windows_style_options(false);
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
      if (entry.read->count() > 0)
        given.emplace(entry.option, in_own_words(*entry.option, entry.values));
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
  if (subcommand.shared == SharedOptions::none) return options;
  if (subcommand.shared != SharedOptions::module) {
    const Options settings = settings_options();
    options.insert(options.end(), settings.begin(), settings.end());
  }
  if (subcommand.shared == SharedOptions::settings_and_module) options.push_back(&from_option);
  options.push_back(&module_option);
  return options;
}

CommandLine command_line(const Subcommand &subcommand) {
  return {fmt::format("veltane {}", subcommand.name),
          subcommand.description(),
          subcommand.operand,
          subcommand.most_operands,
          all_options(subcommand),
          subcommand.examples,
          std::string(subcommand.notes)};
}

std::string help(const CommandLine &line) { return Parser(line).help(); }

std::optional<Arguments> parse(const CommandLine &line, const Words &words) {
  const auto operands = line.operand.empty() ? std::vector<Words::const_iterator>()
                                             : operands_in(words, line.options);
  if (operands.size() > line.most_operands)
    throw designer::Refusal(
        fmt::format("unexpected '{}' beside '{}'; {} --help shows what it takes",
                    *operands[line.most_operands], *operands[line.most_operands - 1], line.name));
  Words typed, files;
  for (auto word = words.begin(); word != words.end(); ++word)
    if (std::find(operands.begin(), operands.end(), word) != operands.end())
      files.push_back(*word);
    else
      typed.push_back(in_full(*word, line.options));
  for (const Option *option : line.options)
    for (const std::string &word : typed)
      if (option->is_switch() && word.starts_with(std::string(option->name()) + '='))
        throw designer::Refusal(fmt::format("{} takes no value", option->name()));
  Parser parser(line);
  if (!parser.read(typed, line)) return std::nullopt;
  return Arguments(parser.values(), files);
}

}  // namespace cli
