#include "arguments.h"

#include <algorithm>
#include <map>

#include <fmt/format.h>
#include <CLI/CLI.hpp>

namespace cli {
namespace {

using patchbay::AttributeInfo;
using patchbay::Values;

std::string with(std::string text, char from, char to) {
  std::replace(text.begin(), text.end(), from, to);
  return text;
}

// --passband_ripple=1 is --passband-ripple=1.
std::string hyphenated(const std::string &word) {
  if (!word.starts_with("--")) return word;
  const std::size_t end = std::min(word.find('='), word.size());
  return with(word.substr(0, end), '_', '-') + word.substr(end);
}

std::string option_name(const AttributeInfo &attribute) {
  return "--" + with(attribute.name, '_', '-');
}

std::string help_for(const AttributeInfo &attribute) {
  const auto text = [](const Values &values) {
    return values.empty() ? std::string() : patchbay::to_text(values[0]);
  };
  std::string help = text(attribute.property("label"));
  // The ripple is known by its category.
  if (attribute.name == "passband_ripple") help = text(attribute.property("category"));
  const Values choices = attribute.property("enumvals");
  for (std::size_t i = 0; i < choices.size(); ++i)
    help += (i == 0 ? ": " : ", ") + patchbay::to_text(choices[i]);
  if (attribute.lowest && attribute.highest)
    help += fmt::format(": {} to {}", *attribute.lowest, *attribute.highest);
  return help;
}

std::string value_name(const AttributeInfo &attribute) {
  if (attribute.property("style") == Values{std::string("onoff")}) return "on|off";
  if (attribute.type == "symbol") return "WORD";
  return attribute.maximum == 1 ? "NUMBER" : "NUMBER [NUMBER]";
}

// The library reads its arguments from the back.
Words reversed(Words words) {
  std::reverse(words.begin(), words.end());
  return words;
}

// Runs the library's parser and turns its complaints into ours.
void parse(CLI::App &app, const Words &words) {
  try {
    app.parse(reversed(words));
  } catch (const CLI::CallForHelp &) {
    throw Answer{app.help()};
  } catch (const CLI::CallForVersion &) {
    throw Answer{"veltane " VELTANE_VERSION "\n"};
  } catch (const CLI::ExtrasError &) {
    const Words extras = app.remaining();
    throw Refusal(fmt::format("'{}' is no option of {}; --help lists them",
                              extras.empty() ? "" : extras.front(), app.get_name()));
  } catch (const CLI::ParseError &error) {
    throw Refusal(with(error.what(), '\n', ' '));
  }
}

// Adds an option that takes any number of values. The number is checked later,
// where a sentence can be made of it.
CLI::Option *add_list(CLI::App &app, const std::string &name, Words &values,
                      const std::string &help, const std::string &value) {
  return app.add_option(name, values, help)->expected(0, -1)->option_text(value);
}

std::size_t count_of(const Words &values) { return values == Words{""} ? 0 : values.size(); }

void check_count(const std::string &name, const Words &values, std::size_t maximum) {
  const std::size_t count = count_of(values);
  if (count == 0 || count > maximum)
    throw Refusal(fmt::format("{} takes {}, and {} {} given", name,
                              maximum == 1 ? "one value" : "one or two values", count,
                              count == 1 ? "was" : "were"));
}

std::string only_value(const std::string &name, const Words &values) {
  check_count(name, values, 1);
  return values.front();
}

}  // namespace

Command parse_command(const Words &arguments) {
  CLI::App app("Designs digital IIR filters with the veltane module and shows what it published.",
               "veltane");
  app.set_version_flag("--version", "veltane " VELTANE_VERSION);
  app.footer(
      "Try: veltane design\n"
      "     veltane design --topology butterworth --order 4 --frequency 1000");
  const CLI::App *design =
      app.add_subcommand("design", "Designs one filter and prints it")->prefix_command();
  app.require_subcommand(0, 1);
  Words known = arguments;
  // What follows the subcommand is for its own parser, --help included.
  Command command;
  if (!known.empty() && known.front() == design->get_name()) {
    command.subcommand = known.front();
    CLI::App module_only;
    module_only.set_help_flag();
    module_only.allow_extras();
    Words modules;
    const CLI::Option *option = add_list(module_only, "--module", modules, "", "");
    parse(module_only, Words(known.begin() + 1, known.end()));
    if (option->count() > 0) command.module = only_value("--module", modules);
    command.rest = module_only.remaining();
    return command;
  }
  if (!known.empty() && !known.front().starts_with("-"))
    throw Refusal(
        fmt::format("'{}' is no subcommand; there is {}", known.front(), design->get_name()));
  parse(app, known);
  throw Refusal("veltane needs a subcommand, such as design; --help shows them");
}

DesignRequest parse_design(const Words &rest, const std::vector<AttributeInfo> &attributes) {
  CLI::App app(
      "Designs one filter: makes a box of the class veltane with these settings, bangs it, and\n"
      "prints the dictionary that it publishes. What is not given stays as a new box has it.",
      "veltane design");
  DesignRequest request{{}, "text"};
  Words formats;
  Words modules;  // read before the options that depend on it
  const CLI::Option *format =
      add_list(app, "--format", formats, "How to print it: text, json", "WORD");
  add_list(app, "--module", modules, "The module to load, if not the installed one", "FILE");
  std::map<std::string, Words> given;
  std::map<std::string, const CLI::Option *> options;
  for (const AttributeInfo &attribute : attributes)
    options[attribute.name] = add_list(app, option_name(attribute), given[attribute.name],
                                       help_for(attribute), value_name(attribute));
  Words words;
  std::transform(rest.begin(), rest.end(), std::back_inserter(words), hyphenated);
  parse(app, words);
  if (format->count() > 0) request.format = only_value("--format", formats);
  if (request.format != "text" && request.format != "json")
    throw Refusal(fmt::format("--format is text or json, not '{}'", request.format));
  for (const AttributeInfo &attribute : attributes) {
    if (options[attribute.name]->count() == 0) continue;
    const Words &texts = given[attribute.name];
    check_count(option_name(attribute), texts, attribute.maximum);
    request.settings.emplace_back(attribute.name, Values(texts.begin(), texts.end()));
  }
  return request;
}

}  // namespace cli
