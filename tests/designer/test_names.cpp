// The module's words.

#include <gtest/gtest.h>

#include "../designer_with_module.h"
#include "designer/names.h"

namespace {

// The words that an attribute chooses from.
designer::Values choices(const std::string &attribute) {
  for (const auto &info : tests::designer_with_module().attributes())
    if (info.name == attribute) return info.property("enumvals");
  return {};
}

}  // namespace

TEST(Names, AreThoseThatTheModuleDeclares) {
  const designer::Values families = choices("topology"), responses = choices("response"),
                         units = choices("units");
  ASSERT_EQ(families.size(), designer::all_families.size());
  for (std::size_t i = 0; i < families.size(); ++i)
    EXPECT_EQ(designer::name_of(designer::all_families[i]), std::get<std::string>(families[i]));
  ASSERT_EQ(responses.size(), 4U);
  for (const designer::Value &word : responses) {
    const auto response = designer::response_named(std::get<std::string>(word));
    ASSERT_TRUE(response.has_value());
    EXPECT_EQ(designer::name_of(*response), std::get<std::string>(word));
  }
  ASSERT_EQ(units.size(), 3U);
  for (const designer::Value &word : units)
    EXPECT_TRUE(designer::units_named(std::get<std::string>(word)).has_value());
}

TEST(Names, OtherWordsMeanNothing) {
  for (const char *word : {"", "Butterworth", "elliptic", "low-pass", "Hz"}) {
    EXPECT_FALSE(designer::family_named(word).has_value());
    EXPECT_FALSE(designer::response_named(word).has_value());
    EXPECT_FALSE(designer::units_named(word).has_value());
  }
}
