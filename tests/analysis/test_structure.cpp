// The state-variable form, and running sections in each structure.
#include "analysis/structure.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <numbers>
#include <random>
#include <stdexcept>

#include "analysis/rounding.h"
#include "analysis/run.h"
#include "analysis/stability.h"
#include "data.h"

namespace {

using namespace analysis;

template <class T>
std::vector<T> impulse(std::size_t count) {
  std::vector<T> signal(count, T(0));
  signal.front() = T(1);
  return signal;
}

// The largest difference from the section's own response in long double, relative to its peak.
template <class T>
double deviation(const std::vector<T> &found, const std::vector<long double> &expected) {
  long double furthest = 0, peak = 0;
  for (std::size_t i = 0; i < expected.size(); ++i) {
    furthest = std::max(furthest, std::fabs(static_cast<long double>(found[i]) - expected[i]));
    peak = std::max(peak, std::fabs(expected[i]));
  }
  return static_cast<double>(furthest / peak);
}

void expect_same_response(const Section &section, double tolerance) {
  const auto form = state_variable(section);
  ASSERT_TRUE(form.has_value()) << section.a1 << " " << section.a2;
  const auto expected = run_direct_1({section}, impulse<long double>(2000));
  const std::string about = std::to_string(section.a1) + " " + std::to_string(section.a2);
  EXPECT_LT(deviation(run_state_variable<double>({*form}, impulse<double>(2000)), expected),
            tolerance)
      << about;
  EXPECT_LT(deviation(run_direct_2_transposed({section}, impulse<long double>(2000)), expected),
            1e-13)
      << about;
}

Section section_of(const Complex &zero, const Complex &pole) {
  return {1, -2 * zero.real(), std::norm(zero), -2 * pole.real(), std::norm(pole)};
}

TEST(StateVariable, ComputesTheSectionItWasMadeOf) {
  for (const double angle : {0.01, 0.3, 1.5707963267948966, 2.0, 3.13})
    for (const double radius : {0.5, 0.9, 0.999})
      for (const double zero_angle : {0.0, 0.02, 1.0, std::numbers::pi})
        for (const double zero_radius : {0.3, 1.0, 2.0})
          expect_same_response(
              section_of(std::polar(zero_radius, zero_angle), std::polar(radius, angle)), 2e-12);
}

TEST(StateVariable, TakesRealPolesOfBothSignsAndFirstOrderSections) {
  for (const double p : {-0.999, -0.3, 0.0, 0.4, 0.999})
    for (const double q : {-0.99, 0.0, 0.7, 0.9999})
      for (const Section &numerator :
           {Section{1, 2, 1, 0, 0}, {1, -2, 1, 0, 0}, {0.5, 0, -0.5, 0, 0}, {0, 1, 0.2, 0, 0}})
        expect_same_response({numerator.b0, numerator.b1, numerator.b2, -(p + q), p * q}, 1e-12);
  expect_same_response({0.01, 0.01, 0, -0.98, 0}, 1e-14);
  expect_same_response({1, -1, 0, 0.98, 0}, 1e-14);
}

TEST(StateVariable, FromRootsIsThatFromTheCoefficients) {
  const std::vector<Roots> all{
      {{{0.5, 0.7}, {0.5, -0.7}}, {{-0.3, 0.9}, {-0.3, -0.9}}, 2.5},
      {{{-1.0, 0.0}}, {{0.25, 0.0}}, 0.5},
      {{}, {{0.25, 0.0}}, 0.5},
      {{{2.0, 0.0}}, {{0.25, 0.0}, {-0.5, 0.0}}, -3},
      {{}, {{0.25, 0.5}, {0.25, -0.5}}, 1},
      {{}, {}, 4},
  };
  const std::vector<Section> same{{2.5, -2.5, 1.85, 0.6, 0.9}, {0.5, 0.5, 0, -0.25, 0},
                                  {0, 0.5, 0, -0.25, 0},       {0, -3, 6, 0.25, -0.125},
                                  {0, 0, 1, -0.5, 0.3125},     {4, 0, 0, 0, 0}};
  for (std::size_t i = 0; i < all.size(); ++i) {
    const auto roots = state_variable(all[i]);
    const auto section = state_variable(same[i]);
    ASSERT_TRUE(roots && section) << i;
    EXPECT_NEAR(roots->g, section->g, 1e-15) << i;
    EXPECT_NEAR(roots->r, section->r, 1e-14) << i;
    EXPECT_NEAR(roots->h, section->h, 1e-15) << i;
    EXPECT_NEAR(roots->high, section->high, 1e-14) << i;
    EXPECT_NEAR(roots->band, section->band, 1e-14) << i;
    EXPECT_NEAR(roots->low, section->low, 1e-14) << i;
    EXPECT_EQ(roots->mirrored, section->mirrored) << i;
  }
}

TEST(StateVariable, KeepsTheDigitsOfRootsNearOneAndMinusOne) {
  // The pair at -1 is the one at 1 turned round. Of its coefficients nothing is left at 1e-9.
  const Complex pole(1 - 0x1p-30, 0x1p-30);
  const auto near_one = state_variable(Roots{{}, {pole, std::conj(pole)}, 1});
  const auto near_minus_one = state_variable(Roots{{}, {-pole, -std::conj(pole)}, 1});
  ASSERT_TRUE(near_one && near_minus_one);
  // (1 - p) (1 - q) = 2^-59; (1 + p) (1 + q) is 4 but for 1e-9; 1 - p q = 2^-29 - 2^-59
  const double product = 0x1p-59, beyond = (2 - 0x1p-30) * (2 - 0x1p-30) + 0x1p-60;
  EXPECT_DOUBLE_EQ(near_one->g, std::sqrt(product / beyond));
  EXPECT_DOUBLE_EQ(2 * near_one->g * near_one->h * (near_one->r - near_one->g), 0x1p-29 - 0x1p-59);
  EXPECT_FALSE(near_one->mirrored);
  EXPECT_TRUE(near_minus_one->mirrored);
  EXPECT_EQ(near_minus_one->g, near_one->g);
  EXPECT_EQ(near_minus_one->r, near_one->r);
  const double a1 = -2 * pole.real(), a2 = std::norm(pole);
  const auto from_section = state_variable(Section{1, 0, 0, a1, a2});
  EXPECT_TRUE(!from_section || std::fabs(from_section->g / near_one->g - 1) > 1e-3);
}

// Poles near 1, whose distance a1 and a2 hold in a few digits only.
std::vector<Complex> crowded_poles() {
  std::vector<Complex> poles;
  for (int k = 1; k <= 5; ++k) {
    const Complex pole(1 - 1e-5 * k, 2e-6 * k);
    poles.insert(poles.end(), {pole, std::conj(pole)});
  }
  return poles;
}

TEST(StateVariable, OfSectionsInAnyOrderTakesTheRootsThatTheyWereMadeOf) {
  const std::vector<Complex> poles = crowded_poles();
  const Complex zero = std::polar(1.0, 1e-4);
  const Roots roots{{-1.0, zero, std::conj(zero), -1.0, 1.0, -0.5, 0.25, 1.0, -1.0, -1.0, 0.125},
                    {poles[0], poles[1], poles[2], poles[3], poles[4], poles[5], poles[6], poles[7],
                     poles[8], poles[9], 0.96875},
                    1};
  const auto denominator = [&](std::size_t k) {
    return Section{0, 0, 0, -2 * poles[2 * k].real(), std::norm(poles[2 * k])};
  };
  const auto with = [](const Section &poles_of, double gain, double b1, double b2) {
    return Section{gain, gain * b1, gain * b2, poles_of.a1, poles_of.a2};
  };
  const Sections filter{with(denominator(3), 0.3, 0, -1),
                        with(denominator(0), 3, -2 * zero.real(), std::norm(zero)),
                        with({0, 0, 0, -0.96875, 0}, 0.7, -0.125, 0),
                        with(denominator(4), 1, 2, 1),
                        with(denominator(2), 0.1, 0.25, -0.125),
                        with(denominator(1), 7, 0, -1)};
  const std::vector<Roots> expected{{{1.0, -1.0}, {poles[6], poles[7]}, 0.3},
                                    {{zero, std::conj(zero)}, {poles[0], poles[1]}, 3},
                                    {{0.125}, {0.96875}, 0.7},
                                    {{-1.0, -1.0}, {poles[8], poles[9]}, 1},
                                    {{0.25, -0.5}, {poles[4], poles[5]}, 0.1},
                                    {{1.0, -1.0}, {poles[2], poles[3]}, 7}};
  const auto forms = state_variables(filter, roots);
  ASSERT_TRUE(forms);
  for (std::size_t i = 0; i < filter.size(); ++i) {
    const StateVariable own = state_variable(expected[i]).value(), &found = (*forms)[i];
    EXPECT_EQ(found.g, own.g) << i;
    EXPECT_EQ(found.r, own.r) << i;
    EXPECT_EQ(found.h, own.h) << i;
    EXPECT_EQ(found.high, own.high) << i;
    EXPECT_EQ(found.band, own.band) << i;
    EXPECT_EQ(found.low, own.low) << i;
  }
  EXPECT_GT(std::fabs((*forms)[1].g / state_variable(filter[1])->g - 1), 1e-9);
}

TEST(StateVariable, OfAnEditedSectionIsThatOfItsCoefficients) {
  const std::vector<Complex> poles = crowded_poles();
  const Complex pole = poles[0];
  const auto g_with = [&](double a1) {
    const Sections filter{{1, 2, 1, a1, std::norm(pole)}};
    return state_variables(filter, {{-1.0, -1.0}, poles, 1}).value()[0].g;
  };
  const auto g_alone = [&](double a1) {
    return state_variable(Section{1, 2, 1, a1, std::norm(pole)})->g;
  };
  const double a1 = -2 * pole.real(), edited = a1 + 1e-11;
  EXPECT_NE(g_with(a1), g_alone(a1));
  EXPECT_EQ(g_with(edited), g_alone(edited));
  EXPECT_NE(g_with(edited), g_with(a1));
}

TEST(StateVariable, IsTheSectionThatItWasMadeOf) {
  for (const Section &section : {Section{0.5, 0.25, -2, -1.8, 0.9}, Section{1, 2, 1, 1.8, 0.9},
                                 Section{1, -1, 0, 0.98, 0}, Section{3, 0, -3, -0.2, -0.7}}) {
    const Section found = section_of(state_variable(section).value());
    EXPECT_NEAR(found.b0, section.b0, 2e-15);
    EXPECT_NEAR(found.b1, section.b1, 2e-15);
    EXPECT_NEAR(found.b2, section.b2, 2e-15);
    EXPECT_NEAR(found.a1, section.a1, 1e-15);
    EXPECT_NEAR(found.a2, section.a2, 1e-15);
  }
}

TEST(StateVariable, IsNoneWhereTheIntegratorsWouldBeImaginary) {
  EXPECT_FALSE(state_variable(Section{1, 0, 0, -2.5, 1}));  // poles at 2 and 0.5
  EXPECT_FALSE(state_variable(Section{1, 0, 0, 2.5, 1}));   // at -2 and -0.5
  EXPECT_FALSE(state_variable(Section{1, 0, 0, -1, 0}));    // at 1
  EXPECT_FALSE(state_variable(Section{1, 0, 0, 0, -4}));    // at 2 and -2
  EXPECT_FALSE(state_variable(Section{NAN, 0, 0, 0, 0}));
  EXPECT_FALSE(state_variable(Section{1, 0, 0, INFINITY, 0}));
  EXPECT_FALSE(state_variables({{1, 0, 0, 0, 0}, {1, 0, 0, -1, 0}}));
  // A conjugate pair outside is a section like any other.
  EXPECT_TRUE(state_variable(Section{1, 0, 0, -1, 1.5}));
  EXPECT_TRUE(state_variable(Section{1e300, 1e300, 0, -1, 0.5}));
  EXPECT_TRUE(state_variable(Section{1e-300, 1e-300, 0, -1, 0.5}));
}

TEST(StateVariable, RefusesRootsThatAreNoSection) {
  EXPECT_THROW(state_variable(Roots{{}, {0.1, 0.2, 0.3}, 1}), std::invalid_argument);
  EXPECT_THROW(state_variable(Roots{{0.5}, {}, 1}), std::invalid_argument);
}

// A butterworth lowpass of order 2 at 48 kHz, from its textbook roots.
Roots lowpass(double hz) {
  const double t = std::tan(std::numbers::pi * hz / 48000);
  const Complex s = t * std::polar(1.0, 3 * std::numbers::pi / 4);
  const Complex pole = (1.0 + s) / (1.0 - s);
  return {{-1.0, -1.0}, {pole, std::conj(pole)}, std::norm(1.0 - pole) / 4};
}

Section published(const Roots &roots) {
  const Complex &pole = roots.poles[0];
  return {roots.gain, 2 * roots.gain, roots.gain, -2 * pole.real(), std::norm(pole)};
}

TEST(StateVariable, InFloatsKeepsTheGainAtDcThatTheDirectFormLoses) {
  const Roots roots = lowpass(30);
  const Sections section{published(roots)};
  const std::vector<float> step(20000, 1.0F);
  const auto form = state_variable(roots);
  ASSERT_TRUE(form);
  EXPECT_NEAR(run_state_variable<float>({*form}, step).back(), 1.0, 1e-4);
  EXPECT_GT(std::fabs(run_direct_2_transposed<float>(section, step).back() - 1.0), 1e-3);
  EXPECT_GT(std::fabs(run_direct_1<float>(section, step).back() - 1.0), 1e-3);
  EXPECT_NEAR(run_direct_2_transposed<double>(section, std::vector<double>(20000, 1.0)).back(), 1.0,
              1e-9);
}

TEST(StateVariable, InFloatsKeepsThePolesThatTheDirectFormMoves) {
  double furthest = 0;
  for (int hz = 20; hz <= 40; ++hz) {
    const Roots roots = lowpass(hz);
    const Complex &pole = roots.poles[0];
    const auto form = state_variable(roots);
    ASSERT_TRUE(form);
    const double g = static_cast<float>(form->g), r = static_cast<float>(form->r),
                 h = static_cast<float>(form->h);
    EXPECT_NEAR(4 * g * g * h / std::norm(1.0 - pole), 1, 2e-7) << hz;
    EXPECT_NEAR(2 * g * (r - g) * h / (1 - std::norm(pole)), 1, 4e-7) << hz;
    const Section direct = rounded_to_float({published(roots)})[0];
    furthest =
        std::max(furthest, std::fabs((1 + direct.a1 + direct.a2) / std::norm(1.0 - pole) - 1));
  }
  EXPECT_GT(furthest, 1e-3);
}

TEST(StateVariable, RunsACascadeAsTheOtherStructuresDo) {
  std::mt19937 random(1);
  std::uniform_real_distribution<double> between(-1, 1);
  std::vector<long double> signal(4000);
  for (long double &sample : signal) sample = between(random);
  std::size_t checked = 0;
  for (const data::Case &one : data::cases()) {
    if (one.order > 8 || one.cutoffs[0] < 0.01) continue;
    const auto form = state_variables(one.sections);
    ASSERT_TRUE(form) << one.name;
    const auto expected = run_direct_2_transposed(one.sections, signal);
    EXPECT_LT(deviation(run_state_variable(*form, signal), expected), 1e-11) << one.name;
    EXPECT_LT(deviation(run_direct_1(one.sections, signal), expected), 1e-11) << one.name;
    ++checked;
  }
  EXPECT_GE(checked, 7U);
}

}  // namespace
