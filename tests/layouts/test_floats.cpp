#include "floats.h"

#include <gmock/gmock.h>

#include "designer/refusal.h"

using testing::HasSubstr;

namespace {

analysis::Realization direct(const analysis::Sections &sections) {
  return {analysis::Structure::direct_2_transposed, sections, {}, 0.0};
}

analysis::Realization in_state_variable(const analysis::Sections &sections) {
  return analysis::realization(sections, {}, analysis::Structure::state_variable,
                               analysis::Arithmetic::floats)
      .value();
}

std::string refusal_of(const analysis::Realization &filter) {
  try {
    layouts::in_floats(filter, "cmsis", 48000.0);
  } catch (const designer::Refusal &refusal) {
    return refusal.what();
  }
  return "";
}

bool becomes_unstable(const analysis::Realization &filter) {
  return layouts::in_floats(filter, "cmsis", 48000.0).becomes_unstable;
}

}  // namespace

TEST(InFloats, RoundsToTheNearestFloat) {
  const layouts::RoundedFilter rounded =
      layouts::in_floats(direct({{0.1, 0.2, 0.1, -0.3, 0.4}}), "c-float", 48000);
  const analysis::Section &s = rounded.sections.at(0);
  EXPECT_EQ(s.b0, static_cast<double>(0.1F));
  EXPECT_EQ(s.b1, static_cast<double>(0.2F));
  EXPECT_EQ(s.b2, static_cast<double>(0.1F));
  EXPECT_EQ(s.a1, static_cast<double>(-0.3F));
  EXPECT_EQ(s.a2, static_cast<double>(0.4F));
  EXPECT_TRUE(rounded.forms.empty());
  EXPECT_FALSE(rounded.remark) << *rounded.remark;
}

TEST(InFloats, RoundsStateVariableSections) {
  const analysis::Sections sections{{0.1, 0.2, 0.1, -0.3, 0.4}};
  const analysis::Realization given = in_state_variable(sections);
  const layouts::RoundedFilter rounded = layouts::in_floats(given, "c-float", 48000);
  ASSERT_EQ(rounded.forms.size(), 1U);
  const analysis::StateVariable &form = rounded.forms[0], &before = given.forms[0];
  EXPECT_EQ(form.g, static_cast<double>(static_cast<float>(before.g)));
  EXPECT_EQ(form.r, static_cast<double>(static_cast<float>(before.r)));
  EXPECT_EQ(form.h, static_cast<double>(static_cast<float>(before.h)));
  EXPECT_EQ(form.high, static_cast<double>(static_cast<float>(before.high)));
  EXPECT_EQ(form.band, static_cast<double>(static_cast<float>(before.band)));
  EXPECT_EQ(form.low, static_cast<double>(static_cast<float>(before.low)));
  EXPECT_NE(form.g, before.g);
  EXPECT_NEAR(rounded.sections.at(0).a1, -0.3, 1e-7);
  EXPECT_NE(rounded.sections.at(0).a1, -0.3);
}

TEST(InFloats, RefusesANumeratorOutsideTheirRange) {
  EXPECT_THAT(refusal_of(direct({{1.0, 0.0, 0.0, 0.0, 0.0}, {1e-39, 0.0, 0.0, 0.0, 0.0}})),
              HasSubstr("section 2 has the coefficient 1e-39"));
  EXPECT_THAT(refusal_of(direct({{1.0, 0.0, -4e38, 0.0, 0.0}})),
              HasSubstr("has the coefficient -4e+38"));
  EXPECT_EQ(refusal_of(direct({{1.2e-38, 3.4e38, 0.0, 0.0, 0.0}})), "");
}

// Beside a large part of the output a small one may vanish.
TEST(InFloats, RefusesStateVariableSectionsOutsideTheirRange) {
  const auto scaled = [](double gain) {
    return in_state_variable({{gain, -2 * gain, gain, -1.5, 0.75}});
  };
  EXPECT_THAT(refusal_of(scaled(1e-39)), HasSubstr("section 1 has the coefficient 1.23e-39"));
  EXPECT_THAT(refusal_of(scaled(4e38)), HasSubstr("section 1 has the coefficient 4.92e+38"));
  EXPECT_EQ(refusal_of(scaled(1.2e-38)), "");
  EXPECT_EQ(refusal_of(in_state_variable({{1.0, -2.0 + 1e-42, 1.0, -1.5, 0.75}})), "");
}

// 1 - a2 is less than half the spacing of floats below 1.
TEST(InFloats, SaysThatAStableFilterBecomesUnstable) {
  const analysis::Sections sections{{1.0, 0.0, 0.0, 0.0, 1.0 - 1e-8}};
  EXPECT_TRUE(becomes_unstable(direct(sections)));
  EXPECT_FALSE(becomes_unstable(direct({{1.0, 0.0, 0.0, 0.0, 1.1}}))) << "it was before";
  EXPECT_FALSE(becomes_unstable(direct({{1.0, 0.0, 0.0, 0.0, 1.0 - 1e-6}})));
  EXPECT_EQ(layouts::instability_refusal(sections, "cmsis", "do something else"),
            "--for cmsis holds floats, in which this filter is unstable: its outermost pole is "
            "5e-09 inside the unit circle; do something else");
}

// A pole so near to z = 1 that a1 and a2 put it on the circle.
TEST(InFloats, StateVariableSectionsStayStableWhereDirectFormsDoNot) {
  const analysis::Sections sections{{1e-9, 2e-9, 1e-9, -1.99994, 0.9999400045}};
  EXPECT_FALSE(becomes_unstable(in_state_variable(sections)));
  EXPECT_TRUE(becomes_unstable(direct({{1.0, 0.0, 0.0, -1.99999998, 0.9999999801}})));
  EXPECT_FALSE(becomes_unstable(in_state_variable({{1.0, 0.0, 0.0, -1.99999998, 0.9999999801}})));
}

// A resonance at the radius 0.9999, which rounding moves by a part of its width.
TEST(InFloats, SaysWhatTheLevelLoses) {
  const analysis::Sections resonance{{1.0, 0.0, 0.0, -1.9998, 0.99980005}};
  const auto remark = layouts::in_floats(direct(resonance), "cmsis", 48000.0).remark;
  ASSERT_TRUE(remark);
  EXPECT_THAT(*remark, HasSubstr("rounding to floats changes the level by up to "));
  EXPECT_FALSE(layouts::in_floats(in_state_variable(resonance), "c-float", 48000.0).remark);
}
