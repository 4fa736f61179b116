// The table of the options of settings, against what the module declares.

#include <fmt/format.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <map>

#include "../../designer_with_module.h"
#include "args/settings_options.h"
#include "designer/command_words.h"

using patchbay::AttributeInfo;

namespace {

bool is_switch(const AttributeInfo &attribute) {
  return attribute.property("style") == designer::Values{std::string("onoff")};
}

std::string first(const designer::Values &values) {
  return values.empty() ? std::string() : patchbay::to_text(values[0]);
}

// What the module does not declare of its attributes.
std::string unit(const std::string &name) {
  static const std::map<std::string, std::string> units{
      {"units", " (normalized 1 is half the sample rate, radians are not supported)"},
      {"samplerate", " in Hz, such as 44100 or 44.1k; 0 for that of the audio, 48000"},
      {"frequency", " in --units, such as 3000 or 3k: one, or two for a band response"},
      {"passband_ripple", " dB"},
      {"stopband_attenuation", " dB"}};
  const auto found = units.find(name);
  return found == units.end() ? "" : found->second;
}

// What the help should say, from labels, choices, ranges, and the settings of a new box.
std::string help_for(const AttributeInfo &attribute, const designer::Settings &fresh) {
  // The ripple is known by its category.
  const bool ripple = attribute.name == "passband_ripple";
  std::string help = first(attribute.property(ripple ? "category" : "label"));
  const designer::Values choices = attribute.property("enumvals");
  for (std::size_t i = 0; i < choices.size(); ++i)
    help += (i == 0 ? ": " : ", ") + patchbay::to_text(choices[i]);
  if (attribute.lowest && attribute.highest)
    help += fmt::format(": {} to {}", *attribute.lowest, *attribute.highest);
  help += unit(attribute.name);
  if (attribute.name == "name") return help + " [a free one]";
  const std::string value = fresh.text(attribute.name);
  return fmt::format("{} [{}]", help, !is_switch(attribute) ? value : value == "0" ? "off" : "on");
}

std::vector<std::string> choices_of(const AttributeInfo &attribute) {
  if (is_switch(attribute)) return {"on", "off"};
  std::vector<std::string> texts;
  for (const designer::Value &choice : attribute.property("enumvals"))
    texts.push_back(patchbay::to_text(choice));
  return texts;
}

}  // namespace

TEST(SettingsOptions, AreWhatTheModuleDeclares) {
  designer::Designer &designer = tests::designer_with_module();
  const designer::Settings fresh = designer.fresh();
  const cli::Options options = cli::settings_options();
  ASSERT_EQ(options.size(), designer.attributes().size());
  for (std::size_t i = 0; i < options.size(); ++i) {
    const AttributeInfo &attribute = designer.attributes()[i];
    const cli::Option &option = *options[i];
    EXPECT_EQ(cli::attribute_of(option), attribute.name);
    EXPECT_EQ(designer::option_for(attribute.name), option.name());
    EXPECT_EQ(option.help, help_for(attribute, fresh));
    EXPECT_EQ(option.most, attribute.maximum);
    EXPECT_EQ(std::vector<std::string>(option.choices.begin(), option.choices.end()),
              choices_of(attribute));
  }
}
