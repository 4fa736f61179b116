// Frequencies at which nothing is missed.
#include "analysis/grid.h"

#include <gtest/gtest.h>

#include "data.h"

namespace {

using namespace analysis;

TEST(Grid, HoldsTheEndsAndAscends) {
  for (const data::Case &one : data::cases()) {
    const std::vector<double> points = grid(one.roots, {0.05, 0.95});
    EXPECT_EQ(points.front(), 0.05);
    EXPECT_EQ(points.back(), 0.95);
    for (std::size_t i = 1; i < points.size(); ++i) EXPECT_LT(points[i - 1], points[i]);
    EXPECT_LT(points.size(), 40 * (one.roots.poles.size() + one.roots.zeros.size() + 4))
        << one.name;
  }
}

TEST(Grid, StepsGrowWithTheDistanceFromASharpRootBeyondItsNeighbour) {
  // a pole 1e-6 from the circle, and blunt ones close by on both sides of it
  const double sharp = 0.3, distance = 1e-6;
  const auto pole = [](double radius, double w) {
    return std::polar(radius, std::numbers::pi * w);
  };
  const Roots filter{
      {}, {pole(1 - distance, sharp), pole(0.5, sharp + 1e-7), pole(0.5, sharp - 1e-7)}, 1.0};
  const std::vector<double> points = grid(filter, {0.0, 1.0});
  for (std::size_t i = 1; i < points.size(); ++i) {
    const double nearer = std::min(std::fabs(points[i] - sharp), std::fabs(points[i - 1] - sharp));
    EXPECT_LE(points[i] - points[i - 1], distance + 1.5 * nearer) << points[i];
  }
}

}  // namespace
