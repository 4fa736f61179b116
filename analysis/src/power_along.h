/** A squared magnitude along the frequencies, in a range that no number of sections leaves. */
#ifndef ANALYSIS_POWER_ALONG_H
#define ANALYSIS_POWER_ALONG_H

#include <cstddef>
#include <vector>

namespace analysis {

/** A number of any size: value * 2^exponent. */
struct Scaled {
  double value;
  long exponent;

  double log2() const;
};

/** One number for each frequency, as a mantissa and a power of 2^256. */
class PowerAlong {
 public:
  explicit PowerAlong(std::size_t count) : mantissa_(count, 1.0), block_(count, 0) {}

  std::size_t size() const { return mantissa_.size(); }

  /** Multiplies each by a factor of 0 or between 2^-400 and 2^400, and all by 2^exponent. */
  void multiply(const std::vector<double> &factors, int exponent);

  /** All relative to 2^`exponent()`; what is too small for a double becomes 0. */
  std::vector<double> relative() const;
  long exponent() const;

  /** The number at a place. */
  Scaled operator[](std::size_t place) const;

 private:
  int highest_block() const;

  std::vector<double> mantissa_;
  std::vector<int> block_;
  long common_ = 0;
};

}  // namespace analysis

#endif
