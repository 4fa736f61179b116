#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include "support.h"

namespace {

using namespace support;
using Values = std::vector<double>;

void expect_shapes(const Model &ss, int32_t n) {
  EXPECT_EQ(ss->a->cols, n);
  EXPECT_EQ(ss->a->rows, n);
  EXPECT_EQ(ss->b->cols, 1);
  EXPECT_EQ(ss->b->rows, n);
  EXPECT_EQ(ss->c->cols, n);
  EXPECT_EQ(ss->c->rows, 1);
  EXPECT_EQ(ss->d->cols, 1);
  EXPECT_EQ(ss->d->rows, 1);
}

TEST(Zpk2ss, AnOddAllPoleFilterStartsWithItsRealPole) {
  const double gain = 5.0;
  const Model ss = realised(zpk({}, {{-1.0, 2.0}, {-1.0, -2.0}, -0.5}, gain));
  expect_shapes(ss, 3);
  const double wn = std::sqrt(5.0);
  EXPECT_TRUE(close(stored(ss->a),
                    {-0.5, 0.0, 0.0,  //
                     1.0, -2.0, -wn,  //
                     0.0, wn, 0.0},
                    1e-15));
  EXPECT_EQ(matrix64_get(ss->a, 0, 1), 1.0) << "the coupling";
  EXPECT_EQ(stored(ss->b), (Values{1.0, 0.0, 0.0}));
  EXPECT_TRUE(close(stored(ss->c), {0.0, 0.0, gain / wn}, 1e-15));
  EXPECT_EQ(stored(ss->d), Values{0.0});
}

TEST(Zpk2ss, AFirstOrderFilterIsOneStateWithOnesAround) {
  const Model ss = realised(zpk({}, {-3.0}, 4.0));
  expect_shapes(ss, 1);
  EXPECT_EQ(stored(ss->a), Values{-3.0});
  EXPECT_EQ(stored(ss->b), Values{1.0});
  EXPECT_EQ(stored(ss->c), Values{4.0});
  EXPECT_EQ(stored(ss->d), Values{0.0});
}

TEST(Zpk2ss, APairOfPolesBringsBothStatesToOneScale) {
  const Model ss = realised(zpk({}, {{-0.6, 0.8}, {-0.6, -0.8}}, 2.0));
  EXPECT_TRUE(close(stored(ss->a), {-1.2, -1.0, 1.0, 0.0}, 1e-15));
  EXPECT_EQ(stored(ss->b), (Values{1.0, 0.0}));
  EXPECT_TRUE(close(stored(ss->c), {0.0, 2.0}, 1e-15));
  EXPECT_EQ(stored(ss->d), Values{0.0});
}

TEST(Zpk2ss, APairOfZerosFeedsThrough) {
  const double gain = 0.25;
  const Model ss = realised(zpk({3.0 * j, -3.0 * j}, {{-1.0, 1.0}, {-1.0, -1.0}}, gain));
  const double wn = std::sqrt(2.0);  // a1 = 2, a2 = 2, w^2 = 9
  EXPECT_TRUE(close(stored(ss->a), {-2.0, -wn, wn, 0.0}, 1e-15));
  EXPECT_EQ(stored(ss->b), (Values{1.0, 0.0}));
  EXPECT_TRUE(close(stored(ss->c), {gain * -2.0, gain * (9.0 - 2.0) / wn}, 1e-15));
  EXPECT_EQ(stored(ss->d), Values{gain});
}

TEST(Zpk2ss, RealPolesPairUpLikeAnyOthers) {
  const Model ss = realised(zpk({}, {-1.0, -4.0}));
  EXPECT_TRUE(close(stored(ss->a), {-5.0, -2.0, 2.0, 0.0}, 1e-15));
  EXPECT_TRUE(close(stored(ss->c), {0.0, 0.5}, 1e-15));
}

TEST(Zpk2ss, APoleBesideTheRealAxisIsNoRealPole) {
  // The one pole that is exactly real comes first, though it is the farthest left.
  const double beside = 1e-300;
  const Model ss = realised(zpk({}, {{-1.0, beside}, -3.0, {-1.0, -beside}}));
  EXPECT_EQ(matrix64_get(ss->a, 0, 0), -3.0);
  EXPECT_TRUE(close(matrix64_get(ss->a, 1, 1), -2.0, 1e-15));
}

TEST(Zpk2ss, OfSeveralRealPolesTheLargestStandsAlone) {
  const Model ss = realised(zpk({}, {-2.0, -1.0, -4.0}));
  EXPECT_EQ(matrix64_get(ss->a, 0, 0), -1.0);
  EXPECT_TRUE(close(matrix64_get(ss->a, 1, 1), -6.0, 1e-15)) << "-2 and -4 make the pair";
}

TEST(Zpk2ss, TheOrderOfThePolesDoesNotMatter) {
  const t_complex64list poles = {{-2.0, 1.0}, {-2.0, -1.0}, {-1.0, 3.0}, {-1.0, -3.0}, -0.5};
  t_complex64list shuffled = {poles[3], poles[4], poles[0], poles[2], poles[1]};
  const Model ss = realised(zpk({}, poles));
  const Model same = realised(zpk({}, shuffled));
  EXPECT_EQ(stored(ss->a), stored(same->a));
  EXPECT_EQ(stored(ss->b), stored(same->b));
  EXPECT_EQ(stored(ss->c), stored(same->c));
}

TEST(Zpk2ss, ComplexPolesComeByRealPartBeforeRealOnes) {
  const Model ss =
      realised(zpk({}, {-8.0, {-1.0, 3.0}, {-2.0, 1.0}, -9.0, {-1.0, -3.0}, {-2.0, -1.0}}));
  EXPECT_TRUE(close(matrix64_get(ss->a, 0, 0), -4.0, 1e-15));
  EXPECT_TRUE(close(matrix64_get(ss->a, 2, 2), -2.0, 1e-15));
  EXPECT_TRUE(close(matrix64_get(ss->a, 4, 4), -17.0, 1e-15));
}

TEST(Zpk2ss, TheLastZerosMeetTheFirstPoles) {
  // Poles farther left come first, so 5j is the zero of the first section.
  const Model ss = realised(zpk({3.0 * j, -3.0 * j, 5.0 * j, -5.0 * j},
                                {{-1.0, 1.0}, {-1.0, -1.0}, {-2.0, 2.0}, {-2.0, -2.0}}));
  const double wn = std::sqrt(8.0);  // a1 = 4, a2 = 8
  EXPECT_TRUE(close(matrix64_get(ss->c, 0, 0), -4.0, 1e-15));
  EXPECT_TRUE(close(matrix64_get(ss->c, 1, 0), (25.0 - 8.0) / wn, 1e-15));
  EXPECT_EQ(stored(ss->d), Values{1.0});
}

void expect_the_same_model(const Model &ss, const Model &other) {
  EXPECT_EQ(stored(ss->a), stored(other->a));
  EXPECT_EQ(stored(ss->b), stored(other->b));
  EXPECT_EQ(stored(ss->c), stored(other->c));
  EXPECT_EQ(stored(ss->d), stored(other->d));
}

const t_complex64list two_pole_pairs = {{-1.0, 1.0}, {-1.0, -1.0}, {-2.0, 2.0}, {-2.0, -2.0}};

TEST(Zpk2ss, TheFirstOfAnOddNumberOfZerosIsNotUsed) {
  const t_complex64list one = {7.0};
  const t_complex64list three = {7.0, 3.0 * j, -3.0 * j};
  const auto without_first = [](t_complex64list zeros) {
    zeros.erase(zeros.begin());
    return zeros;
  };
  for (const t_complex64list &poles : {two_pole_pairs, t_complex64list{-0.5, {-1, 1}, {-1, -1}}})
    for (const t_complex64list &zeros : {one, three})
      expect_the_same_model(realised(zpk(zeros, poles, 3.0)),
                            realised(zpk(without_first(zeros), poles, 3.0)));
}

TEST(Zpk2ss, OfMoreZerosThanPolesTheLastAreUsed) {
  const t_complex64list poles = {{-1.0, 1.0}, {-1.0, -1.0}};
  expect_the_same_model(realised(zpk({5.0 * j, -5.0 * j, 3.0 * j, -3.0 * j}, poles)),
                        realised(zpk({3.0 * j, -3.0 * j}, poles)));
  expect_the_same_model(realised(zpk({3.0 * j, -3.0 * j}, {-0.5})), realised(zpk({}, {-0.5})));
}

// Sorted, all upper members come before all lower ones; their sections would be of
// other poles than these, since what is not conjugate has no real coefficients.
TEST(Zpk2ss, PolePairsOfOneRealPartStayConjugate) {
  const Zpk filter = zpk({}, {{-1.0, 1.0}, {-1.0, -1.0}, {-1.0, 3.0}, {-1.0, -3.0}}, 2.0);
  const Model ss = realised(filter);
  EXPECT_TRUE(close(matrix64_get(ss->a, 0, 0), -2.0, 1e-15));
  EXPECT_TRUE(close(matrix64_get(ss->a, 0, 1), std::sqrt(10.0), 1e-15)) << "the farther pair";
  EXPECT_TRUE(close(matrix64_get(ss->a, 2, 2), -2.0, 1e-15));
  EXPECT_TRUE(close(matrix64_get(ss->a, 2, 3), std::sqrt(2.0), 1e-15));
  for (const double w : {0.0, 0.7, 3.0, 9.0})
    EXPECT_TRUE(close(response(ss, w * j), response(filter, w * j), 1e-13)) << w;
}

TEST(Zpk2ss, RepeatedPolePairsStayConjugate) {
  const Complex pole = {-1.0, 2.0};
  const Zpk filter = zpk({}, {pole, pole, pole, std::conj(pole), std::conj(pole), std::conj(pole)});
  const Model ss = realised(filter);
  for (const int32_t section : {0, 2, 4})
    EXPECT_TRUE(close(matrix64_get(ss->a, section, section + 1), std::sqrt(5.0), 1e-15));
  for (const double w : {0.0, 0.7, 3.0})
    EXPECT_TRUE(close(response(ss, w * j), response(filter, w * j), 1e-13)) << w;
}

TEST(Zpk2ss, APoleOfWhichOnlyTheRealPartIsANumberIsReal) {
  const Complex half = {-2.0, not_a_number};
  const t_complex64list pair = {{-1.0, 1.0}, {-1.0, -1.0}};
  expect_the_same_model(realised(zpk({}, {half, pair[0], pair[1]})),
                        realised(zpk({}, {-2.0, pair[0], pair[1]})));
  expect_the_same_model(realised(zpk({}, {half, -3.0, pair[0], pair[1]})),
                        realised(zpk({}, {-2.0, -3.0, pair[0], pair[1]})));
}

TEST(Zpk2ss, ASectionWithoutZerosHidesTheStatesBeforeIt) {
  const Model ss = realised(
      zpk({3.0 * j, -3.0 * j}, {{-1.0, 1.0}, {-1.0, -1.0}, {-2.0, 2.0}, {-2.0, -2.0}}, 6.0));
  EXPECT_EQ(matrix64_get(ss->c, 0, 0), 0.0);
  EXPECT_EQ(matrix64_get(ss->c, 1, 0), 0.0);
  EXPECT_EQ(matrix64_get(ss->c, 2, 0), 0.0);
  EXPECT_TRUE(close(matrix64_get(ss->c, 3, 0), 6.0 / std::sqrt(2.0), 1e-15));
  EXPECT_EQ(stored(ss->d), Values{0.0});
}

TEST(Zpk2ss, ADoublePoleAtTheOriginIsNotScaled) {
  const Model ss = realised(zpk({}, {0.0, 0.0}, 3.0));
  EXPECT_EQ(stored(ss->a), (Values{0.0, 0.0, 1.0, 0.0}));
  EXPECT_EQ(stored(ss->b), (Values{1.0, 0.0}));
  EXPECT_EQ(stored(ss->c), (Values{0.0, 3.0}));
}

TEST(Zpk2ss, APairAsNearTheOriginAsCanBeIsScaled) {
  for (const double magnitude : {1e-7, 1e-30, 1e-150}) {
    const Model ss = realised(
        zpk({}, {{-0.6 * magnitude, 0.8 * magnitude}, {-0.6 * magnitude, -0.8 * magnitude}}));
    EXPECT_NEAR(matrix64_get(ss->a, 0, 1) / magnitude, 1.0, 1e-15);
    EXPECT_NEAR(matrix64_get(ss->c, 1, 0) * magnitude, 1.0, 1e-15);
  }
}

TEST(Zpk2ss, AFilterWithoutPolesIsItsGain) {
  const Model ss = realised(zpk({}, {}, -2.5));
  expect_shapes(ss, 0);
  EXPECT_EQ(stored(ss->d), Values{-2.5});
}

TEST(Zpk2ss, TheFilterIsOnlyRead) {
  const Zpk filter = chebyshev2(5, 40.0);
  const t_complex64list zeros = filter->zeros;
  const t_complex64list poles = filter->poles;
  const double gain = filter->gain;
  realised(filter);
  EXPECT_EQ(filter->zeros, zeros);
  EXPECT_EQ(filter->poles, poles);
  EXPECT_EQ(filter->gain, gain);
}

TEST(Zpk2ss, EveryPrototypeKeepsItsResponse) {
  for (int n = 1; n <= 16; ++n) {
    for (const Zpk &filter : {butterworth(n), chebyshev1(n, 1.0), chebyshev2(n, 40.0)}) {
      const Model ss = realised(filter);
      for (const double w : {0.0, 0.3, 0.9, 1.5, 4.0})
        EXPECT_TRUE(close(response(ss, w * j), response(filter, w * j), 1e-11))
            << "order " << n << ", w " << w;
    }
  }
}

RC_GTEST_PROP(Zpk2ss, KeepsTheResponseOfAnyFilterOfPairs, ()) {
  // Poles left of -0.1, so that responses on the imaginary axis are moderate, and
  // no two pairs in one column: the sort would put both upper members together.
  const auto part = [](int low, int high) { return *rc::gen::inRange(low, high) / 10.0; };
  const Zpk filter = zpk({}, {}, part(-30, 31));
  const int pole_pairs = *rc::gen::inRange(0, 4);
  const int zero_pairs = *rc::gen::inRange(0, pole_pairs + 1);
  for (int k = 0; k < pole_pairs; ++k) {
    const double imaginary = part(0, 20);
    const Complex pole(-k - part(2, 11), imaginary);
    filter->poles.push_back(pole);
    filter->poles.push_back(std::conj(pole));
  }
  for (int k = 0; k < zero_pairs; ++k) {
    const double imaginary = part(0, 20);
    const Complex zero(part(-20, 20), imaginary);
    filter->zeros.push_back(zero);
    filter->zeros.push_back(std::conj(zero));
  }
  if (*rc::gen::arbitrary<bool>()) filter->poles.push_back(-part(2, 20));
  const Model ss = realised(filter);
  for (const double w : {0.0, 0.7, 2.0, 9.0}) {
    const Complex expected = response(filter, w * j);
    const Complex actual = response(ss, w * j);
    RC_ASSERT(std::abs(actual - expected) <= 1e-9 * std::max(1.0, std::abs(expected)));
  }
}

}  // namespace
