#include "analysis/impulse_norms.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>

#include "analysis/stability.h"

namespace analysis {
namespace {

constexpr double most_work = 0x1p25;  // samples times sections
constexpr double negligible = 1e-8;
constexpr double shortest_block = 64;

// A section in direct form II transposed, and the sums over its output.
struct Runner {
  Section section;
  double s1 = 0.0, s2 = 0.0;
  double block = 0.0, block_before = 0.0;  // sums of magnitudes
  double magnitudes = 0.0, squares = 0.0;

  double operator()(double x) {
    const double y = section.b0 * x + s1;
    s1 = section.b1 * x - section.a1 * y + s2;
    s2 = section.b2 * x - section.a2 * y;
    block += std::fabs(y);
    squares += y * y;
    return y;
  }

  // Ends a block, and says whether the response ends with it but for what is negligible: it fell by
  // half at least, so that what is left is at most what the block had, or to where rounding keeps it.
  bool ends_with_block() {
    magnitudes += block;
    const double last = std::exchange(block, 0.0), before = std::exchange(block_before, last);
    return last <= negligible * magnitudes && (last <= 0.5 * before || last <= 1e-14 * magnitudes);
  }
};

std::vector<Norms> norms(const Sections &filter) {
  constexpr double infinity = std::numeric_limits<double>::infinity();
  std::vector<Norms> result(filter.size(), {infinity, infinity});
  const Stability slowest = stability(filter);
  if (!slowest.stable) return result;
  const double length = std::max(shortest_block, std::ceil(1 / slowest.margin));
  std::vector<Runner> runners;
  for (const Section &section : filter) runners.push_back({section});
  double work = 0.0, input = 1.0;
  for (;;) {
    work += length * static_cast<double>(filter.size());
    if (!(work <= most_work)) return result;
    bool silent = true;
    for (auto left = static_cast<std::size_t>(length); left > 0; --left) {
      double x = std::exchange(input, 0.0);
      for (Runner &runner : runners) x = runner(x);
    }
    for (Runner &runner : runners) silent &= runner.ends_with_block();
    if (silent) break;
  }
  for (std::size_t i = 0; i < runners.size(); ++i)
    result[i] = {runners[i].magnitudes + runners[i].block_before, std::sqrt(runners[i].squares)};
  return result;
}

}  // namespace

std::vector<Norms> norms_from_input(const Sections &filter) { return norms(filter); }

std::vector<Norms> norms_from_rounding(const Sections &filter, std::size_t first) {
  Sections rest(filter.begin() + static_cast<std::ptrdiff_t>(first), filter.end());
  rest[0].b0 = 1.0;
  rest[0].b1 = rest[0].b2 = 0.0;
  return norms(rest);
}

}  // namespace analysis
