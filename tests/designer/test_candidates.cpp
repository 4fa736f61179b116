// The filters that meet a demand.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>

#include "../designer_with_module.h"
#include "designer/candidates.h"
#include "designer/refusal.h"

using designer::Candidate;
using designer::Family;
using designer::RatedDemand;
using designer::Response;
using designer::Units;
using testing::HasSubstr;

namespace {

RatedDemand lowpass(double passband, double stopband, double ripple, double attenuation) {
  return {
      {{passband}, {stopband}, ripple, attenuation}, Response::lowpass, 48000.0, Units::normalized};
}

std::vector<Candidate> found(const RatedDemand &demand) {
  return designer::candidates(tests::designer_with_module(), demand,
                              {designer::all_families.begin(), designer::all_families.end()});
}

}  // namespace

TEST(Candidates, AreTheFiltersOfTheirSettings) {
  const RatedDemand demand = lowpass(0.1, 0.15, 1.0, 60.0);
  const std::vector<Candidate> all = found(demand);
  ASSERT_EQ(all.size(), 3U);
  EXPECT_EQ(all[0].family, Family::butterworth);
  for (const Candidate &candidate : all) {
    EXPECT_EQ(candidate.impossible, "");
    EXPECT_LE(candidate.ripple, 1.0 + 1e-4);
    EXPECT_GE(candidate.attenuation, 60.0 - 1e-4);
    EXPECT_EQ(candidate.poles, candidate.order);
    const auto design = tests::designer_with_module().design(candidate.settings);
    EXPECT_THAT(design.remarks, testing::IsEmpty());
    EXPECT_EQ(design.settings.number("order"), static_cast<double>(candidate.order));
    // One order less does not do it.
    EXPECT_LT(static_cast<double>(candidate.order) - candidate.exact_order, 1.0);
  }
}

TEST(Candidates, HaveCutoffsInTheUnitsOfTheDemand) {
  RatedDemand demand = lowpass(0.1, 0.15, 1.0, 60.0);
  const double fraction = found(demand)[1].cutoffs.at(0);
  demand.units = Units::hertz;
  const Candidate hertz = found(demand)[1];
  EXPECT_DOUBLE_EQ(hertz.cutoffs.at(0), 24000 * fraction);
  EXPECT_FALSE(hertz.settings.has("units"));
}

TEST(Demands, AreRatedInTheirUnits) {
  const RatedDemand hertz = designer::rated({{2400}, {3600}, 1.0, 60.0}, 48000.0, Units::hertz);
  EXPECT_EQ(hertz.response, Response::lowpass);
  EXPECT_THAT(hertz.demand.passband, testing::ElementsAre(0.1));
  EXPECT_THAT(hertz.demand.stopband, testing::ElementsAre(0.15));
  const RatedDemand fractions =
      designer::rated({{0.15}, {0.1}, 1.0, 60.0}, 48000.0, Units::normalized);
  EXPECT_EQ(fractions.response, Response::highpass);
  EXPECT_THAT(fractions.demand.passband, testing::ElementsAre(0.15));
  EXPECT_THROW(designer::rated({{2400}, {2400}, 1.0, 60.0}, 48000.0, Units::hertz),
               designer::Refusal);
}

TEST(Candidates, SayWhyAFamilyCannotDoIt) {
  const std::vector<Candidate> strict = found(lowpass(0.1, 0.2, 0.05, 250.0));
  EXPECT_THAT(strict[1].impossible, HasSubstr("its ripple is 0.1 dB or more"));
  EXPECT_THAT(strict[2].impossible, HasSubstr("its attenuation is 240 dB or less"));
  const std::vector<Candidate> narrow = found(lowpass(0.1, 0.1001, 1.0, 60.0));
  EXPECT_THAT(narrow[0].impossible, HasSubstr("the highest is 200"));
  EXPECT_TRUE(narrow[0].settings.empty());
  EXPECT_THAT(found(lowpass(0.00005, 0.00008, 1.0, 40.0))[1].impossible,
              HasSubstr("cutoffs lie between 0.0001 and 0.9999"));
}

// What ten digits leave of a cutoff is not a shortfall, and 1e-4 dB is the limit of that.
TEST(Candidates, SayWhatNoiseTheyMake) {
  const RatedDemand demand{
      {{0.02, 0.45}, {0.017, 0.46}, 1.0, 40.0}, Response::bandpass, 2000.0, Units::normalized};
  const std::vector<Candidate> noisy = found(demand);
  EXPECT_TRUE(noisy.front().is_noisy()) << noisy.front().order;
  const Candidate *best = designer::recommended(noisy);
  ASSERT_NE(best, nullptr);
  EXPECT_FALSE(best->is_noisy());
  EXPECT_LT(best->poles, noisy.front().poles);
}

TEST(Candidates, AreRecommendedForFewPolesAndLittleNoise) {
  Candidate few, quiet, impossible;
  few.poles = 6;
  few.noise_db = -200.0;
  quiet.poles = 6;
  quiet.noise_db = -250.0;
  impossible.poles = 2;
  impossible.noise_db = -300.0;
  impossible.impossible = "it cannot";
  EXPECT_EQ(designer::recommended({few, quiet, impossible})->noise_db, -250.0);
  quiet.poles = 8;
  EXPECT_EQ(designer::recommended({quiet, few})->poles, 6U);
  few.noise_db = -79.9;
  EXPECT_EQ(designer::recommended({quiet, few})->poles, 8U) << "noise weighs more than poles";
  few.noise_db = -80.0;
  EXPECT_EQ(designer::recommended({quiet, few})->poles, 6U);
  EXPECT_EQ(designer::recommended({impossible}), nullptr);
}

TEST(Candidates, FallShortOfEitherLevel) {
  const analysis::Demand demand{{0.1}, {0.2}, 1.0, 60.0};
  Candidate candidate{};
  candidate.order = 7;
  const auto shortfall = [&](double ripple, double attenuation) {
    candidate.ripple = ripple;
    candidate.attenuation = attenuation;
    return designer::shortfall(candidate, demand);
  };
  EXPECT_EQ(shortfall(0.5, 80.0), "");
  EXPECT_EQ(shortfall(1.00009, 59.99991), "");
  EXPECT_EQ(shortfall(1.00011, 80.0),
            "order 7 should meet it, but in double precision it loses 1.00011 dB in the passband "
            "and 80 dB in the stopband");
  EXPECT_THAT(shortfall(0.5, 59.99989), HasSubstr("59.9999 dB in the stopband"));
  EXPECT_NE(shortfall(std::nan(""), 80.0), "");
  EXPECT_NE(shortfall(0.5, std::nan("")), "");
}
