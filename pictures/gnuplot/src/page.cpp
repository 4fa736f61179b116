#include "page.h"

namespace gnuplot {
namespace {

constexpr double page_width = 1000;
constexpr double title_height = 40;

// From the top of the page, below the key.
constexpr double level_top = 32, level_height = 300;
constexpr double lower_top = level_top + level_height + 78;
constexpr double strip_height = 202, strip_gap = 32;
constexpr double left_edge = 92, right_edge = 975, strip_right = 535;
constexpr double circle_left = 690, circle_size = 285;
constexpr double circle_gap = 3 * strip_height + 2 * strip_gap - 2 * circle_size;
constexpr double page_bottom = lower_top + 3 * strip_height + 2 * strip_gap + 58;

Box strip(double key_height, int row) {
  const double top = title_height + key_height + lower_top + row * (strip_height + strip_gap);
  return {left_edge, top, strip_right, top + strip_height};
}

Box circle_at(double top) {
  return {circle_left, top, circle_left + circle_size, top + circle_size};
}

}  // namespace

Page page_for(const pictures::Figure &figure) {
  const double key_height = key_row * (static_cast<double>(figure.key.names.size()) + 1);
  Page page{};
  page.size = {page_width, title_height + key_height + page_bottom};
  page.title = {20, title_height / 2};
  page.key = {26, title_height + key_row / 2};
  const double top = title_height + key_height + level_top;
  page.level = {left_edge, top, right_edge, top + level_height};
  page.passband = strip(key_height, 0);
  page.phase = strip(key_height, 1);
  page.delay = strip(key_height, 2);
  page.zeros_and_poles = circle_at(page.passband.top);
  page.poles = circle_at(page.zeros_and_poles.bottom + circle_gap);
  return page;
}

}  // namespace gnuplot
