#include "noise.h"

#include <cmath>

#include <fmt/format.h>

#include "analysis/noise.h"
#include "analysis/stability.h"
#include "designer/limits.h"
#include "designer/refusal.h"

namespace layouts {
namespace {

std::string noise_text(double db) {
  if (std::isinf(db) && db > 0) return "an overflow";
  if (db > -0.5) return "as much noise as signal";
  return fmt::format("noise {:.0f} dB below the output's peak", -db);
}

}  // namespace

std::string expected_noise(const analysis::Sections &sections, const Target &target, Noisy noisy) {
  if (!analysis::stability(sections).stable) return "";
  const bool floats = target.arithmetic == Arithmetic::floats;
  const double db =
      analysis::noise(sections, analysis::Structure::direct_2_transposed,
                      floats ? analysis::Arithmetic::floats : analysis::Arithmetic::doubles)
          .worst_db();
  if (floats && noisy == Noisy::refused && !(db <= designer::most_float_noise_db))
    throw designer::Refusal(fmt::format(
        "--for {} computes in floats, where this filter makes {}; take a target with doubles, such "
        "as c, or several filters of a lower order in a row (--anyway writes it)",
        target.name, noise_text(db)));
  return fmt::format("Rounding: {} in {}, direct form II transposed.", noise_text(db),
                     floats ? "floats" : "doubles");
}

}  // namespace layouts
