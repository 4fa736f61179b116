#include <gtest/gtest.h>

#include <string>

#include "series.h"
#include "support.h"

// The zeros of models that are a series of sections, and of ones that nearly are.

namespace {

using namespace support;

t_complex64list zeros_of(const Model &ss) {
  const Zpk record = zpk({}, {});
  filtermath_ss_tzero(ss.get(), record.get(), false);
  return record->zeros;
}

Model chebyshev2_digital(const std::string &response, int order, double attenuation, double edge) {
  Model ss = realised(chebyshev2(order, attenuation));
  if (response == "lowpass") filtermath_lp2lp(ss.get(), prewarped(edge));
  if (response == "highpass") filtermath_lp2hp(ss.get(), prewarped(edge));
  filtermath_bilinear(ss.get(), 2.0);
  return ss;
}

/**
 * The angles of the zeros, from the textbook: those of the prototype lie at
 * 1 / cos((2 k - 1) pi / 2 n), and the bilinear transform takes j w to the angle
 * 2 atan(w / 4).
 */
std::vector<double> zero_angles(const std::string &response, int order, double edge) {
  std::vector<double> angles;
  for (int k = 1; k <= order; ++k) {
    const double cosine = 2 * k == order + 1 ? 0.0 : std::cos((2 * k - 1) * pi / (2 * order));
    const double edges = prewarped(edge) / 4.0;
    angles.push_back(response == "lowpass" ? 2.0 * std::atan2(edges, cosine)
                                           : 2.0 * std::atan(edges * cosine));
  }
  return angles;
}

double distance_to_nearest(Complex point, const std::vector<Complex> &others) {
  double least = infinity;
  for (const Complex other : others) least = std::min(least, std::abs(point - other));
  return least;
}

double worst_zero(const std::string &response, int order, double attenuation, double edge) {
  const t_complex64list zeros = zeros_of(chebyshev2_digital(response, order, attenuation, edge));
  EXPECT_EQ(zeros.size(), static_cast<std::size_t>(order));
  double worst = 0.0;
  for (const double angle : zero_angles(response, order, edge))
    worst = std::max(worst, distance_to_nearest(std::polar(1.0, angle), zeros));
  return worst;
}

TEST(SeriesZeros, AreExactAtEveryOrder) {
  for (const int order : {3, 8, 33, 64, 192, 200})
    for (const std::string response : {"lowpass", "highpass"})
      for (const double edge : {0.001, 0.125, 0.5, 0.9, 0.999})
        EXPECT_LT(worst_zero(response, order, 96.0, edge), 1e-11)
            << response << " of order " << order << " at " << edge;
}

TEST(SeriesZeros, AreExactAtTheDeepestStopband) {
  for (const int order : {8, 64, 200})
    for (const double edge : {0.001, 0.125, 0.5, 0.75, 0.9})
      EXPECT_LT(worst_zero("lowpass", order, 240.0, edge), 1e-12) << order << " at " << edge;
}

// The first-order section of a highpass feeds next to nothing through at a high cutoff, and
// its zero is its pole, of about -1, less what divides by that.
TEST(SeriesZeros, OfAHighpassOfOddOrderKeepTheOneAtOne) {
  for (const int order : {3, 5, 9, 33})
    for (const double edge : {0.6, 0.9, 0.97, 0.99, 0.997, 0.999, 0.9999}) {
      const t_complex64list zeros = zeros_of(chebyshev2_digital("highpass", order, 20.0, edge));
      EXPECT_LT(distance_to_nearest(1.0, zeros), 2e-15) << order << " at " << edge;
    }
}

// Each section's states in a basis of their own, the states in another order:
// the same filter, and so the same zeros.
TEST(SeriesZeros, DoNotDependOnTheBasisOfTheStates) {
  const Model ss = chebyshev2_digital("lowpass", 5, 40.0, 0.3);
  const std::vector<std::size_t> order = {3, 0, 4, 2, 1};
  const std::vector<double> scale = {4.0, 0.25, -8.0, 2.0, 0.5};
  const Model other = copy(ss.get());
  for (std::size_t row = 0; row < 5; ++row) {
    for (std::size_t column = 0; column < 5; ++column)
      other->a->data[row * 5 + column] =
          scale[row] / scale[column] * ss->a->data[order[row] * 5 + order[column]];
    other->b->data[row] = scale[row] * ss->b->data[order[row]];
    other->c->data[row] = ss->c->data[order[row]] / scale[row];
  }
  const t_complex64list expected = zeros_of(ss);
  const t_complex64list found = zeros_of(other);
  ASSERT_EQ(found.size(), expected.size());
  for (const Complex zero : found) EXPECT_LT(distance_to_nearest(zero, expected), 1e-14);
}

// One number of a series is not what a series has there: the zeros are those of
// the model as it is.
TEST(SeriesZeros, OfAModelThatIsNotQuiteOneAreItsOwn) {
  const Model series = chebyshev2_digital("lowpass", 6, 40.0, 0.3);
  const t_complex64list before = zeros_of(series);
  const auto changed = [&](double *number, const Model &ss) {
    *number *= 1.0 + 1e-4;
    double moved = 0.0;
    for (const Complex zero : zeros_of(ss)) {
      EXPECT_LT(std::abs(response(ss, zero)), 1e-11);
      moved = std::max(moved, distance_to_nearest(zero, before));
    }
    EXPECT_GT(moved, 1e-9) << "the change does not show";
  };
  for (const std::size_t state : {0U, 3U, 5U}) {
    const Model input = copy(series.get());
    changed(&input->b->data[state], input);
    const Model output = copy(series.get());
    changed(&output->c->data[state], output);
  }
  const Model through = copy(series.get());
  changed(through->d->data, through);
  for (const std::size_t element : {2U * 6U + 0U, 4U * 6U + 1U, 5U * 6U + 3U}) {
    const Model coupling = copy(series.get());
    changed(&coupling->a->data[element], coupling);
  }
}

TEST(SeriesZeros, OfParallelSectionsAreThoseOfTheirSum) {
  const Model ss = model({{0.5, 0.0}, {0.0, -0.25}}, {1.0, 1.0}, {0.5, 0.75}, 1.0);
  const t_complex64list zeros = zeros_of(ss);
  ASSERT_EQ(zeros.size(), 2U);
  for (const Complex zero : zeros) EXPECT_LT(std::abs(response(ss, zero)), 1e-14);
}

// The first state feeds the second only; were each a section, the first would
// have no feed-through to take a zero from.
TEST(SeriesZeros, OfASectionWithoutFeedThroughAreThoseOfTheWholeModel) {
  const Model ss = model({{0.5, 0.0}, {2.0, -0.25}}, {1.0, 0.0}, {0.5, 0.75}, 1.0);
  const t_complex64list zeros = zeros_of(ss);
  ASSERT_EQ(zeros.size(), 2U);
  for (const Complex zero : zeros) EXPECT_LT(std::abs(response(ss, zero)), 1e-14);
}

// --- taking apart and putting together ------------------------------------------------

std::size_t sections(const Model &ss) {
  return filtermath::sections_of(ss.get()).sections().size();
}

TEST(Series, ADesignIsOneBeforeAndAfterEachStep) {
  for (const int order : {3, 4, 17, 60}) {
    const auto count = static_cast<std::size_t>((order + 1) / 2);
    for (const bool all_pole : {false, true}) {
      const Zpk prototype = all_pole ? butterworth(order) : chebyshev2(order, 150.0);
      const t_symbol *family = gensym(all_pole ? "butterworth" : "chebyshev-2");
      const Model lowpass = realised(prototype);
      const Model highpass = copy(lowpass.get());
      const Model bandpass = copy(lowpass.get());
      const Model bandstop = copy(lowpass.get());
      EXPECT_EQ(sections(lowpass), count);
      filtermath_lp2lp(lowpass.get(), 3.7);
      filtermath_lp2hp(highpass.get(), 3.7);
      filtermath_lp2bp(bandpass.get(), 3.7, 0.9);
      filtermath_lp2bs(bandstop.get(), const_cast<t_symbol *>(family), 3.7, 0.9);
      for (const Model *ss : {&lowpass, &highpass, &bandpass, &bandstop}) {
        EXPECT_EQ(sections(*ss), count) << order;
        filtermath_bilinear(ss->get(), 2.0);
        EXPECT_EQ(sections(*ss), count) << order << ", digital";
      }
    }
  }
}

TEST(Series, PutTogetherAgainIsTheModel) {
  const Model ss = chebyshev2_digital("lowpass", 9, 60.0, 0.3);
  const Model again(statespace_new());
  filtermath::connect(filtermath::sections_of(ss.get()), again.get());
  const auto expect_same = [](const _matrix64 *x, const _matrix64 *y) {
    ASSERT_EQ(x->cols, y->cols);
    ASSERT_EQ(x->rows, y->rows);
    for (int32_t i = 0; i < x->capacity; ++i)
      EXPECT_NEAR(x->data[i], y->data[i], 1e-14 * std::abs(x->data[i])) << i;
  };
  expect_same(again->a, ss->a);
  expect_same(again->b, ss->b);
  expect_same(again->c, ss->c);
  expect_same(again->d, ss->d);
}

TEST(Series, OneSectionIsNone) {
  EXPECT_EQ(sections(model({{0.5}}, {1.0}, {2.0}, 3.0)), 0U);
  EXPECT_EQ(sections(model({{0.5, 1.0}, {-1.0, 0.5}}, {1.0, 1.0}, {2.0, 2.0}, 3.0)), 0U);
  EXPECT_EQ(sections(model({}, {}, {}, 3.0)), 0U);
}

TEST(Series, SectionsThatAreNotTiedAreNone) {
  EXPECT_EQ(sections(model({{0.5, 0.0}, {0.0, 0.25}}, {1.0, 1.0}, {2.0, 2.0}, 3.0)), 0U);
}

TEST(Series, AModelThatIsNotFiniteIsNone) {
  for (const double bad : {not_a_number, infinity}) {
    for (const std::size_t at : {0U, 1U, 2U, 3U}) {
      if (at == 1U) continue;  // above the diagonal: no series at all
      const Model ss = model({{0.5, 0.0}, {1.0, 0.25}}, {1.0, 2.0}, {3.0, 4.0}, 6.0);
      ASSERT_EQ(sections(ss), 2U);
      ss->a->data[at] = bad;
      if (at == 2U) {
        EXPECT_EQ(sections(ss), 0U) << bad;
      }
      ss->b->data[0] = bad;
      EXPECT_EQ(sections(ss), 0U) << bad;
    }
  }
}

// The feed-throughs of 1e300 multiply to what no double holds, and so to no D.
TEST(Series, AProductBeyondAllNumbersIsNone) {
  for (const double d : {1.0, infinity})
    EXPECT_EQ(sections(model({{0.5, 0.0}, {1e-300, 0.25}}, {1.0, 1e300}, {1.0, 1.0}, d)), 0U) << d;
}

// Each number may be off by four units of rounding for each factor of its product. The
// two sections here pass on 6 from input to output, which has three factors.
TEST(Series, ANumberMayBeOffByItsRoundingAndNoMore) {
  const double unit = std::numeric_limits<double>::epsilon();
  const Model ss = model({{0.5, 0.0}, {1.0, 0.25}}, {1.0, 2.0}, {3.0, 4.0}, 6.0);
  for (const double sign : {1.0, -1.0}) {
    ss->d->data[0] = 6.0 * (1.0 + sign * 10.0 * unit);
    EXPECT_EQ(sections(ss), 2U) << sign;
    ss->d->data[0] = 6.0 * (1.0 + sign * 14.0 * unit);
    EXPECT_EQ(sections(ss), 0U) << sign;
  }
}

/** A series of first-order sections with feed-throughs of 1, each driven by all before. */
Model first_order_series(std::size_t n) {
  std::vector<std::vector<double>> a(n, std::vector<double>(n, 0.0));
  for (std::size_t row = 0; row < n; ++row) {
    for (std::size_t column = 0; column < row; ++column) a[row][column] = 1.0;
    a[row][row] = 0.5;
  }
  return model(a, std::vector<double>(n, 1.0), std::vector<double>(n, 1.0), 1.0);
}

TEST(Series, EveryNumberCounts) {
  constexpr std::size_t n = 6;
  ASSERT_EQ(sections(first_order_series(n)), n);
  const auto changed = [](std::size_t index, double factor) {
    const Model ss = first_order_series(n);
    if (index < n * n)
      ss->a->data[index] *= factor;
    else if (index < n * n + n)
      ss->b->data[index - n * n] *= factor;
    else if (index < n * n + 2 * n)
      ss->c->data[index - n * n - n] *= factor;
    else
      ss->d->data[0] *= factor;
    return sections(ss);
  };
  for (std::size_t index = 0; index <= n * n + 2 * n; ++index) {
    // Any number does as a section's own: on the diagonal, the
    // first input weight and the last output weight.
    const bool any =
        (index < n * n && index % n >= index / n) || index == n * n || index == n * n + 2 * n - 1;
    EXPECT_EQ(changed(index, 1.0 + 1e-13), any ? n : 0U) << index;
  }
}

// A section that feeds nothing through still is one; the zeros are then those of the whole.
TEST(Series, ASectionMayFeedNothingThrough) {
  const Model ss = model({{0.5, 0.0}, {1.0, 0.25}}, {1.0, 0.0}, {3.0, 4.0}, 0.0);
  EXPECT_EQ(sections(ss), 2U);
  filtermath_bilinear(ss.get(), 2.0);
  EXPECT_EQ(sections(ss), 2U);
}

}  // namespace
