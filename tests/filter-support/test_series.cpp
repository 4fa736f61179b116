#include <gtest/gtest.h>

#include <string>

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

}  // namespace
