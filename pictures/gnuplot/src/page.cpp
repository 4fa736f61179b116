#include "page.h"

namespace gnuplot {
namespace {

constexpr double page_width = 1000;
constexpr double title_height = 40;

// Above a panel there is its title, below it the numbers and the label of its axis.
constexpr double heading = 32, axis_room = 46;
constexpr double level_height = 300, strip_height = 202, time_height = 202;
constexpr double left_edge = 92, right_edge = 975, strip_right = 535;
constexpr double circle_left = 690, circle_size = 285;
constexpr double time_width = 398;
constexpr double bottom_room = 58;

Box strip(double top) { return {left_edge, top, strip_right, top + strip_height}; }

Box circle(double top) { return {circle_left, top, circle_left + circle_size, top + circle_size}; }

}  // namespace

bool has_one_axis_for_details(const pictures::Figure &figure) {
  const pictures::Axis &passband = figure.passband.frequency.axis;
  const pictures::Axis &phase = figure.phase.frequency.axis;
  return passband.low == phase.low && passband.high == phase.high && passband.scale == phase.scale;
}

Page page_for(const pictures::Figure &figure) {
  const double key_height = key_row * (static_cast<double>(figure.key.names.size()) + 1);
  Page page{};
  page.title = {20, title_height / 2};
  page.key = {26, title_height + key_row / 2};
  const double top = title_height + key_height + heading;
  page.level = {left_edge, top, right_edge, top + level_height};
  const double middle = page.level.bottom + axis_room + heading;
  page.passband = strip(middle);
  page.phase =
      strip(page.passband.bottom + heading + (has_one_axis_for_details(figure) ? 0.0 : axis_room));
  page.delay = strip(page.phase.bottom + heading);
  page.zeros_and_poles = circle(middle);
  page.poles = circle(page.delay.bottom - circle_size);
  const double low = page.delay.bottom + axis_room + heading;
  page.impulse = {left_edge, low, left_edge + time_width, low + time_height};
  page.step = {right_edge - time_width, low, right_edge, low + time_height};
  page.size = {page_width, low + time_height + bottom_room};
  return page;
}

}  // namespace gnuplot
