// The part of the z plane in which poles are enlarged.

#include <algorithm>
#include <cmath>
#include <iterator>
#include <limits>
#include <utility>

#include "analysis/stability.h"
#include "pictures/z_plane.h"

namespace pictures {
namespace {

using analysis::Complex;

constexpr double infinity = std::numeric_limits<double>::infinity();

// Half the side of a square that is worth the name of an enlargement.
constexpr double largest_half = 0.5;

/** A pole on or above the real axis, or mirrored to there. */
struct Pole {
  Complex at;
  double spacing; /**< to the nearest other pole of its filter, its conjugate included */
};

using Poles = std::vector<Pole>;

Poles upper_poles(const std::vector<DrawnFilter> &filters) {
  Poles all;
  for (const DrawnFilter &filter : filters)
    for (const Complex &pole : filter.roots.poles) {
      double least = infinity;
      for (const Complex &other : filter.roots.poles)
        if (&other != &pole) least = std::min(least, std::norm(other - pole));
      all.push_back({{pole.real(), std::fabs(pole.imag())}, std::sqrt(least)});
    }
  return all;
}

double least_spacing(const Poles &poles) {
  double least = infinity;
  for (const Pole &pole : poles) least = std::min(least, pole.spacing);
  return least;
}

Square around(const Poles &poles) {
  const auto sharpest =
      std::min_element(poles.begin(), poles.end(), [](const Pole &a, const Pole &b) {
        return std::fabs(analysis::distance_inside(a.at)) <
               std::fabs(analysis::distance_inside(b.at));
      });
  const Complex on_circle = std::polar(1.0, std::arg(sharpest->at));
  double left = on_circle.real(), right = left, low = on_circle.imag(), high = low;
  for (const Pole &pole : poles) {
    left = std::min(left, pole.at.real());
    right = std::max(right, pole.at.real());
    low = std::min(low, pole.at.imag());
    high = std::max(high, pole.at.imag());
  }
  const double half = std::max((right - left) / 2, (high - low) / 2);
  return {{(left + right) / 2, (low + high) / 2}, 1.25 * half};
}

/** Two groups of poles, and how far apart they are. */
struct Split {
  Poles one, other;
  double gap;
};

// At the longest edge of the minimum spanning tree, which is the widest gap there is (Prim).
Split split_at_widest_gap(const Poles &poles) {
  const std::size_t count = poles.size();
  std::vector<double> distance(count, infinity);  // squared, from the tree
  std::vector<std::size_t> order{0}, parent(count, 0);
  std::vector<bool> in_tree(count, false);
  in_tree[0] = true;
  for (std::size_t last = 0; order.size() < count; last = order.back()) {
    std::size_t next = count;
    for (std::size_t i = 0; i < count; ++i) {
      if (in_tree[i]) continue;
      const double to_last = std::norm(poles[i].at - poles[last].at);
      if (to_last < distance[i]) {
        distance[i] = to_last;
        parent[i] = last;
      }
      if (next == count || distance[i] < distance[next]) next = i;
    }
    in_tree[next] = true;
    order.push_back(next);
  }
  std::size_t widest = order.back();
  for (const std::size_t i : order)
    if (i != order.front() && distance[i] > distance[widest]) widest = i;
  // What hangs below that edge is one group.
  std::vector<bool> below(count, false);
  Split split{{}, {}, std::sqrt(distance[widest])};
  for (const std::size_t i : order) {
    below[i] = i == widest || (i != order.front() && below[parent[i]]);
    (below[i] ? split.other : split.one).push_back(poles[i]);
  }
  return split;
}

/** A square around a pole, and the poles in it. */
struct Window {
  Square square;
  Poles poles;
};

// The one with the most poles.
Window densest(const Poles &poles) {
  Window best{};
  for (const Pole &pole : poles) {
    Window here{{pole.at, 0.7 * largest_half}, {}};
    std::copy_if(poles.begin(), poles.end(), std::back_inserter(here.poles),
                 [&](const Pole &other) { return here.square.contains(other.at); });
    if (here.poles.size() > best.poles.size()) best = std::move(here);
  }
  return best;
}

}  // namespace

Square around_poles(const std::vector<DrawnFilter> &filters) {
  constexpr double touching = 0.05, wide_gap = 0.5;  // parts of half a side
  Poles poles = upper_poles(filters);
  for (;;) {
    const Square square = around(poles);
    const bool large = square.half > largest_half;
    if (!large && least_spacing(poles) >= touching * square.half) return square;
    const Split split = poles.size() > 1 ? split_at_widest_gap(poles) : Split{poles, {}, 0.0};
    if (split.gap >= wide_gap * square.half) {
      poles = least_spacing(split.one) < least_spacing(split.other) ? split.one : split.other;
      continue;
    }
    if (!large) return square;
    Window window = densest(poles);
    // All of them are far from the circle.
    if (window.poles.size() == poles.size()) return window.square;
    poles = std::move(window.poles);
  }
}

}  // namespace pictures
