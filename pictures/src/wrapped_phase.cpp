#include "pictures/wrapped_phase.h"

#include <cmath>
#include <cstddef>

namespace pictures {
namespace {

constexpr double turn = 360.0, half_turn = 180.0;

// How many turns lie between a phase and (-180, 180].
double turns_in(double degrees) { return std::ceil((degrees - half_turn) / turn); }

// What is passed on the way from one point to the next, from the number of turns that are left out at
// the first to that at the next.
void add_passages(Curve &wrapped, double x0, double y0, double x1, double y1) {
  const double last = turns_in(y1);
  const bool rises = y1 > y0;
  for (double turns = turns_in(y0); turns != last; turns += rises ? 1.0 : -1.0) {
    const double edge = turn * turns + (rises ? half_turn : -half_turn);
    const double x = x0 + (x1 - x0) * ((edge - y0) / (y1 - y0));
    wrapped.add(x, rises ? half_turn : -half_turn);
    wrapped.add(x, std::nan(""));
    wrapped.add(x, rises ? -half_turn : half_turn);
  }
}

}  // namespace

Curve wrapped_phase(const Curve &continuous) {
  Curve wrapped;
  for (std::size_t i = 0; i < continuous.x.size(); ++i) {
    const double x = continuous.x[i], y = continuous.y[i];
    if (i > 0 && std::isfinite(y) && std::isfinite(continuous.y[i - 1]))
      add_passages(wrapped, continuous.x[i - 1], continuous.y[i - 1], x, y);
    wrapped.add(x, y - turn * turns_in(y));
  }
  return wrapped;
}

}  // namespace pictures
