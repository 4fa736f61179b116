// The order in which pairs come and are taken, where sorting the roots alone would give
// another.

#include <gtest/gtest.h>

#include "support.h"

namespace {

using namespace support;
using Values = std::vector<double>;

Values cascade(const Zpk &filter, t_symbol *family, t_symbol *response) {
  const Watchdog watchdog("filtermath_zpk2sos");
  Flat sos;
  filtermath_zpk2sos(filter.get(), family, response, &sos.data, &sos.count);
  return sos.values();
}
Values cascade(const Zpk &filter, const char *family, const char *response) {
  return cascade(filter, gensym(family), gensym(response));
}

Values numerator(const Values &sos, std::size_t section) {
  return {sos[5 * section], sos[5 * section + 1], sos[5 * section + 2]};
}
Values denominator(const Values &sos, std::size_t section) {
  return {1.0, sos[5 * section + 3], sos[5 * section + 4]};
}

/** The polynomial with this pair of roots. */
Values of_pair(Complex p, Complex q) { return {1.0, -(p + q).real(), (p * q).real()}; }
Values of_pair(Complex p) { return of_pair(p, std::conj(p)); }

/** The pairs that these and their conjugates are. */
t_complex64list with_conjugates(const t_complex64list &roots) {
  t_complex64list all;
  for (const Complex root : roots) {
    all.push_back(root);
    all.push_back(std::conj(root));
  }
  return all;
}

t_complex64list joined(t_complex64list list, const t_complex64list &more) {
  list.insert(list.end(), more.begin(), more.end());
  return list;
}

// --- poles -----------------------------------------------------------------------

TEST(Zpk2sosOrder, PolePairsComeByTheirDistanceFromTheCircleNotByTheirRealPart) {
  const t_complex64list poles = {std::polar(0.3, 2.5), std::polar(0.95, 0.3), std::polar(0.7, 1.6),
                                 std::polar(1.1, 0.1)};
  for (const char *family : {"butterworth", "chebyshev-1", "chebyshev-2", "another"}) {
    for (const char *response : {"lowpass", "highpass", "bandpass", "bandstop"}) {
      const Values sos = cascade(zpk(poles, with_conjugates(poles)), family, response);
      for (const std::size_t section : {0, 1, 2, 3}) {
        const std::size_t by_distance[] = {1, 3, 2, 0};
        EXPECT_TRUE(close(denominator(sos, section), of_pair(poles[by_distance[section]]), 1e-15))
            << family << " " << response << ", section " << section;
      }
    }
  }
}

TEST(Zpk2sosOrder, APairOfRealPolesComesFirstWhenItIsNearest) {
  const Complex far = std::polar(0.5, 2.0);
  const Values sos = cascade(zpk({}, {far, std::conj(far), 0.99, 0.2}), "butterworth", "lowpass");
  EXPECT_TRUE(close(denominator(sos, 0), of_pair(0.99, 0.2), 1e-15));
  EXPECT_TRUE(close(denominator(sos, 1), of_pair(far), 1e-15));
}

// The sort leaves both upper members before both lower ones.
TEST(Zpk2sosOrder, PolePairsOfOneRealPartStayConjugate) {
  const Complex low = {0.5, 0.1};
  const Complex high = {0.5, 0.6};
  const Values sos =
      cascade(zpk({}, {low, high, std::conj(low), std::conj(high)}), "butterworth", "lowpass");
  EXPECT_TRUE(close(denominator(sos, 0), of_pair(high), 1e-15));
  EXPECT_TRUE(close(denominator(sos, 1), of_pair(low), 1e-15));
}

TEST(Zpk2sosOrder, RepeatedPolePairsStayConjugate) {
  const Complex pole = {0.5, 0.6};
  const Values sos = cascade(zpk({}, with_conjugates({pole, pole})), "butterworth", "lowpass");
  for (const std::size_t section : {0, 1})
    EXPECT_TRUE(close(denominator(sos, section), of_pair(pole), 1e-15));
}

TEST(Zpk2sosOrder, APoleOfWhichOnlyTheRealPartIsANumberIsReal) {
  const Zpk alone = zpk({-1.0}, {{0.25, not_a_number}});
  EXPECT_EQ(cascade(alone, "butterworth", "lowpass"), (Values{1.0, 1.0, 0.0, -0.25, 0.0}));
  // Among the complex ones it would take a partner away from its conjugate.
  const Complex pole = {0.5, 0.5};
  const Values sos =
      cascade(zpk({}, {{0.25, not_a_number}, pole, std::conj(pole)}), "butterworth", "lowpass");
  EXPECT_TRUE(close(denominator(sos, 0), of_pair(pole), 1e-15));
  EXPECT_EQ(denominator(sos, 1), (Values{1.0, -0.25, 0.0}));
}

// --- zeros -----------------------------------------------------------------------

const Complex zero_a = std::polar(1.0, 2.4);
const Complex zero_b = std::polar(1.0, 1.7);
const Complex zero_c = std::polar(1.0, 0.9);
const Complex zero_d = std::polar(1.0, 0.3);
const t_complex64list four_pairs = with_conjugates({zero_a, zero_b, zero_c, zero_d});

TEST(Zpk2sosOrder, TheLastSectionTakesTheNearestOfSeveralZeroPairsLeft) {
  // The pole pair takes d, and leaves c nearer than b and a.
  const Zpk filter = zpk(four_pairs, joined(with_conjugates({std::polar(0.9, 0.2)}), {0.1}));
  for (const char *response : {"lowpass", "highpass", "bandstop"}) {
    const Values sos = cascade(filter, "chebyshev-2", response);
    EXPECT_TRUE(close(numerator(sos, 0), of_pair(zero_d), 1e-15)) << response;
    EXPECT_EQ(numerator(sos, 1), (Values{1.0, -zero_c.real(), 0.0})) << response;
  }
}

TEST(Zpk2sosOrder, NearestIsMeasuredFromTheLastPolePair) {
  // The first pole pair takes d and has c next; the second takes b and has a next.
  const Zpk filter = zpk(
      four_pairs, joined(with_conjugates({std::polar(0.95, 0.2), std::polar(0.8, 2.0)}), {0.1}));
  const Values sos = cascade(filter, "chebyshev-2", "highpass");
  EXPECT_TRUE(close(numerator(sos, 0), of_pair(zero_d), 1e-15));
  EXPECT_TRUE(close(numerator(sos, 1), of_pair(zero_b), 1e-15));
  EXPECT_EQ(numerator(sos, 2), (Values{1.0, -zero_a.real(), 0.0}));
}

TEST(Zpk2sosOrder, WithoutAPolePairTheLastSectionTakesTheFirstZeroPairMade) {
  // Complex ones by their real part first, the lone real one last.
  const Zpk filter = zpk({zero_c, std::conj(zero_c), -0.9, zero_a, std::conj(zero_a)}, {0.25});
  for (const char *family : {"chebyshev-2", "another"})
    EXPECT_EQ(cascade(filter, family, "highpass"), (Values{1.0, -zero_a.real(), 0.0, -0.25, 0.0}))
        << family;
}

TEST(Zpk2sosOrder, AZeroBesideTheRealAxisIsNoRealZero) {
  const Complex beside = {0.5, 1e-300};
  const Zpk filter = zpk({beside, std::conj(beside), -0.9},
                         joined(with_conjugates({std::polar(0.9, 0.2)}), {0.1}));
  const Values sos = cascade(filter, "chebyshev-2", "lowpass");
  EXPECT_TRUE(close(numerator(sos, 0), {1.0, -1.0, 0.25}, 1e-15));
  EXPECT_EQ(numerator(sos, 1), (Values{1.0, 0.9, 0.0}));
}

// --- bandstops of the all-pole families ----------------------------------------------

TEST(Zpk2sosOrder, AnAllPoleBandstopOfOddOrderNotchesInEverySection) {
  const Complex notch = std::polar(1.0, 1.1);
  const Zpk filter =
      zpk(with_conjugates({notch, notch, notch}),
          with_conjugates({std::polar(0.9, 1.2), std::polar(0.8, 1.1), std::polar(0.9, 0.9)}));
  for (const char *family : {"butterworth", "chebyshev-1"}) {
    const Values sos = cascade(filter, family, "bandstop");
    ASSERT_EQ(sos.size(), 15u);
    for (const std::size_t section : {0, 1, 2})
      EXPECT_TRUE(close(numerator(sos, section), of_pair(notch), 1e-15)) << family;
  }
}

// Its pairs take zeros, the section behind them does not, however many are left.
TEST(Zpk2sosOrder, AnAllPoleBandstopOfAnOddNumberOfPolesEndsInAFixedSection) {
  const Complex notch = std::polar(1.0, 1.1);
  const Zpk filter = zpk(with_conjugates({notch, notch, notch}),
                         joined(with_conjugates({std::polar(0.9, 1.2)}), {0.25}), 2.0);
  for (const char *family : {"butterworth", "chebyshev-1"}) {
    const Values sos = cascade(filter, family, "bandstop");
    ASSERT_EQ(sos.size(), 10u);
    EXPECT_TRUE(close(numerator(sos, 0), {2.0, -4.0 * notch.real(), 2.0}, 1e-15)) << family;
    EXPECT_EQ((Values{sos.begin() + 5, sos.end()}), (Values{1.0, 1.0, 0.0, -0.25, 0.0})) << family;
    EXPECT_EQ(cascade(zpk({0.5}, {0.25}), family, "bandstop"), (Values{1.0, 1.0, 0.0, -0.25, 0.0}))
        << family;
  }
}

// --- the rotation ----------------------------------------------------------------------

// Sorted -1, b, b*, 1, and by halves (-1, b*) and (b, 1). Turned by one they would be
// (b, 1) and (b*, -1), of which the pole takes the first.
TEST(Zpk2sosOrder, OnlyAChebyshev2TurnsItsZeros) {
  const Zpk filter = zpk({-1.0, zero_b, std::conj(zero_b), 1.0}, with_conjugates({{-0.8, 0.05}}));
  EXPECT_TRUE(close(numerator(cascade(filter, "another", "bandpass"), 0),
                    of_pair(-1.0, std::conj(zero_b)), 1e-15));
  EXPECT_TRUE(
      close(numerator(cascade(filter, "chebyshev-2", "bandpass"), 0), of_pair(zero_b), 1e-15));
  for (const char *response : {"lowpass", "highpass", "bandstop"})
    EXPECT_TRUE(
        close(numerator(cascade(filter, "chebyshev-2", response), 0), of_pair(-1.0, zero_b), 1e-15))
        << response;
}

TEST(Zpk2sosOrder, AnAllPoleBandpassOfOddOrderHasItsFixedNumerators) {
  const Zpk filter =
      zpk(four_pairs,
          with_conjugates({std::polar(0.9, 1.2), std::polar(0.8, 1.1), std::polar(0.9, 0.9)}));
  for (const char *family : {"butterworth", "chebyshev-1"})
    for (const std::size_t section : {0, 1, 2})
      EXPECT_EQ(numerator(cascade(filter, family, "bandpass"), section), (Values{1.0, 0.0, -1.0}));
}

// An odd number of zeros by halves leaves the last one over, turned or not.
TEST(Zpk2sosOrder, OfAnOddNumberOfZerosByHalvesTheLastOneIsLeft) {
  const Zpk filter = zpk({zero_a, zero_b, zero_c}, with_conjugates({std::polar(0.9, 0.9)}));
  for (const char *response : {"lowpass", "bandpass"})
    EXPECT_TRUE(
        close(numerator(cascade(filter, "another", response), 0), of_pair(zero_a, zero_b), 1e-15))
        << response;
}

// --- symbols ----------------------------------------------------------------------------

TEST(Zpk2sosOrder, FamiliesAndResponsesAreComparedByIdentity) {
  const Zpk filter = zpk(four_pairs, joined(with_conjugates({std::polar(0.9, 0.2)}), {0.1}));
  for (const char *text : {"butterworth", "chebyshev-1", "chebyshev-2"}) {
    t_symbol lookalike{text};
    EXPECT_EQ(cascade(filter, &lookalike, gensym("lowpass")), cascade(filter, "another", "lowpass"))
        << text;
    EXPECT_NE(cascade(filter, text, "lowpass"), cascade(filter, "another", "lowpass")) << text;
  }
  for (const char *text : {"highpass", "bandpass", "bandstop"}) {
    t_symbol lookalike{text};
    EXPECT_EQ(cascade(filter, gensym("butterworth"), &lookalike),
              cascade(filter, "butterworth", "lowpass"))
        << text;
    EXPECT_NE(cascade(filter, "butterworth", text), cascade(filter, "butterworth", "lowpass"))
        << text;
  }
}

}  // namespace
