// Masks meet the edges and the levels that were asked for.

#include "pictures/mask.h"

#include <gmock/gmock.h>

#include <cmath>
#include <stdexcept>

#include "designed.h"

using pictures::Axis;
using pictures::demand_mask;
using pictures::Mask;
using pictures::Scale;
using pictures::settings_mask;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

namespace {

const Axis all_hz{10, 22050, Scale::logarithmic};
const Axis all_db{-120, 5, Scale::linear};

designer::Settings with(designer::Settings settings, const std::string &name, double value) {
  settings.set(name, {value});
  return settings;
}

}  // namespace

TEST(Mask, OfAButterworthIsHalfThePowerUpToTheCutoff) {
  const auto filter = tests::drawn("butterworth", "lowpass", 4, {1000});
  const Mask mask = settings_mask(filter, all_hz, all_db);
  ASSERT_THAT(mask.passband, SizeIs(1));
  EXPECT_THAT(mask.stopband, IsEmpty());
  const double line = tests::half_power_level;
  EXPECT_THAT(mask.passband[0].polygon.x, ElementsAre(10, 10, 1000, 1000));
  EXPECT_THAT(mask.passband[0].polygon.y, ElementsAre(-120, line, line, -120));
  // The axis ends on the left, and the passband on the right.
  EXPECT_THAT(mask.passband[0].border.x, ElementsAre(10, 1000, 1000));
  EXPECT_THAT(mask.passband[0].border.y, ElementsAre(line, line, -120));
}

TEST(Mask, OfAChebyshev1IsItsRippleBetweenTheCutoffs) {
  const auto filter = tests::drawn(
      with(tests::settings("chebyshev-1", "bandpass", 4, {1000, 2000}), "passband_ripple", 0.5));
  const Mask mask = settings_mask(filter, all_hz, all_db);
  ASSERT_THAT(mask.passband, SizeIs(1));
  EXPECT_THAT(mask.passband[0].border.x, ElementsAre(1000, 1000, 2000, 2000));
  EXPECT_THAT(mask.passband[0].border.y, ElementsAre(-120, -0.5, -0.5, -120));
}

TEST(Mask, OfAChebyshev2IsItsAttenuationBeyondTheCutoffs) {
  const auto filter = tests::drawn(with(tests::settings("chebyshev-2", "bandpass", 4, {1000, 2000}),
                                        "stopband_attenuation", 60));
  const Mask mask = settings_mask(filter, all_hz, all_db);
  EXPECT_THAT(mask.passband, IsEmpty());
  ASSERT_THAT(mask.stopband, SizeIs(2));
  EXPECT_THAT(mask.stopband[0].polygon.x, ElementsAre(10, 10, 1000, 1000));
  EXPECT_THAT(mask.stopband[0].polygon.y, ElementsAre(5, -60, -60, 5));
  EXPECT_THAT(mask.stopband[1].border.x, ElementsAre(2000, 2000, 22050));
  EXPECT_THAT(mask.stopband[1].border.y, ElementsAre(5, -60, -60));
}

// What was designed is outside its mask: of all families, no higher and no lower.
TEST(Mask, IsKeptByTheFilter) {
  for (const char *family : {"butterworth", "chebyshev-1", "chebyshev-2"})
    for (const char *response : {"bandpass", "bandstop"}) {
      const auto filter = tests::drawn(family, response, 6, {1000, 2000});
      const Mask mask = settings_mask(filter, all_hz, all_db);
      EXPECT_FALSE(mask.passband.empty() && mask.stopband.empty());
      for (const auto &region : mask.passband)
        for (int i = 0; i <= 100; ++i) {
          const double hz = std::lerp(region.polygon.x[0], region.polygon.x[2], i / 100.0);
          EXPECT_GT(tests::level_at(filter, hz), region.polygon.y[1] - 1e-6) << family << hz;
        }
      for (const auto &region : mask.stopband)
        for (int i = 0; i <= 100; ++i) {
          const double hz = std::lerp(region.polygon.x[0], region.polygon.x[2], i / 100.0);
          EXPECT_LT(tests::level_at(filter, hz), region.polygon.y[1] + 1e-6) << family << hz;
        }
    }
}

TEST(Mask, OfADemandHasBothBands) {
  const analysis::Demand demand{{0.25}, {0.5}, 1.0, 40.0};
  const Mask mask = demand_mask(demand, 8000, {0, 4000, Scale::linear}, all_db);
  ASSERT_THAT(mask.passband, SizeIs(1));
  ASSERT_THAT(mask.stopband, SizeIs(1));
  EXPECT_THAT(mask.passband[0].polygon.x, ElementsAre(0, 0, 1000, 1000));
  EXPECT_THAT(mask.passband[0].polygon.y, ElementsAre(-120, -1, -1, -120));
  EXPECT_THAT(mask.stopband[0].polygon.x, ElementsAre(2000, 2000, 4000, 4000));
  EXPECT_THAT(mask.stopband[0].border.x, ElementsAre(2000, 2000, 4000));
  EXPECT_THROW(demand_mask({{0.5}, {0.5}, 1.0, 40.0}, 8000, all_hz, all_db), std::invalid_argument);
}

TEST(Mask, ShowsOnlyWhatLiesWithinTheAxes) {
  const analysis::Demand demand{{0.25}, {0.5}, 1.0, 40.0};
  const Axis passband{500, 900, Scale::linear}, transition{1100, 1900, Scale::linear};
  EXPECT_THAT(demand_mask(demand, 8000, passband, all_db).stopband, IsEmpty());
  EXPECT_THAT(demand_mask(demand, 8000, passband, all_db).passband[0].border.x,
              ElementsAre(500, 900));
  EXPECT_THAT(demand_mask(demand, 8000, transition, all_db).passband, IsEmpty());
  // From -0.5 dB up nothing of the passband is forbidden, and all of the stopband.
  const Mask top = demand_mask(demand, 8000, {0, 4000, Scale::linear}, {-0.5, 1, Scale::linear});
  EXPECT_THAT(top.passband, IsEmpty());
  ASSERT_THAT(top.stopband, SizeIs(1));
  EXPECT_THAT(top.stopband[0].polygon.y, ElementsAre(1, -0.5, -0.5, 1));
  EXPECT_THAT(top.stopband[0].border.y[0], 1);
  EXPECT_THAT(top.stopband[0].border.y[1], -0.5);
}

TEST(Mask, IsNoneWithoutABand) {
  pictures::DrawnFilter unknown{};
  unknown.samplerate = 8000;
  EXPECT_THAT(settings_mask(unknown, all_hz, all_db).passband, IsEmpty());
  unknown.response = designer::Response::bandpass;
  unknown.cutoffs = {1000, 1000};
  EXPECT_THAT(settings_mask(unknown, all_hz, all_db).passband, IsEmpty());
}
