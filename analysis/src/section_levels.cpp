#include "section_levels.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace analysis {
namespace {

// Steps along the axis, and halvings towards both of its ends: poles at 1e-4 have their products'
// shoulders anywhere between.
constexpr int steps = 16;
constexpr int halvings = 14;

// Below this a squared magnitude is a zero's. So low that no product of sections reaches it from
// above, so high that a thousand of them fit into a float's exponent.
constexpr double least_power = 1e-60;

std::vector<double> frequencies(const Sections &filter, LevelGrid::Fineness fineness) {
  std::vector<double> w{0.0, 1.0};
  for (int i = 1; i < steps; ++i) w.push_back(static_cast<double>(i) / steps);
  for (int i = 5; i <= halvings; ++i) {
    w.push_back(std::ldexp(1.0, -i));
    w.push_back(1.0 - std::ldexp(1.0, -i));
  }
  for (const Section &section : filter) {
    const Complex pole = quadratic_roots(section.a1, section.a2).front();
    const double angle = std::arg(pole) / std::numbers::pi;
    const double width = (1.0 - std::abs(pole)) / std::numbers::pi;
    w.push_back(angle);
    if (fineness == LevelGrid::Fineness::coarse) continue;
    for (const double beside : {angle - width, angle + width})
      if (beside > 0.0 && beside < 1.0) w.push_back(beside);
  }
  std::sort(w.begin(), w.end());
  w.erase(std::unique(w.begin(), w.end()), w.end());
  return w;
}

}  // namespace

LevelGrid::LevelGrid(const Sections &filter, Fineness fineness) {
  const std::vector<double> frequency = frequencies(filter, fineness);
  for (std::size_t i = 0; i < frequency.size(); ++i) {
    const double w = frequency[i];
    const double end = w <= 0.5 ? 1.0 : -1.0;
    const double half = std::numbers::pi * (w <= 0.5 ? w : 1.0 - w) / 2;
    points_.push_back({end, 2 * std::sin(half) * std::sin(half), std::sin(2 * half)});
    const double before = i == 0 ? w : frequency[i - 1];
    const double after = i + 1 == frequency.size() ? w : frequency[i + 1];
    shares_.push_back((after - before) / 2);
  }
  while (points_.size() % level_lanes != 0) {
    points_.push_back(points_.back());
    shares_.push_back(0.0);
  }
}

GridLevels LevelGrid::levels(const Section &section) const {
  int exponent = 0;
  std::frexp(std::max({std::fabs(section.b0), std::fabs(section.b1), std::fabs(section.b2)}),
             &exponent);
  const double b0 = std::ldexp(section.b0, -exponent), b1 = std::ldexp(section.b1, -exponent),
               b2 = std::ldexp(section.b2, -exponent);
  // |c0 + c1 z^-1 + c2 z^-2|^2, the sum multiplied by z
  const auto power = [](const Point &z, double c0, double c1, double c2) {
    const double re = (c0 + z.end * c1 + c2) - (c0 + c2) * z.distance;
    const double im = (c0 - c2) * z.sin;
    return std::max(re * re + im * im, least_power);
  };
  GridLevels levels;
  levels.reserve(points_.size());
  for (const Point &z : points_)
    levels.push_back(static_cast<GridLevel>(
        exponent + 0.5 * std::log2(power(z, b0, b1, b2) / power(z, 1.0, section.a1, section.a2))));
  return levels;
}

GridLevel highest(const GridLevels &levels) {
  return *std::max_element(levels.begin(), levels.end());
}

void add_levels(GridLevels &product, const GridLevels &section) {
  for (std::size_t i = 0; i < product.size(); ++i) product[i] += section[i];
}

}  // namespace analysis
