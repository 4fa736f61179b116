#include "options.h"

#include <algorithm>
#include <deque>

#include <fmt/format.h>
#include <fmt/ranges.h>
#include <CLI/CLI.hpp>

#include "manual.h"

namespace cli {
namespace {

// --passband_ripple=1 is --passband-ripple=1.
std::string hyphenated(std::string word) {
  if (!word.starts_with("--")) return word;
  const auto end =
      word.begin() + static_cast<std::ptrdiff_t>(std::min(word.find('='), word.size()));
  std::replace(word.begin(), end, '_', '-');
  return word;
}

// The library reads its arguments from the back.
Words reversed(Words words) {
  std::reverse(words.begin(), words.end());
  return words;
}

// Runs the library's parser and turns its complaints into ours.
void parse_with(CLI::App &app, const Words &words) {
  try {
    app.parse(reversed(words));
  } catch (const CLI::CallForHelp &) {
    throw Answer{app.help()};
  } catch (const CLI::ExtrasError &) {
    const Words extras = app.remaining();
    throw Refusal(fmt::format("'{}' is no option of {}; --help lists them",
                              extras.empty() ? "" : extras.front(), app.get_name()));
  } catch (const CLI::ParseError &error) {
    throw Refusal(error.what());
  }
}

CLI::Option *add_list(CLI::App &app, const std::string &names, Words &values,
                      const std::string &help, const std::string &value) {
  return app.add_option(names, values, help)->expected(0, -1)->option_text(value);
}

void check_count(const std::string &name, const Words &values, std::size_t maximum) {
  const std::size_t count = values == Words{""} ? 0 : values.size();
  if (count > 0 && count <= maximum) return;
  const char *taken = maximum == 1   ? "one value"
                      : maximum == 2 ? "one or two values"
                                     : "at least one value";
  throw Refusal(
      fmt::format("{} takes {}, and {} {} given", name, taken, count, count == 1 ? "was" : "were"));
}

}  // namespace

bool Option::given() const { return option_->count() > 0; }

std::optional<std::string> Option::value() const {
  if (!given()) return std::nullopt;
  check_count(name_, values_, 1);
  return values_.front();
}

std::string Option::choice(const Words &choices, const std::string &otherwise) const {
  const std::string chosen = value().value_or(otherwise);
  if (std::find(choices.begin(), choices.end(), chosen) == choices.end())
    throw Refusal(fmt::format("{} is {}, not '{}'", name_, fmt::join(choices, " or "), chosen));
  return chosen;
}

Words Option::values() const {
  if (given()) check_count(name_, values_, maximum_);
  return values_;
}

struct Options::Parts {
  CLI::App app;
  HelpText text;
  std::deque<Option> options;  // which the library points into
};

Options::Options(const std::string &name, const std::string &description, const Words &examples)
    : parts_(new Parts{CLI::App(description, name), {name, description, {}, examples, {}}, {}}) {
  parts_->app.set_help_flag("-h,--help", "Print this help");
  show_footer();
}

Options::~Options() = default;

const Option &Options::add(const std::string &names, const std::string &value,
                           const std::string &help, std::size_t maximum) {
  Option &option = parts_->options.emplace_back();
  option.name_ = names.substr(names.find("--"));
  option.maximum_ = maximum;
  option.option_ = add_list(parts_->app, names, option.values_, help, value);
  parts_->text.options.push_back({names, value, help});
  return option;
}

const Option &Options::add_switch(const std::string &names, const std::string &help) {
  Option &option = parts_->options.emplace_back();
  option.name_ = names.substr(names.find("--"));
  option.maximum_ = 0;
  option.option_ = parts_->app.add_flag(names, help);
  parts_->text.options.push_back({names, "", help});
  return option;
}

void Options::append_help(const std::string &text) {
  parts_->text.notes += (parts_->text.notes.empty() ? "" : "\n") + text;
  show_footer();
}

void Options::show_footer() {
  std::string footer = "Examples:\n";
  for (const std::string &example : parts_->text.examples) footer += fmt::format("  {}\n", example);
  if (!parts_->text.notes.empty()) footer += '\n' + parts_->text.notes;
  parts_->app.footer(footer);
}

void Options::parse(const Words &words) {
  if (words == Words{"--man"}) throw Answer{manual_section(parts_->text)};
  Words typed;
  std::transform(words.begin(), words.end(), std::back_inserter(typed), hyphenated);
  for (const Option &option : parts_->options)
    for (const std::string &word : typed)
      if (option.maximum_ == 0 && word.starts_with(option.name_ + '='))
        throw Refusal(fmt::format("{} takes no value", option.name_));
  parse_with(parts_->app, typed);
}

std::string take_option(Words &words, const std::string &name) {
  CLI::App app;
  app.set_help_flag();
  app.allow_extras();
  Words values;
  const CLI::Option *option = add_list(app, name, values, "", "");
  parse_with(app, words);
  words = app.remaining();
  if (option->count() == 0) return "";
  check_count(name, values, 1);
  return values.front();
}

}  // namespace cli
