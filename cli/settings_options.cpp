#include "settings_options.h"

#include <algorithm>
#include <map>

#include <fmt/format.h>

#include "saved.h"

namespace cli {
namespace {

using patchbay::AttributeInfo;
using patchbay::Values;

std::string option_name(const AttributeInfo &attribute) {
  std::string name = "--" + attribute.name;
  std::replace(name.begin(), name.end(), '_', '-');
  return name;
}

bool is_switch(const AttributeInfo &attribute) {
  return attribute.property("style") == Values{std::string("onoff")};
}

std::string text(const Values &values) {
  return values.empty() ? std::string() : patchbay::to_text(values[0]);
}

// What the module does not say of its attributes.
std::string unit(const std::string &name) {
  static const std::map<std::string, std::string> units{
      {"samplerate", " in Hz, 0 for that of the audio, 48000"},
      {"frequency", " in --units: one, or two for a band response"},
      {"passband_ripple", " dB"},
      {"stopband_attenuation", " dB"}};
  const auto found = units.find(name);
  return found == units.end() ? "" : found->second;
}

std::string help_for(const AttributeInfo &attribute, const Values &fresh) {
  std::string help = text(attribute.property("label"));
  // The ripple is known by its category.
  if (attribute.name == "passband_ripple") help = text(attribute.property("category"));
  const Values choices = attribute.property("enumvals");
  for (std::size_t i = 0; i < choices.size(); ++i)
    help += (i == 0 ? ": " : ", ") + patchbay::to_text(choices[i]);
  if (attribute.lowest && attribute.highest)
    help += fmt::format(": {} to {}", *attribute.lowest, *attribute.highest);
  help += unit(attribute.name);
  if (attribute.name == "name") return help + " [a free one]";
  const std::string value = text(fresh);
  return fmt::format("{} [{}]", help, !is_switch(attribute) ? value : value == "0" ? "off" : "on");
}

std::string value_name(const AttributeInfo &attribute) {
  if (is_switch(attribute)) return "on|off";
  if (attribute.type == "symbol") return "WORD";
  return attribute.maximum == 1 ? "NUMBER" : "NUMBER [NUMBER]";
}

}  // namespace

SettingsOptions::SettingsOptions(Options &options, patchbay::Host &host) {
  // A name of its own leaves the free ones to the boxes that are designed.
  const patchbay::Box fresh = host.make("veltane name: fresh");
  for (const AttributeInfo &attribute : host.attributes("veltane"))
    attributes_.emplace_back(
        attribute,
        &options.add(option_name(attribute), value_name(attribute),
                     help_for(attribute, host.get(fresh, attribute.name)), attribute.maximum));
  host.free(fresh);
  from_ = &options.add("--from", "FILE",
                       "Take the settings of a design saved as JSON; those given beside it win");
  options.add("--module", "FILE", "The module to load [the installed one]");
}

void SettingsOptions::check_attribute(const std::string &name) const {
  if (std::none_of(attributes_.begin(), attributes_.end(),
                   [&](const auto &entry) { return entry.first.name == name; }))
    throw Refusal(fmt::format("there is no setting '{}'", name));
}

bool SettingsOptions::reads_standard_input() const { return from_->value() == "-"; }

Settings SettingsOptions::settings() const {
  Settings saved;
  if (const auto file = from_->value()) saved = read_saved(*file).settings;
  for (const auto &setting : saved) check_attribute(setting.first);
  Settings all;
  for (const auto &[attribute, option] : attributes_) {
    const std::string &name = attribute.name;
    const auto found = std::find_if(saved.begin(), saved.end(),
                                    [&](const auto &setting) { return setting.first == name; });
    if (option->given()) {
      const Words given = option->values();
      all.emplace_back(name, Values(given.begin(), given.end()));
    } else if (found != saved.end()) {
      all.push_back(*found);
    }
  }
  return all;
}

bool SettingsOptions::typed(const std::string &name) const {
  return std::any_of(attributes_.begin(), attributes_.end(), [&](const auto &entry) {
    return entry.first.name == name && entry.second->given();
  });
}

}  // namespace cli
