#include "noise.h"

#include <cmath>

#include <fmt/format.h>

#include "designer/limits.h"
#include "structure.h"

namespace layouts {
namespace {

std::string noise_text(double db) {
  if (std::isinf(db) && db > 0) return "an overflow";
  if (std::isinf(db)) return "no noise";
  if (db > -0.5) return "as much noise as signal";
  return fmt::format("noise {:.0f} dB below the output's peak", -db);
}

}  // namespace

std::string expected_noise(const analysis::Realization &filter, const Target &target) {
  return fmt::format("Rounding: {} in {}, {}.", noise_text(filter.noise_db),
                     target.arithmetic == Arithmetic::floats ? "floats" : "doubles",
                     name_of(filter.structure));
}

bool is_too_noisy(const analysis::Realization &filter, const Target &target) {
  return target.arithmetic == Arithmetic::floats &&
         !(filter.noise_db <= designer::most_float_noise_db);
}

std::string noise_refusal(const analysis::Realization &filter, const Target &target,
                          const std::string &instead) {
  return fmt::format(
      "--for {} computes in floats, where this filter makes {} in {}; {} (--anyway writes it)",
      target.name, noise_text(filter.noise_db), name_of(filter.structure), instead);
}

}  // namespace layouts
