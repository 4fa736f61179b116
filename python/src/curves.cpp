// Curves to be drawn.

#include "pictures/curves.h"

#include "filter.h"
#include "pictures/drawn_filter.h"
#include "pictures/ranges.h"

namespace python {

py::tuple level_curve_of(const Filter &filter) {
  const pictures::DrawnFilter drawn =
      pictures::drawn_filter(filter.published(), "the filter", pictures::Detail::live);
  const pictures::Axis frequencies = pictures::whole_axis({drawn}, pictures::Scale::logarithmic);
  const pictures::Axis levels = pictures::whole_levels({drawn}, pictures::usual_floor({drawn}));
  const pictures::Curve curve = pictures::level_curve(drawn, frequencies, pictures::Detail::live);
  return py::make_tuple(
      array_of(curve.x), array_of(curve.y), py::make_tuple(frequencies.low, frequencies.high),
      frequencies.is_logarithmic(), py::make_tuple(levels.low, levels.high), drawn.cutoffs);
}

}  // namespace python
