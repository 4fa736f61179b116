#include "floats.h"

#include <algorithm>
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

[[noreturn]] void refuse_coefficient(const std::string &target, std::size_t section, double value) {
  throw designer::Refusal(fmt::format(
      "--for {} holds floats, which reach from 1.2e-38 to 3.4e38, but section {} has the "
      "coefficient {:.3g}; a lower order may help, and so may leaving out --as-published",
      target, section, value));
}

void check_range(const analysis::Sections &sections, const std::string &target) {
  for (std::size_t i = 0; i < sections.size(); ++i)
    for (const double value : {sections[i].b0, sections[i].b1, sections[i].b2})
      if (!fits_float(value)) refuse_coefficient(target, i + 1, value);
}

// The three outputs of a section are of similar size: beside a part that fits, a smaller one may
// vanish.
void check_range(const std::vector<analysis::StateVariable> &forms, const std::string &target) {
  for (std::size_t i = 0; i < forms.size(); ++i) {
    const analysis::StateVariable &f = forms[i];
    const double output = std::max({std::abs(f.high), std::abs(f.band), std::abs(f.low)});
    for (const double value : {output, f.g, f.r, f.h})
      if (!fits_float(value)) refuse_coefficient(target, i + 1, value);
  }
}

}  // namespace

RoundedFilter in_floats(const analysis::Realization &filter, const std::string &target,
                        double samplerate) {
  RoundedFilter found;
  if (filter.structure == analysis::Structure::state_variable) {
    check_range(filter.forms, target);
    for (const analysis::StateVariable &form : filter.forms) {
      found.forms.push_back(analysis::rounded_to_float(form));
      found.sections.push_back(analysis::section_of(found.forms.back()));
    }
  } else {
    check_range(filter.sections, target);
    found.sections = analysis::rounded_to_float(filter.sections);
  }
  const analysis::RoundingEffect effect = analysis::float_rounding_effect(filter, floor_db);
  found.becomes_unstable = analysis::stability(filter.sections).stable && !effect.stability.stable;
  if (!(effect.response.db <= noticeable_db))
    found.remark =
        fmt::format("rounding to floats changes the level by up to {:.2g} dB, most at {:.6g} Hz",
                    effect.response.db, effect.response.w * samplerate / 2);
  return found;
}

std::string instability_refusal(const analysis::Sections &sections, const std::string &target,
                                const std::string &instead) {
  return fmt::format(
      "--for {} holds floats, in which this filter is unstable: its outermost pole is {:.2g} "
      "inside the unit circle; {}",
      target, analysis::stability(sections).margin, instead);
}

}  // namespace layouts
