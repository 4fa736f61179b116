#include "analysis/phase.h"

#include <cmath>

#include "analysis/stability.h"
#include "constants.h"
#include "factored_response.h"

namespace analysis {
namespace {

enum class Side { inside, on_circle, outside };

Side side_of(const Complex &root, double tolerance) {
  const double inside = distance_inside(root);
  if (std::fabs(inside) <= tolerance) return Side::on_circle;
  return inside < 0 ? Side::outside : Side::inside;
}

// The continuous phase of 1 - root / z. That of a root above or on the real axis begins in
// (-pi, pi], that of its conjugate with the opposite.
Wide root_phase(const CirclePoint &z, const Complex &root, Side side) {
  const WideComplex distance = from_root(z, root);
  if (side == Side::inside)
    return std::atan2(distance.imag() * z.cos - distance.real() * z.sin,
                      distance.real() * z.cos + distance.imag() * z.sin);

  const Wide x = root.real(), y = root.imag();
  const Wide angle = std::atan2(y, x);
  const Wide ahead = angle - z.angle;
  if (side == Side::on_circle) {
    const bool before = ahead > 0 || (ahead == 0 && z.sin == 0 && z.cos < 0);
    return ahead / 2 + (before ? -pi<Wide> / 2 : pi<Wide> / 2);
  }
  // 1 - root / z = -(root / z) (1 - z / root), where the last factor stays right of the axis
  const Wide rest = std::atan2(distance.real() * y - distance.imag() * x,
                               -distance.real() * x - distance.imag() * y);
  const Wide half_turn = angle > 0 ? -pi<Wide> : pi<Wide>;
  return ahead + half_turn + rest;
}

// The phase with which a real root's factor begins just above w = 0, in quarter turns;
// conjugate pairs begin with 0.
long first_quarters(const Complex &root, Side side) {
  if (root.imag() != 0.0 || root.real() < 0.0 || side == Side::inside) return 0;
  return side == Side::on_circle ? 1 : 2;
}

// Whole turns that a phase has too many when it begins with so many quarters.
long surplus_turns(long quarters) {
  return static_cast<long>(std::ceil((static_cast<double>(quarters) - 2) / 4));
}

enum class Sign { positive, negative };

Sign sign_of(double gain) { return std::signbit(gain) ? Sign::negative : Sign::positive; }

// By the roots of a filter; the gain is what its sign says.
double unwrapped(const Roots &filter, Sign gain, double w) {
  const bool negative = gain == Sign::negative;
  const CirclePoint z = circle_point(w);
  const auto missing =
      static_cast<Wide>(filter.poles.size()) - static_cast<Wide>(filter.zeros.size());
  Wide phase = (negative ? pi<Wide> : 0) - missing * z.angle;
  long quarters = negative ? 2 : 0;
  for (const Complex &zero : filter.zeros) {
    const Side side = side_of(zero, on_circle);
    phase += root_phase(z, zero, side);
    quarters += first_quarters(zero, side);
  }
  for (const Complex &pole : filter.poles) {
    const Side side = side_of(pole, 0.0);
    phase -= root_phase(z, pole, side);
    quarters -= first_quarters(pole, side);
  }
  return static_cast<double>(phase - 2 * pi<Wide> * static_cast<Wide>(surplus_turns(quarters)));
}

// The delay of 1 - root / z.
Wide root_delay(const CirclePoint &z, const Complex &root, double tolerance) {
  const double inside = distance_inside(root);
  if (std::fabs(inside) <= tolerance) return 0.5;
  const Wide area = static_cast<Wide>(inside) * (2 - static_cast<Wide>(inside));  // 1 - r^2
  return (1 - area / std::norm(from_root(z, root))) / 2;
}

// The delay of 1 / (z + a1 + a2 / z).
Wide denominator_delay(const CirclePoint &z, double a1, double a2) {
  const Wide second = a2;
  return (1 - second) * plus_cosine(z, {1.0, a2}, {a1}) / std::norm(quadratic_at(z, 1.0, a1, a2));
}

// The delay of b0 z + b1 + b2 / z.
Wide numerator_delay(const CirclePoint &z, const Section &section) {
  const Roots roots = roots_of({Section{section.b0, section.b1, section.b2, 1.0, 1.0}});
  Wide delay = 1 - static_cast<Wide>(roots.zeros.size());
  for (const Complex &zero : roots.zeros) delay += root_delay(z, zero, on_circle);
  return delay;
}

}  // namespace

double wrapped_phase(const Roots &filter, double w) { return factored_response(filter, w).angle(); }
double wrapped_phase(const Sections &filter, double w) {
  return factored_response(filter, w).angle();
}
double wrapped_phase(const Transfer &filter, double w) {
  return factored_response(filter, w).angle();
}

double unwrapped_phase(const Roots &filter, double w) {
  return unwrapped(filter, sign_of(filter.gain), w);
}

double unwrapped_phase(const Sections &filter, double w) {
  // The product of the gains may be 0, the product of their signs is not.
  double sign = 1.0;
  for (const Section &section : filter) sign *= std::copysign(1.0, roots_of({section}).gain);
  return unwrapped(roots_of(filter), sign_of(sign), w);
}

double group_delay(const Roots &filter, double w) {
  const CirclePoint z = circle_point(w);
  Wide delay = static_cast<Wide>(filter.poles.size()) - static_cast<Wide>(filter.zeros.size());
  for (const Complex &zero : filter.zeros) delay += root_delay(z, zero, on_circle);
  for (const Complex &pole : filter.poles) delay -= root_delay(z, pole, 0.0);
  return static_cast<double>(delay);
}

double group_delay(const Sections &filter, double w) {
  const CirclePoint z = circle_point(w);
  Wide delay = 0;
  for (const Section &section : filter)
    delay += numerator_delay(z, section) + denominator_delay(z, section.a1, section.a2);
  return static_cast<double>(delay);
}

}  // namespace analysis
