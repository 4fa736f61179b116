#include "filtermath/zpk.h"

#include <algorithm>

namespace {

t_complex64list from_flat(const double *values, int64_t count) {
  t_complex64list roots;
  roots.reserve(static_cast<std::size_t>(std::max<int64_t>(count / 2, 0)));
  for (int64_t offset = 0; offset < count; offset += 2)
    roots.emplace_back(values[offset], values[offset + 1]);
  return roots;
}

}  // namespace

t_zpk *zpk_new() { return new t_zpk; }

t_zpk *zpk_new_init(const double *zeros, int64_t zcount, const double *poles, int64_t pcount,
                    double gain) {
  return new t_zpk{from_flat(zeros, zcount), from_flat(poles, pcount), gain};
}

void zpk_free(t_zpk *zpk) { delete zpk; }
