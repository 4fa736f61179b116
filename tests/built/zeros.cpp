// Zeros of models whose states are all coupled, as a program sees them that others compile and
// link: their sum must be the trace of A - B C / D, whose eigenvalues they are. Prints them for
// a comparison with the same program built otherwise.

#include <cmath>
#include <cstdint>
#include <cstdio>

#include "filtermath.h"

int main() {
  std::uint32_t seed = 1;
  const auto next = [&] {
    seed = seed * 1664525U + 1013904223U;
    return (seed >> 8U) / 16777216.0 - 0.5;
  };
  int wrong = 0;
  for (int n = 1; n <= 12; ++n) {
    _statespace *model = statespace_new();
    matrix64_resize(model->a, n, n);
    matrix64_resize(model->b, 1, n);
    matrix64_resize(model->c, n, 1);
    matrix64_resize(model->d, 1, 1);
    for (int i = 0; i < n * n; ++i) model->a->data[i] = next();
    model->d->data[0] = 1.0;
    double trace = 0.0;
    for (int i = 0; i < n; ++i) {
      model->b->data[i] = next() + 0.75;
      model->c->data[i] = next();
      trace += model->a->data[i * n + i] - model->b->data[i] * model->c->data[i];
    }
    t_zpk *zpk = zpk_new();
    filtermath_ss_tzero(model, zpk, false);
    double sum = 0.0;
    for (const auto &zero : zpk->zeros) {
      sum += zero.real();
      std::printf("%a %a\n", zero.real(), zero.imag());
    }
    if (static_cast<int>(zpk->zeros.size()) != n || !(std::abs(sum - trace) < 1e-9)) {
      std::fprintf(stderr, "%d states: the zeros' sum is %.17g, not %.17g\n", n, sum, trace);
      ++wrong;
    }
    zpk_free(zpk);
    statespace_free(model);
  }
  return wrong;
}
