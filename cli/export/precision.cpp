#include "export/precision.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include <fmt/format.h>

#include "analysis/cascade_peaks.h"
#include "analysis/rounding.h"
#include "analysis/stability.h"

namespace cli {
namespace {

using analysis::Section;

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

void check_sections(const analysis::Sections &sections) {
  if (sections.empty()) throw Refusal("these settings give no sections, and there is no filter");
  for (std::size_t i = 0; i < sections.size(); ++i) {
    const Section &s = sections[i];
    for (const double value : {s.b0, s.b1, s.b2, s.a1, s.a2})
      if (!std::isfinite(value))
        throw Refusal(fmt::format(
            "section {} of this filter has a coefficient that is not finite; "
            "a lower order or a cutoff further from 0 and from the Nyquist frequency may help",
            i + 1));
    const double largest = std::max({std::abs(s.b0), std::abs(s.b1), std::abs(s.b2)});
    if (largest < std::numeric_limits<double>::min())
      throw Refusal(fmt::format(
          "the gain of this filter is smaller than a double with all its digits can be: the "
          "largest numerator coefficient of section {} is {:.3g}; a lower order or another cutoff "
          "may help",
          i + 1, largest));
  }
}

analysis::Sections in_floats(const analysis::Sections &sections, const std::string &target,
                             double samplerate, Words &remarks) {
  for (std::size_t i = 0; i < sections.size(); ++i)
    for (const double value : {sections[i].b0, sections[i].b1, sections[i].b2})
      if (!fits_float(value))
        throw Refusal(fmt::format(
            "--for {} holds floats, which reach from 1.2e-38 to 3.4e38, and section {} has the "
            "coefficient {:.3g}; --spread-gain may help",
            target, i + 1, value));
  const analysis::RoundingEffect effect = analysis::float_rounding_effect(sections, floor_db);
  const analysis::Stability before = analysis::stability(sections);
  if (before.stable && !effect.stability.stable)
    throw Refusal(fmt::format(
        "--for {} holds floats, in which this filter is unstable: its outermost pole is {:.2g} "
        "inside the unit circle; a target with doubles holds it",
        target, before.margin));
  if (!(effect.response.db <= noticeable_db))
    remarks.push_back(
        fmt::format("rounding to floats changes the level by up to {:.2g} dB, most at {:.6g} Hz",
                    effect.response.db, effect.response.w * samplerate / 2));
  return analysis::rounded_to_float(sections);
}

void check_cascade(const analysis::Sections &sections, bool floats, Words &remarks) {
  if (!analysis::stability(sections).stable) remarks.emplace_back("this filter is not stable");
  const double limit_db = floats ? 400.0 : 4000.0;
  const std::vector<analysis::Peak> peaks = analysis::running_peaks(sections);
  const auto furthest = std::max_element(peaks.begin(), peaks.end(),
                                         [](const analysis::Peak &a, const analysis::Peak &b) {
                                           return std::abs(a.db) < std::abs(b.db);
                                         });
  if (std::abs(furthest->db) > limit_db)
    remarks.push_back(fmt::format(
        "section {} hands on a signal that peaks at {:.0f} dB, where {} have few digits left; "
        "--spread-gain distributes the gain",
        furthest - peaks.begin() + 1, furthest->db, floats ? "floats" : "doubles"));
}

}  // namespace cli
