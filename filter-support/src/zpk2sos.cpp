#include "filtermath/zpk2sos.h"

#include <algorithm>
#include <array>
#include <cmath>

#include "expansion.h"
#include "filtermath/known_symbol.h"
#include "owners.h"
#include "roots.h"

namespace {

using Complex = std::complex<double>;
using Pairs = std::vector<t_complex64pair>;
using Numerator = std::array<double, 3>;

// Where zeros are missing, they are taken to lie here.
constexpr t_complex64pair zeros_at_nyquist{-1.0, -1.0, 0.0};

// What the family and the response decide.
struct Grouping {
  bool all_pole;          // the first-order numerator is fixed by the response
  bool fixed_numerators;  // and so are the others
  bool adjacent_zeros;    // conjugate zeros are neighbours once sorted
  bool ends_meet;         // of an odd number of pairs, the ends of the sorted
                          // zeros, -1 and 1, belong together
  double first_order;     // second coefficient of the fixed first-order numerator
  Numerator second_order;

  Grouping(t_symbol *topology, t_symbol *response, bool odd_pairs) {
    const bool highpass = response == filtermath::required_symbol<"highpass">();
    const bool bandpass = response == filtermath::required_symbol<"bandpass">();
    all_pole = topology == filtermath::required_symbol<"butterworth">() ||
               topology == filtermath::required_symbol<"chebyshev-1">();
    fixed_numerators = all_pole && response != filtermath::required_symbol<"bandstop">();
    adjacent_zeros = topology == filtermath::required_symbol<"chebyshev-2">();
    ends_meet = adjacent_zeros && bandpass && odd_pairs;
    first_order = highpass ? -1.0 : 1.0;
    second_order = {1.0, highpass ? -2.0 : bandpass ? 0.0 : 2.0, bandpass ? -1.0 : 1.0};
  }
};

struct Split {
  t_complex64list complex;
  t_complex64list real;
};

Split split(const t_complex64list &roots) {
  Split result;
  result.complex.reserve(roots.size());
  for (const Complex &root : roots)
    (filtermath::is_real(root) ? result.real : result.complex).push_back(root);
  return result;
}

// Moves real roots, two at a time from the back, behind the complex ones; of an
// odd number the first stays.
void move_real_pairs(Split &roots) {
  while (roots.real.size() >= 2) {
    roots.complex.insert(roots.complex.end(), roots.real.end() - 2, roots.real.end());
    roots.real.resize(roots.real.size() - 2);
  }
}

// Conjugate pairs, then pairs of real poles, sorted by the distance of the first
// of each from the unit circle. Of an odd number of poles a real one is left. A
// complex pole without its conjugate shares a section with a real one, or is
// itself the one left.
Pairs pair_poles(Split &poles) {
  filtermath::sort_roots(poles.complex);
  filtermath::join_conjugates(poles.complex);
  move_real_pairs(poles);
  if (poles.complex.size() % 2 == 1) {
    t_complex64list &longer = poles.real.empty() ? poles.complex : poles.real;
    t_complex64list &shorter = poles.real.empty() ? poles.real : poles.complex;
    shorter.push_back(longer.back());
    longer.pop_back();
  }
  Pairs pairs;
  pairs.reserve(poles.complex.size() / 2);
  for (std::size_t i = 0; i < poles.complex.size(); i += 2) {
    const Complex &first = poles.complex[i];
    const double radius = std::sqrt(first.real() * first.real() + first.imag() * first.imag());
    pairs.push_back({first, poles.complex[i + 1], std::abs(1.0 - radius)});
  }
  filtermath::sort_pairs(pairs);
  return pairs;
}

Pairs pair_zeros(const t_complex64list &all_zeros, const Grouping &grouping) {
  Split zeros = split(all_zeros);
  move_real_pairs(zeros);
  filtermath::sort_roots(zeros.complex);
  t_complex64list &sorted = zeros.complex;
  if (grouping.adjacent_zeros) filtermath::join_conjugates(sorted);
  if (grouping.ends_meet && !sorted.empty())
    std::rotate(sorted.begin(), sorted.begin() + 1, sorted.end());
  const std::size_t half = sorted.size() / 2;
  Pairs pairs;
  pairs.reserve(half + 1);
  for (std::size_t k = 0; k < half; ++k) {
    if (grouping.adjacent_zeros)
      pairs.push_back({sorted[2 * k], sorted[2 * k + 1], 0.0});
    else
      pairs.push_back({sorted[k], sorted[k + half], 0.0});
  }
  if (!zeros.real.empty()) pairs.push_back({zeros.real.front(), 0.0, 0.0});
  return pairs;
}

// Takes the pair nearest to a pole out of the list.
t_complex64pair take_nearest(Pairs &zero_pairs, const Complex &pole) {
  if (zero_pairs.empty()) return zeros_at_nyquist;
  for (t_complex64pair &pair : zero_pairs) pair.key = std::abs(pole - pair.first);
  filtermath::sort_pairs(zero_pairs);
  const t_complex64pair nearest = zero_pairs.front();
  zero_pairs.erase(zero_pairs.begin());
  return nearest;
}

Numerator with_zeros(const t_complex64pair &zeros) {
  const auto [b1, b2] = filtermath::quadratic(zeros.first, zeros.second);
  return {1.0, b1, b2};
}

}  // namespace

void filtermath_zpk2sos(const t_zpk *zpk, t_symbol *topology, t_symbol *response, double **sos,
                        int64_t *sos_count) {
  const std::size_t pole_count = zpk->poles.size();
  const Grouping grouping(topology, response, (pole_count / 2) % 2 == 1);
  Split poles = split(zpk->poles);
  const Pairs pole_pairs = pair_poles(poles);
  Pairs zero_pairs = pair_zeros(zpk->zeros, grouping);

  const auto count = 5 * static_cast<int64_t>(pole_count / 2 + pole_count % 2);
  filtermath::Block block = filtermath::new_block(count);
  double *section = block.get();
  double gain = zpk->gain;
  for (const t_complex64pair &pair : pole_pairs) {
    const Numerator numerator = grouping.fixed_numerators
                                    ? grouping.second_order
                                    : with_zeros(take_nearest(zero_pairs, pair.first));
    for (std::size_t i = 0; i < 3; ++i) section[i] = numerator[i] * gain;
    const auto [a1, a2] = filtermath::quadratic(pair.first, pair.second);
    section[3] = a1;
    section[4] = a2;
    section += 5;
    gain = 1.0;
  }

  if (pole_count % 2 == 1) {
    const Complex zero = (zero_pairs.empty() ? zeros_at_nyquist : zero_pairs.front()).first;
    section[0] = 1.0;
    section[1] = grouping.all_pole ? grouping.first_order : -zero.real();
    section[2] = 0.0;
    section[3] = -poles.real.front().real();
    section[4] = 0.0;
  }
  *sos = block.release();
  *sos_count = count;
}
