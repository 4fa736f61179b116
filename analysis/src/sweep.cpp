#include "analysis/sweep.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <numbers>

#include "analysis/phase.h"
#include "analysis/stability.h"
#include "circle_sweep.h"
#include "wide.h"

namespace analysis {
namespace {

/** Quotients of products of squared magnitudes, their binary exponents beside them. */
class PowerSweep {
 public:
  explicit PowerSweep(std::size_t count)
      : above_(count, 1.0), below_(count, 1.0), mantissa_(count, 1.0), exponent_(count, 0) {}

  /** Where factors are multiplied to or divided by. They are less than 2^10, and so few of them are
   *  smaller than 2^-120 that between two calls of `fold` nothing underflows. */
  std::vector<double> &above() { return above_; }
  std::vector<double> &below() { return below_; }

  void multiply_by_power_of_two(long exponent) { common_ += exponent; }

  /** To be called after every fourth factor, and at the end. */
  void fold() {
    for (std::size_t i = 0; i < mantissa_.size(); ++i) {
      int more = 0;
      mantissa_[i] = std::frexp(mantissa_[i] * (above_[i] / below_[i]), &more);
      exponent_[i] += more;
      above_[i] = below_[i] = 1.0;
    }
  }

  std::vector<double> db() const {
    std::vector<double> levels;
    for (std::size_t i = 0; i < mantissa_.size(); ++i)
      levels.push_back(10 *
                       (std::log10(mantissa_[i]) + static_cast<double>(exponent_[i] + common_) *
                                                       std::numbers::ln2 / std::numbers::ln10));
    return levels;
  }

 private:
  std::vector<double> above_, below_, mantissa_;
  std::vector<long> exponent_;
  long common_ = 0;
};

// Of the power of two next to the largest of three numbers; 0 where that would change nothing.
int exponent_of(double c0, double c1, double c2) {
  const double largest = std::max({std::fabs(c0), std::fabs(c1), std::fabs(c2)});
  return largest > 0 && std::isfinite(largest) ? std::ilogb(largest) : 0;
}

// Multiplies by |c0 z + c1 + c2 / z|^2, divided by a power of four, whose exponent it returns.
int multiply(std::vector<double> &powers, const CircleSweep &z, double c0, double c1, double c2) {
  const int exponent = exponent_of(c0, c1, c2);
  for (double *c : {&c0, &c1, &c2}) *c = std::ldexp(*c, -exponent);
  const CosineLine real{compensated_sum({c0, c2, c1, 0.0}), compensated_sum({-c0, -c2, c1, 0.0}),
                        c0 + c2};
  const double slant = c0 - c2;
  real.along(z, [&](std::size_t i, double re) {
    const double im = slant * z.sin[i];
    powers[i] *= re * re + im * im;
  });
  return exponent;
}

void multiply(std::vector<double> &powers, const CircleSweep &z, const RootDistance &root) {
  for (std::size_t i = 0; i < z.size(); ++i) powers[i] *= root.at(z, i);
}

constexpr std::size_t factors_between_folds = 4;

}  // namespace

std::vector<double> swept_levels(const Sections &filter, const std::vector<double> &w) {
  const CircleSweep z(w);
  PowerSweep powers(w.size());
  std::size_t factors = 0;
  for (const Section &s : filter) {
    powers.multiply_by_power_of_two(2L * multiply(powers.above(), z, s.b0, s.b1, s.b2));
    powers.multiply_by_power_of_two(-2L * multiply(powers.below(), z, 1.0, s.a1, s.a2));
    if (++factors % factors_between_folds == 0) powers.fold();
  }
  powers.fold();
  return powers.db();
}

std::vector<double> swept_levels(const Roots &filter, const std::vector<double> &w) {
  const CircleSweep z(w);
  PowerSweep powers(w.size());
  const auto multiply_all = [&](std::vector<double> &side, const std::vector<Complex> &roots,
                                long direction) {
    std::size_t factors = 0;
    for (const Complex &root : roots) {
      const RootDistance distance(root);
      multiply(side, z, distance);
      powers.multiply_by_power_of_two(direction * 2 * distance.scale());
      if (++factors % factors_between_folds == 0) powers.fold();
    }
    powers.fold();
  };
  multiply_all(powers.above(), filter.zeros, 1);
  multiply_all(powers.below(), filter.poles, -1);
  std::vector<double> levels = powers.db();
  const double gain_db = 20 * std::log10(std::fabs(filter.gain));
  for (double &level : levels) level += gain_db;
  return levels;
}

namespace {

bool is_on_circle(const Complex &root) { return std::fabs(distance_inside(root)) <= on_circle; }

/** The continuous angle of a product of factors, less than half a turn each. */
class AngleSweep {
 public:
  explicit AngleSweep(std::size_t count) : re_(count, 1.0), im_(count, 0.0), turns_(count, 0.0) {}

  /** By z - root, or for a root above the real axis by (z - root) (z - its conjugate) / z; below it
   *  by nothing. */
  void multiply(const CircleSweep &z, const Complex &root) {
    const double x = root.real(), y = root.imag(), inside = distance_inside(root);
    if (y < 0) return;
    if (y == 0) {
      const double scale = 1 / std::max(1.0, std::fabs(x));
      multiply(z, {(1 - x) * scale, (-1 - x) * scale, scale}, scale);
    } else {
      const double square = std::norm(root), scale = 1 / std::max(1.0, square);
      multiply(z,
               {((1 - x) * (1 - x) + y * y) * scale, -((1 + x) * (1 + x) + y * y) * scale,
                (1 + square) * scale},
               inside * ((2 - inside) * scale));
    }
    if (++factors_ % 8 == 0) normalise();
  }

