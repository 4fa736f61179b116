#include "analysis/grid.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <numbers>

#include "analysis/phase.h"
#include "analysis/stability.h"

namespace analysis {
namespace {

constexpr int even_steps = 8;
// Beside a zero on the circle, where there is no slope: part of the way to the next mark.
constexpr double beside = 1e-6;

/** A frequency, and over what distance from it the level changes its course. */
struct Mark {
  double w;
  double scale;
};

constexpr double no_scale = std::numeric_limits<double>::infinity();

void add_marks(std::vector<Mark> &marks, const std::vector<Complex> &roots, const Interval &range) {
  for (const Complex &root : roots) {
    const double w = std::fabs(std::arg(root)) / std::numbers::pi;
    const double distance = std::fabs(distance_inside(root));
    // The level is steepest at a root on the circle, and has no extremum beside it.
    const double scale = distance > on_circle ? distance / std::numbers::pi : no_scale;
    if (!std::isfinite(w)) continue;
    // Beyond the range a root is felt no more sharply than at its end.
    const double inside = std::clamp(w, range.low, range.high);
    marks.push_back({inside, scale + std::fabs(w - inside)});
  }
}

// A sharp root is felt beyond its neighbours: the scale at a mark is no larger than
// that of any other mark and the way from there.
void spread_scales(std::vector<Mark> &marks) {
  for (std::size_t i = 1; i < marks.size(); ++i)
    marks[i].scale = std::min(marks[i].scale, marks[i - 1].scale + (marks[i].w - marks[i - 1].w));
  for (std::size_t i = marks.size() - 1; i > 0; --i)
    marks[i - 1].scale =
        std::min(marks[i - 1].scale, marks[i].scale + (marks[i].w - marks[i - 1].w));
}

void fill_gap(std::vector<double> &points, const Mark &low, const Mark &high) {
  const double gap = high.w - low.w;
  if (!(gap > 0)) return;
  for (int i = 1; i < even_steps; ++i) points.push_back(low.w + gap * i / even_steps);
  points.push_back(low.w + gap * beside);
  points.push_back(high.w - gap * beside);
  const double last = gap / even_steps;
  for (double step = low.scale; step < last; step *= 2) points.push_back(low.w + step);
  for (double step = high.scale; step < last; step *= 2) points.push_back(high.w - step);
}

}  // namespace

std::vector<double> grid(const Roots &filter, const Interval &range) {
  std::vector<Mark> marks{{range.low, no_scale}, {range.high, no_scale}};
  add_marks(marks, filter.zeros, range);
  add_marks(marks, filter.poles, range);
  std::sort(marks.begin(), marks.end(), [](const Mark &x, const Mark &y) { return x.w < y.w; });
  spread_scales(marks);

  std::vector<double> points;
  for (std::size_t i = 0; i < marks.size(); ++i) {
    points.push_back(marks[i].w);
    if (i + 1 < marks.size()) fill_gap(points, marks[i], marks[i + 1]);
  }
  std::sort(points.begin(), points.end());
  points.erase(std::unique(points.begin(), points.end()), points.end());
  return points;
}

std::vector<double> grid(const Sections &filter, const Interval &range) {
  return grid(roots_of(filter), range);
}

}  // namespace analysis
