#include "response_panels.h"

#include "styles.h"

namespace gnuplot {

void draw_response(Script &script, const Box &box, const pictures::ResponsePanel &shown,
                   const AxisRoom &room) {
  constexpr double label_distance = 74;
  Panel panel(script, box, shown.title, shown.frequency.axis, shown.value.axis);
  panel.label_x(shown.frequency, room.frequency_ticks, room.frequencies);
  panel.label_y(shown.value, room.value_ticks, label_distance);
  if (shown.right) panel.label_right(*shown.right, room.value_ticks);
  for (const double hz : shown.cutoffs) panel.vertical(hz, cutoff_style);
  for (std::size_t i = 0; i < shown.curves.size(); ++i) panel.curve(shown.curves[i], line_style(i));
  for (const double value : shown.limits) panel.horizontal(value, limit_style);
  for (std::size_t i = 0; i < shown.half_power.size(); ++i)
    panel.symbols(shown.half_power[i], half_power_style(i));
  panel.finish();
}

}  // namespace gnuplot
