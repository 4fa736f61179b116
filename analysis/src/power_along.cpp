#include "power_along.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace analysis {
namespace {

constexpr int block_exponent = 256;
constexpr double block_size = 0x1p256;
constexpr double upper = 0x1p128;
constexpr double lower = 0x1p-128;

}  // namespace

double Scaled::log2() const { return std::log2(value) + static_cast<double>(exponent); }

void PowerAlong::multiply(const std::vector<double> &factors, int exponent) {
  common_ += exponent;
  for (std::size_t i = 0; i < mantissa_.size(); ++i) {
    double &value = mantissa_[i];
    value *= factors[i];
    while (value > upper && value <= std::numeric_limits<double>::max()) {
      value /= block_size;
      ++block_[i];
    }
    while (value < lower && value > 0) {
      value *= block_size;
      --block_[i];
    }
  }
}

int PowerAlong::highest_block() const {
  int highest = std::numeric_limits<int>::min();
  for (std::size_t i = 0; i < mantissa_.size(); ++i)
    if (mantissa_[i] > 0) highest = std::max(highest, block_[i]);
  return highest == std::numeric_limits<int>::min() ? 0 : highest;
}

long PowerAlong::exponent() const { return common_ + long{highest_block()} * block_exponent; }

std::vector<double> PowerAlong::relative() const {
  std::vector<double> values(mantissa_.size(), 0.0);
  const int highest = highest_block();
  for (std::size_t i = 0; i < values.size(); ++i) {
    const int below = highest - block_[i];
    if (below <= 0) values[i] = mantissa_[i];
    if (below > 0 && below <= 4) values[i] = std::ldexp(mantissa_[i], -below * block_exponent);
  }
  return values;
}

Scaled PowerAlong::operator[](std::size_t place) const {
  return {mantissa_[place], common_ + long{block_[place]} * block_exponent};
}

}  // namespace analysis
