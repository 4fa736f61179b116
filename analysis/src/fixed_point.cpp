#include "analysis/fixed_point.h"

#include <algorithm>
#include <cmath>
#include <stdexcept>

namespace analysis {
namespace {

__extension__ using Int128 = __int128;

int bits_of(Arithmetic arithmetic) {
  if (arithmetic == Arithmetic::fixed_32) return 32;
  if (arithmetic == Arithmetic::fixed_16) return 16;
  throw std::invalid_argument("this arithmetic is not fixed point");
}

/** The integers of a fixed-point number of so many bits. */
struct Range {
  explicit Range(int bits) : lowest(-(std::int64_t{1} << (bits - 1))), highest(-lowest - 1) {}
  std::int64_t lowest, highest;
};

double largest_coefficient(const Sections &filter) {
  double largest = 0;
  for (const auto &[b0, b1, b2, a1, a2] : filter)
    for (const double value : {b0, b1, b2, a1, a2}) {
      if (!std::isfinite(value)) throw std::invalid_argument("a coefficient is not finite");
      largest = std::max(largest, std::fabs(value));
    }
  return largest;
}

std::int32_t rounded(double value, const Range &range) {
  const auto lowest = static_cast<double>(range.lowest),
             highest = static_cast<double>(range.highest);
  return static_cast<std::int32_t>(std::clamp(std::nearbyint(value), lowest, highest));
}

}  // namespace

FixedCascade fixed_cascade(const Sections &filter, Arithmetic arithmetic) {
  FixedCascade cascade{bits_of(arithmetic), 0, {}};
  const double largest = largest_coefficient(filter);
  while (std::ldexp(1.0, cascade.postshift) < largest) {
    if (++cascade.postshift == cascade.bits)
      throw std::invalid_argument("a coefficient is too large for fixed point");
  }
  const Range range(cascade.bits);
  const int exponent = cascade.bits - 1 - cascade.postshift;
  const auto integer = [&](double value) { return rounded(std::ldexp(value, exponent), range); };
  for (const auto &[b0, b1, b2, a1, a2] : filter)
    cascade.sections.push_back({integer(b0), integer(b1), integer(b2), integer(-a1), integer(-a2)});
  return cascade;
}

Sections sections_of(const FixedCascade &cascade) {
  const auto value = [exponent = cascade.postshift + 1 - cascade.bits](std::int32_t integer) {
    return std::ldexp(static_cast<double>(integer), exponent);
  };
  Sections sections;
  for (const auto &[b0, b1, b2, minus_a1, minus_a2] : cascade.sections)
    sections.push_back({value(b0), value(b1), value(b2), -value(minus_a1), -value(minus_a2)});
  return sections;
}

FixedRun run_fixed(const FixedCascade &cascade, const std::vector<double> &signal) {
  const Range range(cascade.bits);
  const int shift = cascade.bits - 1 - cascade.postshift;
  std::vector<std::int32_t> samples;
  samples.reserve(signal.size());
  for (const double x : signal) samples.push_back(rounded(std::ldexp(x, cascade.bits - 1), range));

  FixedRun run{{}, 0};
  for (const FixedSection &section : cascade.sections) {
    const Int128 b0 = section.b0, b1 = section.b1, b2 = section.b2;
    const Int128 minus_a1 = section.minus_a1, minus_a2 = section.minus_a2;
    std::int64_t x1 = 0, x2 = 0, y1 = 0, y2 = 0;
    for (std::int32_t &sample : samples) {
      const std::int64_t x = sample;
      // Wider than the 64 bits of the accumulator, so that an overflow is seen. That one keeps the
      // low 64 bits, of which the result takes no other ones than these.
      const Int128 sum = b0 * x + b1 * x1 + b2 * x2 + minus_a1 * y1 + minus_a2 * y2;
      auto y = static_cast<std::int64_t>(sum >> shift);
      if (y < range.lowest || y > range.highest) {
        ++run.overflows;
        y = cascade.bits == 32 ? static_cast<std::int32_t>(static_cast<std::uint32_t>(y))
                               : std::clamp(y, range.lowest, range.highest);
      }
      x2 = x1;
      x1 = x;
      y2 = y1;
      y1 = y;
      sample = static_cast<std::int32_t>(y);
    }
  }
  for (const std::int32_t y : samples)
    run.output.push_back(std::ldexp(static_cast<double>(y), 1 - cascade.bits));
  return run;
}

}  // namespace analysis
