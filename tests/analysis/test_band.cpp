// Passbands, stopbands, and the levels at the frequencies that everyone asks for.
#include "analysis/band.h"

#include <gtest/gtest.h>

#include "analysis/crossing.h"
#include "data.h"
#include "design_tolerance.h"

namespace {

using namespace analysis;

TEST(Band, PrewarpingGoesBothWays) {
  for (const double w : {1e-12, 0.0008, 0.5, 0.75, 1 - 1e-9})
    EXPECT_DOUBLE_EQ(unwarped(prewarped(w)), w);
  EXPECT_DOUBLE_EQ(prewarped(0.5), 1.0);
  EXPECT_DOUBLE_EQ(band_centre(0.25, 0.75), 0.5);
}

TEST(Band, PassesAndStopsOnOppositeSides) {
  EXPECT_EQ(passband(Band::lowpass, {0.2}).front().high, 0.2);
  EXPECT_EQ(passband(Band::highpass, {0.2}).front().high, 1.0);
  EXPECT_EQ(passband(Band::bandpass, {0.2, 0.3}).front().low, 0.2);
  ASSERT_EQ(passband(Band::bandstop, {0.2, 0.3}).size(), 2U);
  EXPECT_EQ(passband(Band::bandstop, {0.2, 0.3}).back().low, 0.3);
  EXPECT_EQ(stopband(Band::lowpass, {0.2}).front().low, 0.2);
  EXPECT_EQ(stopband(Band::bandstop, {0.2, 0.3}).front().high, 0.3);
  ASSERT_EQ(stopband(Band::bandpass, {0.2, 0.3}).size(), 2U);
}

TEST(Band, RefusesEdgesThatDoNotFitTheResponse) {
  EXPECT_THROW(passband(Band::lowpass, {}), std::invalid_argument);
  EXPECT_THROW(passband(Band::lowpass, {0.1, 0.2}), std::invalid_argument);
  EXPECT_THROW(passband(Band::lowpass, {0.0}), std::invalid_argument);
  EXPECT_THROW(stopband(Band::highpass, {1.0}), std::invalid_argument);
  EXPECT_THROW(passband(Band::bandpass, {0.3, 0.2}), std::invalid_argument);
  EXPECT_THROW(stopband(Band::bandpass, {0.3, 0.3}), std::invalid_argument);
  EXPECT_THROW(passband(Band::lowpass, {std::nan("")}), std::invalid_argument);
}

TEST(Levels, CutoffsAreWhereTheFamilySaysTheyAre) {
  for (const data::Case &one : data::cases()) {
    const double expected = one.family == "butterworth"   ? -half_power_db
                            : one.family == "chebyshev-1" ? -one.ripple
                                                          : -one.attenuation;
    for (const double level : levels(one.roots, one.band, one.cutoffs).cutoffs)
      EXPECT_NEAR(level - one.lift, expected, 1e-5) << one.name;
  }
}

TEST(Levels, ReferenceIsWhereThePrototypeBegins) {
  for (const data::Case &one : data::cases()) {
    const Levels found = levels(one.roots, one.band, one.cutoffs);
    const bool foot = one.family == "chebyshev-1" && one.order % 2 == 0;
    EXPECT_NEAR(found.reference - one.lift, foot ? -one.ripple : 0.0, design_tolerance(one))
        << one.name;
    if (one.band == Band::bandstop) {
      EXPECT_NEAR(found.nyquist, found.dc, 1e-9) << one.name;
    }
    if (one.band == Band::bandpass) {
      EXPECT_EQ(found.centre, found.reference);
    }
    EXPECT_EQ(std::isnan(found.centre), one.cutoffs.size() == 1);
  }
}

}  // namespace
