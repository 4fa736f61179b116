#include "roots.h"

#include <algorithm>
#include <cmath>

namespace filtermath {
namespace {

// The standard library's asks for memory, which takes longer than to sort a few.
template <typename Iterator, typename Before>
void sort_stably(Iterator begin, Iterator end, Before before) {
  constexpr std::ptrdiff_t few = 16;
  if (end - begin > few) return std::stable_sort(begin, end, before);
  for (auto next = begin; next != end; ++next) {
    const auto value = *next;
    auto place = next;
    for (; place != begin && before(value, *(place - 1)); --place) *place = *(place - 1);
    *place = value;
  }
}

}  // namespace

// NaNs have no order, and a sort with an inconsistent ordering may run out of its
// range; so they are put aside first. A stable sort makes the result the same with
// every standard library.

bool is_real(const std::complex<double> &root) { return !(root.imag() < 0.0 || root.imag() > 0.0); }

void sort_roots(t_complex64list &roots) {
  const auto ordered = [](const std::complex<double> &root) {
    return !std::isnan(root.real()) && !std::isnan(root.imag());
  };
  const auto end = std::stable_partition(roots.begin(), roots.end(), ordered);
  sort_stably(roots.begin(), end, complex64_cmp);
}

// A run of equal real parts is sorted by descending imaginary part, so that
// conjugates are as far from its two ends.
void join_conjugates(t_complex64list &sorted) {
  for (auto begin = sorted.begin(); begin != sorted.end();) {
    const double real = begin->real();
    const auto end =
        std::find_if(begin + 1, sorted.end(),
                     [real](const std::complex<double> &root) { return root.real() != real; });
    if (end - begin > 2) {
      const t_complex64list run(begin, end);
      for (std::size_t i = 0; i < run.size(); ++i)
        begin[static_cast<std::ptrdiff_t>(i)] =
            i % 2 == 0 ? run[i / 2] : run[run.size() - 1 - i / 2];
    }
    begin = end;
  }
}

t_complex64list in_expanding_order(t_complex64list roots) {
  // Where each pair, or real root, begins.
  std::vector<std::size_t> begins;
  begins.reserve(roots.size() + 1);
  for (std::size_t i = 0; i < roots.size(); i += is_real(roots[i]) ? 1 : 2) begins.push_back(i);
  begins.push_back(roots.size());
  t_complex64list ordered;
  ordered.reserve(roots.size());
  const std::size_t count = begins.size() - 1;
  for (std::size_t i = 0; i < count; ++i) {
    const std::size_t k = i % 2 == 0 ? i / 2 : count - 1 - i / 2;
    ordered.insert(ordered.end(), roots.begin() + static_cast<std::ptrdiff_t>(begins[k]),
                   roots.begin() + static_cast<std::ptrdiff_t>(begins[k + 1]));
  }
  return ordered;
}

void sort_pairs(std::vector<t_complex64pair> &pairs) {
  const auto ordered = [](const t_complex64pair &pair) { return !std::isnan(pair.key); };
  const auto end = std::stable_partition(pairs.begin(), pairs.end(), ordered);
  sort_stably(pairs.begin(), end, complex64pair_cmp);
}

}  // namespace filtermath
