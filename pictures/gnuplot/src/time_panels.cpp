#include "time_panels.h"

#include <algorithm>

#include "styles.h"

namespace gnuplot {

void draw_over_time(Script &script, const Box &box, const pictures::TimePanel &shown) {
  constexpr int most_times = 7, most_amplitudes = 6;
  constexpr double label_distance = 62;
  Panel panel(script, box, shown.title, shown.time.axis, shown.amplitude.axis);
  if (std::all_of(shown.curves.begin(), shown.curves.end(),
                  [](const pictures::Curve &curve) { return curve.x.empty(); })) {
    panel.leave_axes_blank();
  } else {
    panel.label_x(shown.time, most_times, Numbering::shown);
    panel.label_y(shown.amplitude, most_amplitudes, label_distance);
  }
  for (std::size_t i = 0; i < shown.curves.size(); ++i) {
    panel.curve(shown.curves[i], line_style(i));
    if (shown.shows_samples) panel.symbols(shown.curves[i], sample_style(i));
  }
  panel.finish();
}

}  // namespace gnuplot
