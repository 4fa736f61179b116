#include "analysis/fixed_point.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <limits>
#include <stdexcept>

namespace analysis {
namespace {

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

/** Sums products of 32-bit integers: wider than the 64 bits of the accumulator, so that an overflow is
 *  seen. Both halves are added for themselves, as not every machine has integers of 128 bits. */
class WideSum {
 public:
  void add(std::int64_t a, std::int64_t b) {
    const std::int64_t product = a * b;
    high_ += product >> half;
    low_ += static_cast<std::uint32_t>(product);
  }

  /** @param shift  0 to 32
   *  @return the low 64 bits of floor(sum / 2^shift), which the accumulator has, too */
  std::int64_t shifted(int shift) const {
    const auto high = static_cast<std::uint64_t>(high_) << static_cast<unsigned>(half - shift);
    return static_cast<std::int64_t>(high + static_cast<std::uint64_t>(low_ >> shift));
  }

  /** @return true if shifted() is all of it, whatever the shift. */
  bool fits() const {
    const std::int64_t high = high_ + (low_ >> half);
    return high >= std::numeric_limits<std::int32_t>::min() &&
           high <= std::numeric_limits<std::int32_t>::max();
  }

 private:
  static constexpr int half = 32;
  std::int64_t high_ = 0, low_ = 0;
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
    std::int64_t x1 = 0, x2 = 0, y1 = 0, y2 = 0;
    for (std::int32_t &sample : samples) {
      const std::int64_t x = sample;
      WideSum sum;
      sum.add(section.b0, x);
      sum.add(section.b1, x1);
      sum.add(section.b2, x2);
      sum.add(section.minus_a1, y1);
      sum.add(section.minus_a2, y2);
      std::int64_t y = sum.shifted(shift);
      if (!sum.fits() || y < range.lowest || y > range.highest) {
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
