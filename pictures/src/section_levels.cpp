#include "pictures/section_levels.h"

namespace pictures {

std::vector<Curve> section_level_curves(const DrawnFilter &filter, const Axis &frequencies,
                                        Detail detail) {
  DrawnFilter alone{};
  alone.samplerate = filter.samplerate;
  alone.cutoffs = filter.cutoffs;
  std::vector<Curve> curves;
  for (const analysis::Section &section : filter.sections) {
    alone.sections = {section};
    alone.roots = analysis::roots_of(alone.sections);
    curves.push_back(level_curve(alone, frequencies, detail));
  }
  return curves;
}

}  // namespace pictures
