// Settings as a list of attributes.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <stdexcept>

#include "designer/settings.h"

using designer::Settings;
using designer::Values;

namespace {

std::vector<std::string> names(const Settings &settings) {
  std::vector<std::string> list;
  for (const designer::Setting &setting : settings) list.push_back(setting.name);
  return list;
}

}  // namespace

TEST(Settings, KeepTheirOrderAndNoNameTwice) {
  Settings settings{{"order", {t_long{4}}}, {"units", {std::string("hertz")}}};
  settings.set("frequency", {1000.0});
  settings.set("order", {t_long{5}});
  EXPECT_THAT(names(settings), testing::ElementsAre("order", "units", "frequency"));
  EXPECT_EQ(settings.number("order"), 5.0);
  settings.erase("units");
  settings.erase("nothing");
  EXPECT_THAT(names(settings), testing::ElementsAre("order", "frequency"));
  EXPECT_EQ(settings.size(), 2U);
}

TEST(Settings, AreReadAsTextsAndNumbers) {
  const Settings settings{{"frequency", {t_long{300}, 3400.5}}, {"topology", {std::string("b")}}};
  EXPECT_EQ(settings.text("frequency"), "300");
  EXPECT_THAT(settings.numbers("frequency"), testing::ElementsAre(300.0, 3400.5));
  EXPECT_EQ(settings.text("topology"), "b");
  EXPECT_EQ(settings.find("order"), nullptr);
  EXPECT_FALSE(settings.has("order"));
  EXPECT_THROW(settings.text("order"), std::runtime_error);
  EXPECT_THROW(settings.number("topology"), std::runtime_error);
}

TEST(NumberIn, ReadsNumbersAndTheirTexts) {
  EXPECT_EQ(designer::number_in(t_long{3}), 3.0);
  EXPECT_EQ(designer::number_in(0.25), 0.25);
  EXPECT_EQ(designer::number_in(std::string("1e3")), 1000.0);
  for (const char *other : {"", "x", "1 2", "nan", "1x", "\"", "\"1\""})
    EXPECT_EQ(designer::number_in(std::string(other)), std::nullopt) << other;
}
