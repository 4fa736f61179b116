#include "analysis/impulse.h"

#include "analysis/run.h"

namespace analysis {

std::vector<double> filtered(const Sections &filter, const std::vector<double> &input) {
  return run_direct_2_transposed(filter, input);
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
