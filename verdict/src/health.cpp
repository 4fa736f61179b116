#include "health.h"

#include <algorithm>
#include <cmath>

namespace verdict {
namespace {

bool are_finite(const std::vector<analysis::Complex> &roots) {
  return std::all_of(roots.begin(), roots.end(), [](const analysis::Complex &root) {
    return std::isfinite(root.real()) && std::isfinite(root.imag());
  });
}

bool are_finite(const analysis::Sections &sections) {
  return std::all_of(sections.begin(), sections.end(), [](const analysis::Section &section) {
    const auto &[b0, b1, b2, a1, a2] = section;
    return std::isfinite(b0) && std::isfinite(b1) && std::isfinite(b2) && std::isfinite(a1) &&
           std::isfinite(a2);
  });
}

}  // namespace

bool is_finite(const Forms &forms) {
  return are_finite(forms.roots.zeros) && are_finite(forms.roots.poles) &&
         std::isfinite(forms.roots.gain) && are_finite(forms.sections);
}

analysis::Stability worst_stability(const Forms &forms) {
  const analysis::Stability of_roots = analysis::stability(forms.roots);
  const analysis::Stability of_sections = analysis::stability(forms.sections);
  return of_roots.margin < of_sections.margin ? of_roots : of_sections;
}

double smallest_gain(const Forms &forms) {
  return std::min(std::fabs(forms.roots.gain), std::fabs(analysis::roots_of(forms.sections).gain));
}

bool has_levels(const FilterUnderTest &filter) {
  return is_finite(filter.forms) && worst_stability(filter.forms).stable &&
         smallest_gain(filter.forms) > 0 && !filter.published.has_no_band();
}

}  // namespace verdict