  std::vector<double> angles() const {
    std::vector<double> angles;
    for (std::size_t i = 0; i < re_.size(); ++i)
      angles.push_back(std::atan2(im_[i], re_[i]) + 2 * std::numbers::pi * turns_[i]);
    return angles;
  }

 private:
  // All imaginary parts of a factor have one sign: it turns one way, and the product is past the
  // negative real axis where its imaginary part becomes one of the other sign.
  void multiply(const CircleSweep &z, const CosineLine &real, double slant) {
    real.along(z, [&](std::size_t i, double re) {
      const double im = slant * z.sin[i];
      const double next_re = re_[i] * re - im_[i] * im, next_im = re_[i] * im + im_[i] * re;
      const bool was_below = im_[i] < 0, is_below = next_im < 0;
      if (im > 0 && !was_below && is_below) turns_[i] += 1;
      if (im < 0 && was_below && !is_below) turns_[i] -= 1;
      re_[i] = next_re;
      im_[i] = next_im;
    });
  }

  void normalise() {
    for (std::size_t i = 0; i < re_.size(); ++i) {
      const double size = std::max(std::fabs(re_[i]), std::fabs(im_[i]));
      if (!(size > 0)) continue;
      re_[i] /= size;
      im_[i] /= size;
    }
  }

  std::vector<double> re_, im_, turns_;
  std::size_t factors_ = 0;
};

/** The roots on the circle, of which each adds half a turn where it is passed. */
struct OnCircle {
  std::vector<double> w;   /**< ascending, of those above the real axis */
  std::size_t on_axis = 0; /**< the roots 1 and -1 */
};

OnCircle zeros_on_circle(const Roots &filter) {
  OnCircle found;
  for (const Complex &zero : filter.zeros) {
    if (!is_on_circle(zero) || zero.imag() < 0) continue;
    if (zero.imag() == 0)
      ++found.on_axis;
    else
      found.w.push_back(std::arg(zero) / std::numbers::pi);
  }
  std::sort(found.w.begin(), found.w.end());
  return found;
}

// The continuous phase of all w, which are within 0 and 1, but for a constant.
std::vector<double> phases_but_for_a_constant(const Roots &filter, const std::vector<double> &w) {
  const CircleSweep z(w);
  AngleSweep zeros(w.size()), poles(w.size());
  // How often z is left to be divided by: once for a pair and once for a real root.
  double powers =
      static_cast<double>(filter.zeros.size()) - static_cast<double>(filter.poles.size());
  for (const Complex &zero : filter.zeros) {
    if (is_on_circle(zero)) continue;
    zeros.multiply(z, zero);
    if (zero.imag() >= 0) powers -= 1;
  }
  for (const Complex &pole : filter.poles) {
    poles.multiply(z, pole);
    if (pole.imag() >= 0) powers += 1;
  }
  const OnCircle on = zeros_on_circle(filter);
  powers -= static_cast<double>(on.w.size()) + static_cast<double>(on.on_axis) / 2;

  std::vector<double> phases = zeros.angles();
  const std::vector<double> below = poles.angles();
  std::size_t passed = 0;
  for (std::size_t i = 0; i < w.size(); ++i) {
    while (passed < on.w.size() && on.w[passed] < w[i]) ++passed;
    phases[i] += std::numbers::pi * (powers * w[i] + static_cast<double>(passed)) - below[i];
  }
  return phases;
}

}  // namespace

std::vector<double> swept_phases(const Roots &filter, const std::vector<double> &w) {
  if (w.empty()) return {};
  // A place between the first two, where no zero is expected, tells the constant.
  constexpr double part = 0.38;
  std::vector<double> all = w;
  const double low = w.front(), high = w.size() > 1 ? w[1] : (w.front() < 0.5 ? 1.0 : 0.0);
  const double reference = low + part * (high - low);
  const auto place =
      static_cast<std::size_t>(std::upper_bound(all.begin(), all.end(), reference) - all.begin());
  all.insert(all.begin() + static_cast<std::ptrdiff_t>(place), reference);
  std::vector<double> phases = phases_but_for_a_constant(filter, all);
  const double constant = unwrapped_phase(filter, reference) - phases[place];
  phases.erase(phases.begin() + static_cast<std::ptrdiff_t>(place));
  for (double &phase : phases) phase += constant;
  // On the real axis no product shows which way it has turned.
  for (std::size_t i = 0; i < w.size(); ++i)
    if (w[i] <= 0 || w[i] >= 1) phases[i] = unwrapped_phase(filter, w[i]);
  return phases;
}

std::vector<double> swept_delays(const Roots &filter, const std::vector<double> &w) {
  const CircleSweep z(w);
  // A root adds (1 - area / distance) / 2, and each zero that is missing one sample.
  double constant = 0.0;
  std::vector<double> delays(w.size(), 0.0);
  const auto add = [&](const Complex &root, double sign) {
    constant -= sign / 2;
    const RootDistance distance(root);
    const double factor = -sign * distance.area() / 2;
    for (std::size_t i = 0; i < delays.size(); ++i) delays[i] += factor / distance.at(z, i);
  };
  for (const Complex &zero : filter.zeros) {
    if (is_on_circle(zero))
      constant -= 0.5;
    else
      add(zero, 1.0);
  }
  for (const Complex &pole : filter.poles) add(pole, -1.0);
  for (double &delay : delays) delay += constant;
  return delays;
}

}  // namespace analysis
