// The words that a designer gives for settings, read by the command.
#include "designer/command_words.h"

#include <gtest/gtest.h>

#include <bit>
#include <cmath>
#include <cstdint>
#include <random>

#include "../../designer_with_module.h"
#include "../in_process.h"
#include "args/command_line.h"
#include "args/settings_options.h"
#include "args/subcommands.h"
#include "text/shell.h"

using designer::Settings;
using designer::Values;

namespace {

using Random = std::mt19937_64;

bool coin(Random &random) { return random() % 2 == 0; }

double any_double(Random &random) {
  while (true)
    if (const auto value = std::bit_cast<double>(static_cast<std::uint64_t>(random()));
        std::isfinite(value))
      return value;
}

// Half of them as a person would choose, and half anything that a double can be.
double number(Random &random, double lowest, double highest) {
  if (coin(random)) return any_double(random);
  return std::uniform_real_distribution(lowest, highest)(random);
}

std::string one_of(Random &random, const std::vector<std::string> &words) {
  return words[random() % words.size()];
}

// Each setting is there or not.
Settings random_settings(Random &random) {
  const std::string response = one_of(random, {"lowpass", "highpass", "bandpass", "bandstop"});
  const bool normalized = coin(random);
  const double highest = normalized ? 1.0 : 24000.0;
  Values cutoffs{number(random, 0.0, highest)};
  if (response.starts_with("band") || random() % 8 == 0)
    cutoffs.emplace_back(number(random, 0.0, highest));
  Settings settings{{"response", {response}}};
  const auto maybe = [&](const char *name, const Values &values) {
    if (coin(random)) settings.set(name, values);
  };
  if (normalized) settings.set("units", {std::string("normalized")});
  maybe("name", {std::string("a name")});
  maybe("topology", {one_of(random, {"butterworth", "chebyshev-1", "chebyshev-2"})});
  maybe("samplerate", {static_cast<t_long>(coin(random) ? random() : random() % 200000)});
  maybe("order", {static_cast<t_long>(random() % 210)});
  maybe("frequency", cutoffs);
  maybe("passband_ripple", {number(random, 0.1, 48.0)});
  maybe("stopband_attenuation", {number(random, 6.0, 240.0)});
  for (const char *output : {"zpk_output", "sos_output", "tf_output"})
    maybe(output, {std::string(coin(random) ? "on" : "off")});
  return settings;
}

std::string as_text(Settings settings) {
  settings.erase("name");
  std::string text;
  for (const designer::Setting &setting : settings) {
    text += setting.name;
    for (const designer::Value &value : setting.values)
      text += (std::holds_alternative<double>(value) ? " double " : " ") + patchbay::to_text(value);
    text += '\n';
  }
  return text;
}

// As a box holds them after the command has read the line.
Settings read_back(const std::string &line) {
  const auto arguments =
      cli::parse(cli::command_line(cli::design_subcommand), tests::split(line)).value();
  return tests::designer_with_module().accepted(cli::requested_settings(arguments)).settings;
}

}  // namespace

TEST(CommandWords, MakeTheSameSettingsAgain) {
  designer::Designer &designer = tests::designer_with_module();
  const Settings fresh = designer.fresh();
  Random random(11);
  for (int i = 0; i < 3000; ++i) {
    const Settings held = designer.accepted(random_settings(random)).settings;
    const auto words = designer::command_words(designer.attributes(), held, fresh);
    const std::string line = text::shell_line(words);
    ASSERT_EQ(as_text(read_back(line)), as_text(held)) << line;
  }
}

TEST(CommandWords, NeedNoneThatAreThere) {
  designer::Designer &designer = tests::designer_with_module();
  const Settings fresh = designer.fresh();
  Random random(12);
  for (int i = 0; i < 300; ++i) {
    const Settings held = designer.accepted(random_settings(random)).settings;
    for (const designer::Setting &left_out : held) {
      Settings others = held;
      others.erase(left_out.name);
      const auto words = designer::command_words(designer.attributes(), held, fresh);
      const auto fewer = designer::command_words(designer.attributes(), others, fresh);
      // The cutoffs of a band are said even where they are those that nobody gave.
      if (fewer.size() == words.size() || left_out.name == "frequency") continue;
      ASSERT_NE(as_text(read_back(text::shell_line(fewer))), as_text(held)) << left_out.name;
    }
  }
}

TEST(CommandWords, AreRefusedWhereADesignerRefusesTheSettings) {
  designer::Designer &designer = tests::designer_with_module();
  const Settings fresh = designer.fresh();
  for (const Settings &settings :
       {Settings{{"units", {std::string("radians")}}},
        Settings{{"response", {std::string("bandpass")}}, {"frequency", {3000.0}}},
        Settings{{"topology", {std::string("elliptic")}}}}) {
    const auto words = designer::command_words(designer.attributes(), settings, fresh);
    EXPECT_THROW(designer.accepted(settings), designer::Refusal);
    EXPECT_THROW(read_back(text::shell_line(words)), designer::Refusal) << text::shell_line(words);
  }
}
