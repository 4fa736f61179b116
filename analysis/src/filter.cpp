#include "analysis/filter.h"

#include <algorithm>
#include <cmath>
#include <stdexcept>

namespace analysis {
namespace {

/** A polynomial as its roots and its first coefficient that is not zero, or 0. */
struct Factors {
  std::vector<Complex> roots;
  double leading;
};

// Of c0 z^2 + c1 z + c2.
Factors factors_of(double c0, double c1, double c2) {
  // One that vanishes beside the others is a zero at infinity: no square of its root is a double.
  constexpr double largest = 1e150;
  const bool counts = std::fabs(c1 / c0) < largest && std::fabs(c2 / c0) < largest;
  const bool all_finite = std::isfinite(c1) && std::isfinite(c2);
  if (c0 != 0.0 && (counts || !all_finite)) return {quadratic_roots(c1 / c0, c2 / c0), c0};
  if (c1 != 0.0) return {{Complex(-c2 / c1)}, c1};
  return {{}, c2};
}

bool drop_origin(std::vector<Complex> &roots) {
  const auto found = std::find(roots.begin(), roots.end(), Complex());
  if (found == roots.end()) return false;
  roots.erase(found);
  return true;
}

bool has_origin(const std::vector<Complex> &roots) {
  return std::find(roots.begin(), roots.end(), Complex()) != roots.end();
}

}  // namespace

bool has_two_edges(Band band) { return band == Band::bandpass || band == Band::bandstop; }

std::vector<Complex> roots_from_list(const std::vector<double> &values) {
  if (values.size() % 2 != 0)
    throw std::invalid_argument("roots are pairs of a real and an imaginary part");
  std::vector<Complex> roots;
  for (std::size_t i = 0; i < values.size(); i += 2) roots.emplace_back(values[i], values[i + 1]);
  return roots;
}

Sections sections_from_list(const std::vector<double> &values) {
  if (values.size() % 5 != 0)
    throw std::invalid_argument("sections are five values each: b0 b1 b2 a1 a2");
  Sections sections;
  for (std::size_t i = 0; i < values.size(); i += 5)
    sections.push_back({values[i], values[i + 1], values[i + 2], values[i + 3], values[i + 4]});
  return sections;
}

std::vector<Complex> quadratic_roots(double p, double q) {
  // Beyond these the squares overflow; a power of two scales exactly.
  constexpr double largest_p = 1e150, largest_q = 1e300;
  const bool finite = std::isfinite(p) && std::isfinite(q);
  if (finite && (std::fabs(p) > largest_p || std::fabs(q) > largest_q)) {
    const int exponent = std::max(p == 0.0 ? 0 : std::ilogb(p), q == 0.0 ? 0 : std::ilogb(q) / 2);
    std::vector<Complex> roots =
        quadratic_roots(std::ldexp(p, -exponent), std::ldexp(q, -2 * exponent));
    for (Complex &root : roots)
      root = {std::ldexp(root.real(), exponent), std::ldexp(root.imag(), exponent)};
    return roots;
  }
  const double square = p * p;
  const double discriminant = (square - 4 * q) + std::fma(p, p, -square);
  if (discriminant < 0) {
    const Complex upper(-p / 2, std::sqrt(-discriminant) / 2);
    return {upper, std::conj(upper)};
  }
  const double larger = -(p + std::copysign(std::sqrt(discriminant), p)) / 2;
  if (larger == 0) return {Complex(), Complex()};
  return {Complex(larger), Complex(q / larger)};
}

Roots roots_of(const Sections &sections) {
  Roots roots;
  for (const Section &section : sections) {
    auto [zeros, leading] = factors_of(section.b0, section.b1, section.b2);
    std::vector<Complex> poles = quadratic_roots(section.a1, section.a2);
    while (has_origin(zeros) && drop_origin(poles)) drop_origin(zeros);
    roots.zeros.insert(roots.zeros.end(), zeros.begin(), zeros.end());
    roots.poles.insert(roots.poles.end(), poles.begin(), poles.end());
    roots.gain *= leading;
  }
  return roots;
}

}  // namespace analysis
