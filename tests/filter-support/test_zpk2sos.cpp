#include <gtest/gtest.h>

#include "support.h"

namespace {

using namespace support;
using Values = std::vector<double>;

const char *const families[] = {"butterworth", "chebyshev-1", "chebyshev-2", "another"};
const char *const responses[] = {"lowpass", "highpass", "bandpass", "bandstop", "another"};

Values cascade(const Zpk &filter, const char *family, const char *response) {
  const Watchdog watchdog("filtermath_zpk2sos");
  Flat sos;
  filtermath_zpk2sos(filter.get(), gensym(family), gensym(response), &sos.data, &sos.count);
  return sos.values();
}

Values numerator(const Values &sos, std::size_t section) {
  return {sos[5 * section], sos[5 * section + 1], sos[5 * section + 2]};
}
Values denominator(const Values &sos, std::size_t section) {
  return {sos[5 * section + 3], sos[5 * section + 4]};
}

/** a1 and a2, or b1 and b2, of a pair of roots. */
Values of_pair(Complex p, Complex q) { return {-(p + q).real(), (p * q).real()}; }
Values of_pair(Complex p) { return of_pair(p, std::conj(p)); }
Values with_one(Values pair) { return {1.0, pair[0], pair[1]}; }

// Zeros of a stopband, and poles beside them by falling distance from zero.
const Complex zero_a = std::polar(1.0, 2.0);
const Complex zero_b = std::polar(1.0, 0.9);
const Complex pole_a = std::polar(0.9, 1.9);
const Complex pole_b = std::polar(0.8, 0.95);
const Complex pole_c = std::polar(0.7, 0.2);
const auto conj = [](Complex x) { return std::conj(x); };

// --- counts and the lone section ---------------------------------------------------

TEST(Zpk2sos, WithoutPolesThereAreNoSections) {
  for (const char *family : families)
    EXPECT_TRUE(cascade(zpk({-1.0, j, -j}, {}, 2.0), family, "lowpass").empty());
}

TEST(Zpk2sos, ALoneFirstOrderSectionCarriesNoGain) {
  const Zpk filter = zpk({-1.0}, {0.25}, 7.0);
  EXPECT_EQ(cascade(filter, "butterworth", "lowpass"), (Values{1.0, 1.0, 0.0, -0.25, 0.0}));
  EXPECT_EQ(cascade(filter, "chebyshev-1", "lowpass"), (Values{1.0, 1.0, 0.0, -0.25, 0.0}));
  EXPECT_EQ(cascade(filter, "butterworth", "highpass"), (Values{1.0, -1.0, 0.0, -0.25, 0.0}));
  EXPECT_EQ(cascade(filter, "butterworth", "bandpass"), (Values{1.0, 1.0, 0.0, -0.25, 0.0}));
  EXPECT_EQ(cascade(zpk({-0.5}, {0.25}, 7.0), "chebyshev-2", "highpass"),
            (Values{1.0, 0.5, 0.0, -0.25, 0.0}));
}

TEST(Zpk2sos, AThirdOrderButterworthIsAPairAndARealPole) {
  const Zpk filter = zpk({-1.0, -1.0, -1.0}, {{0.5, 0.5}, 0.25, {0.5, -0.5}}, 3.0);
  EXPECT_EQ(cascade(filter, "butterworth", "lowpass"),
            (Values{3.0, 6.0, 3.0, -1.0, 0.5, 1.0, 1.0, 0.0, -0.25, 0.0}));
}

TEST(Zpk2sos, SectionsAreCountedByPolesAlone) {
  for (std::size_t poles = 0; poles <= 9; ++poles) {
    for (std::size_t zeros = 0; zeros <= 11; ++zeros) {
      const Zpk filter = zpk(t_complex64list(zeros, -1.0), t_complex64list(poles, 0.5));
      for (const char *family : families)
        EXPECT_EQ(cascade(filter, family, "lowpass").size(), 5 * ((poles + 1) / 2));
    }
  }
}

TEST(Zpk2sos, TheGainIsInTheFirstSectionAlone) {
  const t_complex64list zeros = {zero_a, conj(zero_a), zero_b, conj(zero_b)};
  const t_complex64list poles = {pole_a, conj(pole_a), pole_b, conj(pole_b), 0.1};
  for (const char *family : families) {
    for (const char *response : responses) {
      const Values one = cascade(zpk(zeros, poles, 1.0), family, response);
      Values expected = one;
      for (std::size_t i = 0; i < 3; ++i) expected[i] *= 5.0;
      EXPECT_EQ(cascade(zpk(zeros, poles, 5.0), family, response), expected)
          << family << " " << response;
    }
  }
}

// --- poles ---------------------------------------------------------------------------

TEST(Zpk2sos, APairOnTheUnitCircleComesFirst) {
  const Complex on = {0.6, 0.8};
  const Complex near = {0.99, 0.001};
  const Values sos = cascade(zpk({}, {near, conj(near), on, conj(on)}), "butterworth", "lowpass");
  EXPECT_TRUE(close(denominator(sos, 0), of_pair(on), 1e-15));
  EXPECT_TRUE(close(denominator(sos, 1), of_pair(near), 1e-15));
}

TEST(Zpk2sos, SectionsMoveAwayFromTheUnitCircleToEitherSide) {
  const Complex outside = std::polar(1.15, 1.0);
  const Values sos =
      cascade(zpk({}, {pole_c, conj(pole_c), outside, conj(outside), pole_a, conj(pole_a)}),
              "chebyshev-1", "highpass");
  EXPECT_TRUE(close(denominator(sos, 0), of_pair(pole_a), 1e-15));
  EXPECT_TRUE(close(denominator(sos, 1), of_pair(outside), 1e-15));
  EXPECT_TRUE(close(denominator(sos, 2), of_pair(pole_c), 1e-15));
}

TEST(Zpk2sos, RealPolesPairWithEachOtherWhereverTheComplexOnesLie) {
  const Complex p = {0.1, 0.7};  // between the real ones
  const Values sos = cascade(zpk({}, {-0.5, p, 0.6, conj(p)}), "butterworth", "lowpass");
  EXPECT_TRUE(close(denominator(sos, 0), of_pair(p), 1e-15));
  EXPECT_TRUE(close(denominator(sos, 1), of_pair(-0.5, 0.6), 1e-15));
}

TEST(Zpk2sos, RealPolesPairFromTheBackAsTheyAreListed) {
  const Values sos = cascade(zpk({}, {0.1, 0.2, 0.3}), "butterworth", "lowpass");
  EXPECT_TRUE(close(denominator(sos, 0), of_pair(0.2, 0.3), 1e-15));
  EXPECT_EQ(denominator(sos, 1), (Values{-0.1, 0.0})) << "the first one stays alone";
}

TEST(Zpk2sos, OnlyTheFirstPoleOfAPairIsMeasured) {
  // 0.95 is nearest to the circle, but its pair is known by 0.5.
  const Values sos = cascade(zpk({}, {0.5, 0.95, 0.6, 0.1}), "butterworth", "lowpass");
  EXPECT_TRUE(close(denominator(sos, 0), of_pair(0.6, 0.1), 1e-15));
  EXPECT_TRUE(close(denominator(sos, 1), of_pair(0.5, 0.95), 1e-15));
}

TEST(Zpk2sos, APoleBesideTheRealAxisIsNoRealPole) {
  const Complex beside = {0.5, 1e-300};
  const Values sos = cascade(zpk({}, {0.9, beside, conj(beside)}), "butterworth", "lowpass");
  EXPECT_TRUE(close(denominator(sos, 0), {-1.0, 0.25}, 1e-15));
  EXPECT_EQ(denominator(sos, 1), (Values{-0.9, 0.0}));
}

// --- numerators ------------------------------------------------------------------------

TEST(Zpk2sos, AllPoleFamiliesHaveNumeratorsFixedByTheResponse) {
  // None of these zeros is among those listed.
  const Zpk filter = zpk({zero_a, conj(zero_a)}, {pole_a, conj(pole_a), pole_b, conj(pole_b)});
  for (const char *family : {"butterworth", "chebyshev-1"}) {
    for (const std::size_t section : {0, 1}) {
      EXPECT_EQ(numerator(cascade(filter, family, "lowpass"), section), (Values{1.0, 2.0, 1.0}));
      EXPECT_EQ(numerator(cascade(filter, family, "another"), section), (Values{1.0, 2.0, 1.0}));
      EXPECT_EQ(numerator(cascade(filter, family, "highpass"), section), (Values{1.0, -2.0, 1.0}));
      EXPECT_EQ(numerator(cascade(filter, family, "bandpass"), section), (Values{1.0, 0.0, -1.0}));
    }
  }
}

TEST(Zpk2sos, ABandstopTakesItsZerosByHalves) {
  // In turns, as the shortcut lists them; neighbours after sorting are equal.
  const Complex notch = std::polar(1.0, 1.1);
  const Zpk filter =
      zpk({notch, conj(notch), notch, conj(notch)}, {pole_a, conj(pole_a), pole_b, conj(pole_b)});
  for (const char *family : {"butterworth", "chebyshev-1"}) {
    const Values sos = cascade(filter, family, "bandstop");
    for (const std::size_t section : {0, 1})
      EXPECT_TRUE(close(numerator(sos, section), with_one(of_pair(notch)), 1e-15));
  }
}

TEST(Zpk2sos, EachPolePairTakesTheNearestZeros) {
  // Zeros listed the other way round than the sections come.
  const Zpk filter = zpk({zero_b, conj(zero_b), zero_a, conj(zero_a)},
                         {pole_b, conj(pole_b), pole_a, conj(pole_a)});
  for (const char *response : {"lowpass", "highpass", "bandpass", "bandstop"}) {
    const Values sos = cascade(filter, "chebyshev-2", response);
    EXPECT_TRUE(close(denominator(sos, 0), of_pair(pole_a), 1e-15));
    EXPECT_TRUE(close(numerator(sos, 0), with_one(of_pair(zero_a)), 1e-15)) << response;
    EXPECT_TRUE(close(numerator(sos, 1), with_one(of_pair(zero_b)), 1e-15)) << response;
  }
}

TEST(Zpk2sos, AnUnknownFamilyPairsItsZerosByHalvesAndTakesTheNearest) {
  const Zpk filter = zpk({zero_b, conj(zero_b), zero_a, conj(zero_a)},
                         {pole_a, conj(pole_a), pole_c, conj(pole_c)});
  const Values sos = cascade(filter, "another", "highpass");
  EXPECT_TRUE(close(numerator(sos, 0), with_one(of_pair(zero_a, zero_b)), 1e-15));
  EXPECT_TRUE(close(numerator(sos, 1), with_one(of_pair(conj(zero_a), conj(zero_b))), 1e-15));
}

TEST(Zpk2sos, RealZerosTakePartInTheSort) {
  // -0.5, j, -j, 0.5: neighbours are no longer conjugate. Poles in this place
  // would have stayed behind the complex ones.
  const Zpk filter = zpk({-0.5, 0.5, j, -j}, {pole_a, conj(pole_a), pole_c, conj(pole_c)});
  const Values sos = cascade(filter, "chebyshev-2", "lowpass");
  EXPECT_TRUE(close(numerator(sos, 0), with_one(of_pair(-0.5, j)), 1e-15));
  EXPECT_TRUE(close(numerator(sos, 1), with_one(of_pair(-j, 0.5)), 1e-15));
}

const t_complex64list band_zeros = {-1.0, zero_a, conj(zero_a), zero_b, conj(zero_b), 1.0};
const t_complex64list six_poles = {pole_a,       conj(pole_a), pole_b,
                                   conj(pole_b), pole_c,       conj(pole_c)};

TEST(Zpk2sos, AChebyshev2BandpassOfThreeSectionsKeepsConjugateZerosTogether) {
  const Values sos = cascade(zpk(band_zeros, six_poles), "chebyshev-2", "bandpass");
  EXPECT_TRUE(close(numerator(sos, 0), with_one(of_pair(zero_a)), 1e-15));
  EXPECT_TRUE(close(numerator(sos, 1), with_one(of_pair(zero_b)), 1e-15));
  EXPECT_TRUE(close(numerator(sos, 2), {1.0, 0.0, -1.0}, 1e-15));
}

TEST(Zpk2sos, AChebyshev2BandpassOfTwoSectionsPairsItsZerosAsSorted) {
  const Zpk filter =
      zpk({-1.0, zero_a, conj(zero_a), 1.0}, {pole_a, conj(pole_a), pole_c, conj(pole_c)});
  const Values sos = cascade(filter, "chebyshev-2", "bandpass");
  EXPECT_TRUE(close(numerator(sos, 0), with_one(of_pair(-1.0, zero_a)), 1e-15));
  EXPECT_TRUE(close(numerator(sos, 1), with_one(of_pair(conj(zero_a), 1.0)), 1e-15));
}

TEST(Zpk2sos, OtherResponsesOfThreeSectionsPairTheirZerosAsSorted) {
  for (const char *response : {"lowpass", "highpass", "bandstop"}) {
    const Values sos = cascade(zpk(band_zeros, six_poles), "chebyshev-2", response);
    EXPECT_TRUE(close(numerator(sos, 0), with_one(of_pair(-1.0, zero_a)), 1e-15)) << response;
    EXPECT_TRUE(close(numerator(sos, 1), with_one(of_pair(conj(zero_b), 1.0)), 1e-15)) << response;
    EXPECT_TRUE(close(numerator(sos, 2), with_one(of_pair(conj(zero_a), zero_b)), 1e-15))
        << response;
  }
}

TEST(Zpk2sos, OfZerosAtEqualDistanceEachSectionTakesOnePair) {
  const Zpk filter = zpk({j, -j, {-0.5, 0.5}, {-0.5, -0.5}, {0.5, 0.5}, {0.5, -0.5}},
                         {0.5 * j, -0.5 * j, pole_c, conj(pole_c), {-0.5, 0.25}, {-0.5, -0.25}});
  const Values sos = cascade(filter, "chebyshev-2", "lowpass");
  std::vector<Values> taken = {numerator(sos, 0), numerator(sos, 1), numerator(sos, 2)};
  std::sort(taken.begin(), taken.end());
  EXPECT_TRUE(close(taken[0], {1.0, -1.0, 0.5}, 1e-15));
  EXPECT_TRUE(close(taken[1], {1.0, 0.0, 1.0}, 1e-15));
  EXPECT_TRUE(close(taken[2], {1.0, 1.0, 0.5}, 1e-15));
}

TEST(Zpk2sos, ALoneRealZeroGoesToTheLastSection) {
  const Zpk filter = zpk({zero_a, conj(zero_a), -0.9}, {pole_a, conj(pole_a), 0.2}, 2.0);
  const Values sos = cascade(filter, "chebyshev-2", "lowpass");
  EXPECT_TRUE(close(numerator(sos, 0), {2.0, -4.0 * zero_a.real(), 2.0}, 1e-15));
  EXPECT_EQ(numerator(sos, 1), (Values{1.0, 0.9, 0.0}));
}

TEST(Zpk2sos, APolePairMayTakeTheLoneRealZeroAway) {
  // It is the nearest, and comes with a zero at the origin; the section behind
  // makes do with the real part of what is left.
  const Complex far = {-0.9, 0.3};
  const Zpk filter = zpk({far, conj(far), 0.9}, {{0.9, 0.1}, {0.9, -0.1}, 0.2});
  const Values sos = cascade(filter, "chebyshev-2", "lowpass");
  EXPECT_TRUE(close(numerator(sos, 0), {1.0, -0.9, 0.0}, 1e-15));
  EXPECT_TRUE(close(numerator(sos, 1), {1.0, 0.9, 0.0}, 1e-15));
}

}  // namespace
