#include "analysis/impulse.h"

namespace analysis {

std::vector<double> filtered(const Sections &filter, const std::vector<double> &input) {
  std::vector<double> signal = input;
  for (const auto &[b0, b1, b2, a1, a2] : filter) {
    double s1 = 0.0, s2 = 0.0;
    for (double &sample : signal) {
      const double x = sample;
      const double y = b0 * x + s1;
      s1 = b1 * x - a1 * y + s2;
      s2 = b2 * x - a2 * y;
      sample = y;
    }
  }
  return signal;
}

std::vector<double> impulse_response(const Sections &filter, std::size_t count) {
  std::vector<double> input(count, 0.0);
  if (count > 0) input.front() = 1.0;
  return filtered(filter, input);
}

std::vector<double> step_response(const Sections &filter, std::size_t count) {
  return filtered(filter, std::vector<double>(count, 1.0));
}

}  // namespace analysis
