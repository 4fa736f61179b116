#include "floats.h"

#include <cmath>
#include <limits>

#include <fmt/format.h>

#include "analysis/rounding.h"
#include "analysis/stability.h"
#include "designer/refusal.h"

namespace layouts {
namespace {

// Level differences below this are not worth a word; differences further down than this
// are not heard.
constexpr double noticeable_db = 0.01;
constexpr double floor_db = 120.0;

bool fits_float(double value) {
  const double size = std::abs(value);
  return size == 0.0 || (size >= static_cast<double>(std::numeric_limits<float>::min()) &&
                         size <= static_cast<double>(std::numeric_limits<float>::max()));
}

}  // namespace

RoundedFilter in_floats(const analysis::Sections &sections, const std::string &target,
                        double samplerate) {
  for (std::size_t i = 0; i < sections.size(); ++i)
    for (const double value : {sections[i].b0, sections[i].b1, sections[i].b2})
      if (!fits_float(value))
        throw designer::Refusal(fmt::format(
            "--for {} holds floats, which reach from 1.2e-38 to 3.4e38, but section {} has the "
            "coefficient {:.3g}; a lower order may help, and so may leaving out --as-published",
            target, i + 1, value));
  const analysis::RoundingEffect effect = analysis::float_rounding_effect(sections, floor_db);
  const analysis::Stability before = analysis::stability(sections);
  if (before.stable && !effect.stability.stable)
    throw designer::Refusal(fmt::format(
        "--for {} holds floats, in which this filter is unstable: its outermost pole is {:.2g} "
        "inside the unit circle; a target with doubles holds it",
        target, before.margin));
  RoundedFilter rounded{analysis::rounded_to_float(sections), std::nullopt};
  if (!(effect.response.db <= noticeable_db))
    rounded.remark =
        fmt::format("rounding to floats changes the level by up to {:.2g} dB, most at {:.6g} Hz",
                    effect.response.db, effect.response.w * samplerate / 2);
  return rounded;
}

}  // namespace layouts
