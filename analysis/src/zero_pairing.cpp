#include "zero_pairing.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <limits>
#include <numeric>

namespace analysis {
namespace {

/** Two conjugate zeros, and their numerator as it was given. */
struct ComplexZeros {
  Complex upper;
  double b0, b1, b2;
};

/** The zeros that may move. */
struct Zeros {
  std::vector<ComplexZeros> complex;
  std::vector<double> real;    /**< two for each numerator that they come from */
  std::vector<double> leading; /**< what each of these numerators began with */
};

bool may_move(const Section &section) {
  return section.b0 != 0.0 && section.b2 != 0.0 && section.a2 != 0.0 &&
         std::isfinite(section.b1 / section.b0) && std::isfinite(section.b2 / section.b0);
}

Zeros zeros_of(const Sections &filter) {
  Zeros zeros;
  for (const Section &section : filter) {
    if (!may_move(section)) continue;
    const auto roots = quadratic_roots(section.b1 / section.b0, section.b2 / section.b0);
    if (roots.front().imag() != 0.0) {
      zeros.complex.push_back({roots.front(), section.b0, section.b1, section.b2});
    } else {
      for (const Complex &root : roots) zeros.real.push_back(root.real());
      zeros.leading.push_back(section.b0);
    }
  }
  return zeros;
}

struct Nearest {
  std::size_t place = 0;
  double distance = std::numeric_limits<double>::infinity();
};

Nearest nearest_real(const std::vector<double> &zeros, const Complex &pole) {
  Nearest found;
  for (std::size_t i = 0; i < zeros.size(); ++i)
    if (const double distance = std::abs(pole - zeros[i]); distance < found.distance)
      found = {i, distance};
  return found;
}

Nearest nearest_complex(const std::vector<ComplexZeros> &zeros, const Complex &pole) {
  Nearest found;
  for (std::size_t i = 0; i < zeros.size(); ++i)
    if (const double distance = std::abs(pole - zeros[i].upper); distance < found.distance)
      found = {i, distance};
  return found;
}

template <class T>
T taken(std::vector<T> &list, std::size_t place) {
  const T value = list[place];
  list.erase(list.begin() + static_cast<std::ptrdiff_t>(place));
  return value;
}

// Gives the section the zeros nearest to its pole, which are no longer free then.
void take_zeros(Section &section, const Complex &pole, Zeros &free) {
  const Nearest complex = nearest_complex(free.complex, pole);
  const Nearest real = nearest_real(free.real, pole);
  if (complex.distance <= real.distance) {
    const ComplexZeros zeros = taken(free.complex, complex.place);
    section.b0 = zeros.b0, section.b1 = zeros.b1, section.b2 = zeros.b2;
  } else {
    const double first = taken(free.real, real.place);
    const double second = taken(free.real, nearest_real(free.real, pole).place);
    const double leading = taken(free.leading, 0);
    section.b0 = leading;
    section.b1 = -leading * (first + second);
    section.b2 = leading * (first * second);
  }
}

}  // namespace

Sections with_nearest_zeros(const Sections &filter) {
  Zeros free = zeros_of(filter);
  std::vector<Complex> poles;  // of each section the one farther out
  for (const Section &section : filter)
    poles.push_back(quadratic_roots(section.a1, section.a2).front());
  std::vector<std::size_t> outermost_first(filter.size());
  std::iota(outermost_first.begin(), outermost_first.end(), std::size_t{0});
  std::stable_sort(
      outermost_first.begin(), outermost_first.end(),
      [&](std::size_t a, std::size_t b) { return std::abs(poles[a]) > std::abs(poles[b]); });

  Sections paired = filter;
  for (const std::size_t i : outermost_first)
    if (may_move(filter[i])) take_zeros(paired[i], poles[i], free);
  return paired;
}

}  // namespace analysis
