#include "noise.h"

#include <algorithm>
#include <cmath>

#include <fmt/format.h>

#include "analysis/noise.h"
#include "analysis/stability.h"
#include "designer/refusal.h"

namespace layouts {
namespace {

// In dB of the output's peak: what is worse is no filter any more.
constexpr double most_noise_db = -60.0;

std::string noise_text(double db) {
  if (std::isinf(db) && db > 0) return "an overflow";
  if (db > -0.5) return "as much noise as signal";
  return fmt::format("noise {:.0f} dB below the output's peak", -db);
}

}  // namespace

std::string expected_noise(const analysis::Sections &sections, const Target &target, Noisy noisy) {
  if (!analysis::stability(sections).stable) return "";
  const bool floats = target.arithmetic == Arithmetic::floats;
  const analysis::Noise noise =
      analysis::noise(sections, analysis::Structure::direct_2_transposed,
                      floats ? analysis::Arithmetic::floats : analysis::Arithmetic::doubles);
  const double db = noise.overflows ? HUGE_VAL : std::max(noise.white_db, noise.sine_db);
  if (floats && noisy == Noisy::refused && !(db <= most_noise_db))
    throw designer::Refusal(fmt::format(
        "--for {} computes in floats, where this filter makes {}; take a target with doubles, such "
        "as c, or several filters of a lower order in a row (--anyway writes it)",
        target.name, noise_text(db)));
  return fmt::format("Rounding: {} in {}, direct form II transposed.", noise_text(db),
                     floats ? "floats" : "doubles");
}

}  // namespace layouts
