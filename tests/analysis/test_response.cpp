#include "analysis/response.h"

#include <gmock/gmock.h>

#include "data.h"
#include "wide_tolerance.h"

namespace {

using namespace analysis;

constexpr double db_per_neper = 20 / std::numbers::ln10;
constexpr double level_tolerance = wide_tolerance(2e-11, 2e-9);  // dB

// A root that is rounded to doubles leaves a level to be known to some 1e-12 dB; where the
// response falls to nothing the level falls below every limit.
template <class Filter>
void expect_levels(const data::Case &one, const Filter &filter, const std::string &key,
                   double tolerance) {
  const std::vector<double> expected = one.column(key);
  for (std::size_t i = 0; i < one.at.size(); ++i) {
    const double found = level_db(filter, one.at[i]);
    if (std::isnan(expected[i]))
      EXPECT_LT(found, -300.0) << one.name << " at " << one.at[i];
    else
      EXPECT_NEAR(found, expected[i], tolerance) << one.name << " at " << one.at[i];
  }
}

TEST(Response, LevelsOfRootsAreExact) {
  for (const data::Case &one : data::cases())
    expect_levels(one, one.roots, "roots_level", level_tolerance);
}

TEST(Response, LevelsOfSectionsAreExact) {
  for (const data::Case &one : data::cases())
    expect_levels(one, one.sections, "sections_level", level_tolerance);
}

TEST(Response, LevelsOfATransferFunctionAreExactWhereItDoesNotCancel) {
  std::size_t checked = 0;
  for (const data::Case &one : data::cases()) {
    if (one.transfer.numerator.empty()) continue;
    const std::vector<double> expected = one.column("transfer_level");
    for (std::size_t i = 0; i < one.at.size(); ++i) {
      if (!(expected[i] > -100)) continue;
      // Near z = 1 nothing is left of the narrow filter's polynomials but their coefficients'
      // rounding, a hundred times what Horner's rule loses.
      const double tolerance = one.cutoffs[0] < 0.01 ? 1e-1 : 1e-8;
      EXPECT_NEAR(level_db(one.transfer, one.at[i]), expected[i], tolerance) << one.name;
      ++checked;
    }
  }
  EXPECT_GT(checked, 50U);
}

TEST(Response, MagnitudeAndAngleAreThoseOfTheLevelAndThePhase) {
  for (const data::Case &one : data::cases()) {
    const std::vector<double> levels = one.column("roots_level");
    const std::vector<double> phases = one.column("roots_phase");
    for (std::size_t i = 0; i < one.at.size(); ++i) {
      if (!(levels[i] > -200 && levels[i] < 200)) continue;
      const Complex found = response(one.roots, one.at[i]);
      const Complex expected = std::polar(std::pow(10, levels[i] / 20), phases[i]);
      EXPECT_NEAR(std::abs(found - expected), 0.0, wide_tolerance(1e-10, 1e-9) * std::abs(expected))
          << one.name << " at " << one.at[i];
    }
  }
}

TEST(Response, SlopesAreTheDerivativeOfTheLevel) {
  for (const data::Case &one : data::cases()) {
    const std::vector<double> of_roots = one.column("roots_slope");
    const std::vector<double> of_sections = one.column("sections_slope");
    // dB per unit of w that a pole at its distance from the circle can make
    const double steepest = db_per_neper * std::numbers::pi / one.number("margin");
    const double relative = wide_tolerance(1e-13, 1e-9);
    const double of_steepest = wide_tolerance(1e-12, 1e-10) * steepest;
    for (std::size_t i = 0; i < one.at.size(); ++i) {
      if (std::isnan(of_roots[i])) continue;
      EXPECT_NEAR(level_slope(one.roots, one.at[i]), of_roots[i],
                  relative * std::fabs(of_roots[i]) + of_steepest)
          << one.name << " at " << one.at[i];
      if (std::isnan(of_sections[i])) continue;
      EXPECT_NEAR(level_slope(one.sections, one.at[i]), of_sections[i],
                  relative * std::fabs(of_sections[i]) + of_steepest)
          << one.name << " at " << one.at[i];
    }
  }
}

TEST(Response, LevelsBeyondTheRangeOfDoublesAreFound) {
  const Roots tiny{std::vector<Complex>(300, -1.0), std::vector<Complex>(300, 0.0), 1e-300};
  // 300 zeros at -1 leave (2 sin(pi (1 - w) / 2))^300 near w = 1
  const double w = 1 - 1e-6;
  const double expected = -6000 + 300 * 20 * std::log10(2 * std::sin(std::numbers::pi * 5e-7));
  EXPECT_NEAR(level_db(tiny, w), expected, 1e-6);
  EXPECT_EQ(response(tiny, w), Complex());
  Sections loud(100, Section{1e300, 0, 0, 0, 0});
  EXPECT_NEAR(level_db(loud, 0.3), 100 * 6000.0, 1e-6);
  loud.resize(200, Section{1e-300, 0, 0, 0, 0});
  EXPECT_NEAR(level_db(loud, 0.3), 0.0, 1e-6);
  EXPECT_NEAR(std::abs(response(loud, 0.3)), 1.0, 1e-10);
  // no factor is large by itself
  EXPECT_NEAR(level_db(Sections(400, Section{1e30, 0, 0, 0, 0}), 0.3), 400 * 600.0, 1e-6);
}

TEST(Response, ZerosAtTheThreeExactPointsAreExact) {
  for (const auto &[zero, w] :
       {std::pair{Complex(1, 0), 0.0}, {Complex(0, 1), 0.5}, {Complex(-1, 0), 1.0}}) {
    EXPECT_EQ(level_db(Roots{{zero, std::conj(zero)}, {}, 1.0}, w),
              -std::numeric_limits<double>::infinity());
  }
  EXPECT_EQ(response(Sections{{1, 2, 1, 0, 0}}, 1.0), Complex());
}

TEST(Response, WhatIsNotFiniteStaysSo) {
  const double nan = std::numeric_limits<double>::quiet_NaN();
  EXPECT_TRUE(std::isnan(level_db(Roots{{}, {Complex(nan, 0)}, 1.0}, 0.3)));
  EXPECT_TRUE(std::isnan(level_db(Sections{{1, 0, 0, nan, 0}}, 0.3)));
  EXPECT_TRUE(std::isnan(level_db(Transfer{{nan}, {1}}, 0.3)));
}

}  // namespace
