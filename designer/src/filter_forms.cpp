#include "designer/filter_forms.h"

#include "designer/cutoffs.h"

namespace designer {

std::string FilterForms::hz_text(double w) const { return designer::hz_text(w, samplerate); }

std::optional<analysis::Roots> roots_of(const FilterForms &filter) {
  if (filter.roots) return filter.roots;
  if (filter.sections.empty()) return std::nullopt;
  return analysis::roots_of(filter.sections);
}

}  // namespace designer
