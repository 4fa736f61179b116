#include "layouts/document.h"

#include <gmock/gmock.h>

#include "designer/saved_design.h"

TEST(SettingsLine, IsReadBackAsTheSameSettings) {
  const designer::Settings settings{
      {"order", {std::string("4")}},  // as it was typed
      {"samplerate", {0.1}},         {"name", {std::string("gr\u00f6\u00dfe \"\\\n\x01\u202e")}},
      {"zpk_output", {t_long{0}}},   {"frequency", {300.0, std::string("3400")}},
  };
  const std::string line = layouts::settings_line(settings);
  EXPECT_THAT(line, testing::Not(testing::HasSubstr("\n")));
  const designer::Settings read = designer::parse_settings(line, "it");
  ASSERT_EQ(read.size(), settings.size());
  for (const auto &[name, values] : settings) {
    ASSERT_TRUE(read.has(name)) << name;
    EXPECT_EQ(*read.find(name), values) << name;
  }
}

TEST(SettingsLine, OfNoneIsAnEmptyObject) { EXPECT_EQ(layouts::settings_line({}), "{}"); }
