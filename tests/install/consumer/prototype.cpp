// Makes the analog prototype of a Chebyshev filter of type II and compares its zeros with the
// closed form, +-j / cos((2k - 1) pi / 2n), reading the record's C++ lists.

#include <filtermath.h>

#include <cmath>
#include <cstdio>
#include <memory>

int main() {
  constexpr int order = 4;
  constexpr double pi = 3.141592653589793;
  t_zpk *made = nullptr;
  filtermath_cheby2ap(order, &made, 60.0);
  const std::unique_ptr<t_zpk, decltype(&zpk_free)> prototype(made, zpk_free);

  int faults = prototype->zeros.size() != order || prototype->poles.size() != order;
  for (int k = 1; k <= order / 2 && faults == 0; ++k) {
    const std::complex<double> expected(0.0, 1.0 / std::cos((2 * k - 1) * pi / (2 * order)));
    for (const std::complex<double> &zero :
         {prototype->zeros[2 * k - 2], std::conj(prototype->zeros[2 * k - 1])}) {
      std::printf("%.17g %+.17gj\n", zero.real(), zero.imag());
      if (!(std::abs(zero - expected) < 1e-14)) ++faults;
    }
  }
  return faults;
}
