#include "floats.h"

#include <gmock/gmock.h>

#include "designer/refusal.h"

using layouts::in_floats;
using testing::HasSubstr;

namespace {

std::string refusal_of(const analysis::Sections &sections) {
  try {
    in_floats(sections, "cmsis", 48000.0);
  } catch (const designer::Refusal &refusal) {
    return refusal.what();
  }
  return "";
}

}  // namespace

TEST(InFloats, RoundsToTheNearestFloat) {
  const layouts::RoundedFilter rounded = in_floats({{0.1, 0.2, 0.1, -0.3, 0.4}}, "c-float", 48000);
  const analysis::Section &s = rounded.sections.at(0);
  EXPECT_EQ(s.b0, static_cast<double>(0.1F));
  EXPECT_EQ(s.b1, static_cast<double>(0.2F));
  EXPECT_EQ(s.b2, static_cast<double>(0.1F));
  EXPECT_EQ(s.a1, static_cast<double>(-0.3F));
  EXPECT_EQ(s.a2, static_cast<double>(0.4F));
  EXPECT_FALSE(rounded.remark) << *rounded.remark;
}

TEST(InFloats, RefusesANumeratorOutsideTheirRange) {
  EXPECT_THAT(refusal_of({{1.0, 0.0, 0.0, 0.0, 0.0}, {1e-39, 0.0, 0.0, 0.0, 0.0}}),
              HasSubstr("section 2 has the coefficient 1e-39"));
  EXPECT_THAT(refusal_of({{1.0, 0.0, -4e38, 0.0, 0.0}}), HasSubstr("has the coefficient -4e+38"));
  EXPECT_EQ(refusal_of({{1.2e-38, 3.4e38, 0.0, 0.0, 0.0}}), "");
}

// 1 - a2 is less than half the spacing of floats below 1.
TEST(InFloats, RefusesAStableFilterThatBecomesUnstable) {
  EXPECT_THAT(refusal_of({{1.0, 0.0, 0.0, 0.0, 1.0 - 1e-8}}),
              HasSubstr("--for cmsis holds floats, in which this filter is unstable"));
  EXPECT_EQ(refusal_of({{1.0, 0.0, 0.0, 0.0, 1.1}}), "") << "it was before";
}

// A resonance at the radius 0.9999, which rounding moves by a part of its width.
TEST(InFloats, SaysWhatTheLevelLoses) {
  const auto remark = in_floats({{1.0, 0.0, 0.0, -1.9998, 0.99980005}}, "cmsis", 48000.0).remark;
  ASSERT_TRUE(remark);
  EXPECT_THAT(*remark, HasSubstr("rounding to floats changes the level by up to "));
}
