// The predicted noise beside that of filters that run.
#include "analysis/noise.h"

#include <gtest/gtest.h>

#include <cmath>
#include <fstream>
#include <limits>
#include <stdexcept>

#include <nlohmann/json.hpp>

#include "data.h"
#include "measured_noise.h"

namespace {

using namespace analysis;

constexpr double infinity = std::numeric_limits<double>::infinity();
constexpr double nan_value = std::numeric_limits<double>::quiet_NaN();

// Published by the module, every second one in another order; written by script/noise-accuracy.
std::vector<Sections> random_filters() {
  std::ifstream file(NOISE_FILTERS);
  std::vector<Sections> filters;
  for (std::string line; std::getline(file, line);)
    filters.push_back(sections_from_list(nlohmann::json::parse(line).get<std::vector<double>>()));
  return filters;
}

const Sections lowpass{{0.2, 0.4, 0.2, -0.5, 0.3}, {0.1, 0.2, 0.1, -0.3, 0.7}};

TEST(Noise, OfRandomFiltersIsWhatTheyMakeWhenTheyRun) {
  const std::vector<Sections> filters = random_filters();
  ASSERT_GE(filters.size(), 48U);
  int compared = 0, lost = 0, beyond_6 = 0;
  for (std::size_t i = 0; i < filters.size(); ++i) {
    for (const measured::Combination &one : measured::combinations) {
      const measured::Comparison found = measured::compare(filters[i], one, 1);
      for (const measured::Pair &level : {found.white, found.sine}) {
        const double off = measured::difference(level);
        ++compared;
        if (measured::is_lost(level.actual)) ++lost;
        if (!(std::fabs(off) <= 6)) ++beyond_6;
        EXPECT_LT(off, 12) << "filter " << i << ", " << one.name << ": " << level.actual
                           << " dB in place of " << level.predicted;
      }
    }
  }
  EXPECT_LE(beyond_6, compared / 100);
  // Most of them must be filters that work.
  EXPECT_LT(lost, compared / 3);
}

TEST(Noise, OfOneRoundingInFixedPointIsThatOfTheTextbook) {
  // y = x / 2 + y' / 2, rounded downwards: a mean of half a unit, which the feedback doubles, and a
  // variance of 1/12, which it multiplies by 4/3.
  const Noise found = noise({{0.5, 0, 0, -0.5, 0}}, Structure::direct_1, Arithmetic::fixed_16, 0.5);
  const double unit = 0x1p-15;
  const double error = unit * unit * (1.0 / 12 * 4 / 3 + 1);
  EXPECT_NEAR(found.white_db, 10 * std::log10(error / (16 * (0.25 / 3) * 0.25 * 4 / 3)), 0.1);
  EXPECT_NEAR(found.sine_db, 10 * std::log10(error / 0.25), 0.1);
  EXPECT_FALSE(found.overflows);
}

TEST(Noise, OfOneProductInFloatsIsThatOfTheTextbook) {
  // Of 0.3 x the error is 0.18 u^2 relative, and the rounding of 0.3 itself 4e-8 relative.
  const double u = 0x1p-24, off = static_cast<double>(0.3F) / 0.3 - 1;
  const Noise found = noise({{0.3, 0, 0, 0, 0}}, Structure::direct_1, Arithmetic::floats);
  EXPECT_NEAR(found.white_db, 10 * std::log10((0.1803 * u * u + off * off) / 16), 0.01);
  EXPECT_NEAR(found.sine_db, 10 * std::log10((0.1803 * u * u + off * off) / 2), 0.01);
}

TEST(Noise, IsNoneWhereNothingIsRounded) {
  for (const Sections &exact :
       {Sections{}, Sections{{1, 0, 0, 0, 0}}, Sections{{-0.25, 0, 0, 0, 0}}}) {
    const Noise found = noise(exact, Structure::direct_1, Arithmetic::floats);
    EXPECT_EQ(found.white_db, -infinity);
    EXPECT_EQ(found.sine_db, -infinity);
  }
}

TEST(Noise, SaysThatSectionsMayBeFarLouderThanTheirProduct) {
  // Ten resonances and then their inverses: 470 dB between them, and nothing in the end.
  Sections filter(10, {1, 0, 0, -1.9, 0.995});
  filter.resize(20, {1, -1.9, 0.995, 0, 0});
  for (const Structure structure : {Structure::direct_1, Structure::direct_2_transposed}) {
    const Noise found = noise(filter, structure, Arithmetic::doubles);
    EXPECT_GT(found.sine_db, 0) << found.white_db;
    const Noise quiet = noise(lowpass, structure, Arithmetic::doubles);
    EXPECT_LT(quiet.sine_db, -290);
  }
}

TEST(Noise, StaysTheSameWhileTheGainIsOfAnySize) {
  for (const Structure structure :
       {Structure::direct_1, Structure::direct_2_transposed, Structure::state_variable}) {
    const Noise plain = noise(lowpass, structure, Arithmetic::doubles);
    for (const int exponent : {-990, 990}) {
      Sections far = scaled(lowpass, std::ldexp(1.0, exponent));
      EXPECT_NEAR(noise(far, structure, Arithmetic::doubles).white_db, plain.white_db, 1e-9);
      EXPECT_NEAR(noise(far, structure, Arithmetic::doubles).sine_db, plain.sine_db, 1e-9);
      for (double *value : {&far[1].b0, &far[1].b1, &far[1].b2})
        *value = std::ldexp(*value, -exponent);
      EXPECT_NEAR(noise(far, structure, Arithmetic::doubles).white_db, plain.white_db, 1e-9);
    }
  }
}

TEST(Noise, OfFloatsTakesTheirRangeIntoAccount) {
  const Noise large = noise(scaled(lowpass, 0x1p140), Structure::direct_1, Arithmetic::floats);
  EXPECT_EQ(large.sine_db, infinity);
  EXPECT_FALSE(noise(scaled(lowpass, 0x1p120), Structure::direct_1, Arithmetic::floats).overflows);
  // The same signal at 1e-43, where floats have no more than seven binary digits.
  const Noise small = noise(lowpass, Structure::direct_1, Arithmetic::floats, 1e-43);
  EXPECT_GT(small.white_db, -60);
  EXPECT_LT(noise(lowpass, Structure::direct_1, Arithmetic::floats, 1e-30).white_db, -130);
}

TEST(Noise, IsTheSignalItselfWhereFloatsLoseItsGain) {
  // 1e-60 becomes 0: nothing comes out, and all of it is missing.
  const Sections filter{{1e-60, 0, -1e-60, -1.6, 0.99}, {1e30, 0, 0, 0, 0}};
  for (const Structure structure :
       {Structure::direct_1, Structure::direct_2_transposed, Structure::state_variable}) {
    const Noise found = noise(filter, structure, Arithmetic::floats);
    EXPECT_NEAR(found.white_db, 10 * std::log10(1.0 / 16), 0.01);
    EXPECT_NEAR(found.sine_db, 10 * std::log10(1.0 / 2), 0.01);
  }
  // What begins below the smallest float and is amplified later is lost as well.
  const Sections faint{{1e-45, 1e-45, 0, -0.9, 0}, {1e20, 0, 0, -0.5, 0}, {1e20, 0, 0, 0, 0}};
  EXPECT_GT(noise(faint, Structure::direct_1, Arithmetic::floats).white_db, -15);
}

TEST(Noise, OfFixedPointDependsOnTheLevelAndTheRange) {
  const auto at = [](double amplitude) {
    return noise(lowpass, Structure::direct_1, Arithmetic::fixed_32, amplitude);
  };
  EXPECT_NEAR(at(0.0625).sine_db - at(0.125).sine_db, 6.02, 0.5);
  EXPECT_FALSE(at(0.5).overflows);
  Sections loud = scaled(lowpass, 3);
  const Noise found = noise(loud, Structure::direct_1, Arithmetic::fixed_32);
  EXPECT_TRUE(found.overflows);
  EXPECT_EQ(found.sine_db, infinity);
  const auto floats = [](double amplitude) {
    return noise(lowpass, Structure::direct_1, Arithmetic::floats, amplitude).sine_db;
  };
  EXPECT_NEAR(floats(0.01), floats(1), 1e-9);
}

TEST(Noise, IsInfiniteWherePolesLeaveTheCircle) {
  const Noise given = noise({{1, 0, 0, -1, 1.0001}}, Structure::direct_1, Arithmetic::doubles);
  EXPECT_EQ(given.white_db, infinity);
  EXPECT_EQ(given.sine_db, infinity);
  // Rounded to a float, a2 is 1.
  const Sections near{{1, 0, 0, -1, 1 - 1e-9}};
  EXPECT_EQ(noise(near, Structure::direct_2_transposed, Arithmetic::floats).white_db, infinity);
  EXPECT_LT(noise(near, Structure::direct_2_transposed, Arithmetic::doubles).white_db, -100);
  EXPECT_EQ(noise({{1, 0, 0, -1, 0}}, Structure::state_variable, Arithmetic::floats).sine_db,
            infinity);
}

TEST(Noise, IsNaNWhereThereIsNothingToCompare) {
  for (const Sections &filter :
       {Sections{{nan_value, 0, 0, 0, 0}}, Sections{{1, infinity, 0, 0, 0}},
        Sections{{1, 0, 0, nan_value, 0}}, Sections{{0, 0, 0, -0.5, 0}}})
    for (const Structure structure : {Structure::direct_1, Structure::state_variable}) {
      const Noise found = noise(filter, structure, Arithmetic::floats);
      EXPECT_TRUE(std::isnan(found.white_db)) << filter[0].b0;
      EXPECT_TRUE(std::isnan(found.sine_db)) << filter[0].b0;
    }
  for (const double amplitude : {0.0, -1.0, infinity, nan_value})
    EXPECT_TRUE(
        std::isnan(noise(lowpass, Structure::direct_1, Arithmetic::floats, amplitude).white_db));
  EXPECT_TRUE(
      std::isnan(noise({{0, 0, 0, -0.5, 0}}, Structure::direct_1, Arithmetic::fixed_16).white_db));
}

TEST(Noise, RefusesWhatNobodyRuns) {
  for (const Structure structure : {Structure::direct_2_transposed, Structure::state_variable})
    EXPECT_THROW(noise(lowpass, structure, Arithmetic::fixed_16), std::invalid_argument);
  EXPECT_THROW(noise({{1e10, 0, 0, 0, 0}}, Structure::direct_1, Arithmetic::fixed_32),
               std::invalid_argument);
  EXPECT_THROW(noise({state_variable(lowpass[0]).value()}, Arithmetic::fixed_32),
               std::invalid_argument);
}

TEST(Noise, OfLowCutoffsInFloatsIsFarLessInStateVariableSections) {
  // 30 Hz at 48 kHz
  const double t = std::tan(std::numbers::pi * 30 / 48000);
  const Complex s = t * std::polar(1.0, 3 * std::numbers::pi / 4), pole = (1.0 + s) / (1.0 - s);
  const double gain = std::norm(1.0 - pole) / 4;
  const Sections filter{{gain, 2 * gain, gain, -2 * pole.real(), std::norm(pole)}};
  EXPECT_GT(noise(filter, Structure::direct_1, Arithmetic::floats).sine_db, -80);
  EXPECT_GT(noise(filter, Structure::direct_2_transposed, Arithmetic::floats).sine_db, -80);
  EXPECT_LT(noise(filter, Structure::state_variable, Arithmetic::floats).sine_db, -110);
  const auto form = state_variable(Roots{{-1.0, -1.0}, {pole, std::conj(pole)}, gain});
  ASSERT_TRUE(form);
  EXPECT_LT(noise({*form}, Arithmetic::floats).sine_db, -110);
}

// In doubles they run as they are. What the coefficients of the section have lost is not their
// noise.
TEST(Noise, OfFormsFromRootsIsThatOfRoundingThem) {
  const Complex pole = std::polar(1 - 1e-5, 1e-5);
  const Sections filter{{1, 2, 1, -2 * pole.real(), std::norm(pole)}};
  const auto forms =
      std::vector{state_variable(Roots{{-1.0, -1.0}, {pole, std::conj(pole)}, 1}).value()};
  EXPECT_LT(noise(forms, Arithmetic::doubles).worst_db(), -270);
  const double floats = noise(forms, Arithmetic::floats).worst_db();
  EXPECT_NEAR(floats, noise(filter, Structure::state_variable, Arithmetic::floats).worst_db(), 0.5);
  EXPECT_GT(floats, -150);
}

}  // namespace
