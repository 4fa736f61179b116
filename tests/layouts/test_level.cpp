#include "level.h"

#include <gmock/gmock.h>

#include "designer/refusal.h"

using designer::Family;
using designer::Response;
using layouts::reference_level;
using testing::HasSubstr;

namespace {

designer::PublishedFilter filter_of(Family family, Response response, std::size_t order,
                                    const std::vector<double> &cutoffs) {
  designer::PublishedFilter filter{};
  filter.family = family;
  filter.response = response;
  filter.order = order;
  filter.passband_ripple = 2.0;
  filter.samplerate = 48000.0;
  filter.cutoffs = cutoffs;
  return filter;
}

}  // namespace

TEST(ReferenceLevel, IsWhereThePrototypeHasDc) {
  const auto at = [](Response response, const std::vector<double> &cutoffs) {
    return reference_level(filter_of(Family::butterworth, response, 4, cutoffs));
  };
  EXPECT_EQ(at(Response::lowpass, {0.25}).w, 0.0);
  EXPECT_EQ(at(Response::lowpass, {0.25}).place, "at DC");
  EXPECT_EQ(at(Response::highpass, {0.25}).w, 1.0);
  EXPECT_EQ(at(Response::highpass, {0.25}).place, "at the Nyquist frequency");
  EXPECT_NEAR(at(Response::bandpass, {0.25, 0.75}).w, 0.5, 1e-15);
  EXPECT_EQ(at(Response::bandpass, {0.25, 0.75}).place, "at 12000 Hz, the centre of the band");
  EXPECT_EQ(at(Response::bandstop, {0.25, 0.75}).w, 0.0);
  EXPECT_EQ(at(Response::bandstop, {0.25, 0.75}).place, "at DC");
}

TEST(ReferenceLevel, IsTheBottomOfTheRippleForAnEvenOrder) {
  const auto db = [](Family family, std::size_t order) {
    return reference_level(filter_of(family, Response::bandpass, order, {0.2, 0.3})).db;
  };
  EXPECT_EQ(db(Family::chebyshev_1, 4), -2.0);
  EXPECT_EQ(db(Family::chebyshev_1, 5), 0.0);
  EXPECT_EQ(db(Family::chebyshev_2, 4), 0.0);
  EXPECT_EQ(db(Family::butterworth, 4), 0.0);
}

TEST(ReferenceLevel, ReversedCutoffsHaveTheSameCentre) {
  const auto centre = [](double first, double second) {
    return reference_level(filter_of(Family::butterworth, Response::bandpass, 4, {first, second}))
        .w;
  };
  EXPECT_EQ(centre(0.3, 0.1), centre(0.1, 0.3));
  EXPECT_THROW(centre(0.3, 0.3), designer::Refusal);
}

TEST(NormalisingFactor, RefusesASilentPlace) {
  EXPECT_NEAR(layouts::normalising_factor({{1.0, 2.0, 1.0, 0.0, 0.0}}, {0.0, 0.0, "at DC"}), 0.25,
              1e-15);
  try {
    layouts::normalising_factor({{1.0, 2.0, 1.0, 0.0, 0.0}},
                                {1.0, 0.0, "at the Nyquist frequency"});
    FAIL() << "it is silent there";
  } catch (const designer::Refusal &refusal) {
    EXPECT_THAT(refusal.what(), HasSubstr("at the Nyquist frequency: it is -inf dB there"));
  }
}
