#include "root_panels.h"

#include <fmt/format.h>

#include "styles.h"

namespace gnuplot {
namespace {

// Outwards of the place; one under the other.
void draw_multiplicities(Panel &panel, const pictures::MultiplicityLabel &label) {
  constexpr double distance = 15, line = 12;
  const double half = (static_cast<double>(label.counts.size()) - 1) / 2;
  double up = label.outward.imag() * distance + line * half;
  for (const std::size_t count : label.counts) {
    panel.text_beside({label.x, label.y}, {label.outward.real() * (distance + 3), up},
                      fmt::format("{}", count));
    up -= line;
  }
}

}  // namespace

void draw_roots(Script &script, const Box &box, const pictures::RootPanel &shown) {
  constexpr int most_ticks = 5;
  constexpr double label_distance = 52;
  Panel panel(script, box, shown.title, shown.real.axis, shown.imaginary.axis);
  panel.label_x(shown.real, most_ticks, Numbering::shown);
  panel.label_y(shown.imaginary, most_ticks, label_distance);
  panel.curve(shown.unit_circle, unit_circle_style);
  // The first filter's come last, on top of the others'.
  for (std::size_t i = shown.filters.size(); i-- > 0;) {
    panel.symbols(shown.filters[i].zeros, zero_style(i));
    panel.symbols(shown.filters[i].poles, pole_style(i));
  }
  for (const pictures::MultiplicityLabel &label : shown.multiplicities)
    draw_multiplicities(panel, label);
  panel.finish();
}

void draw_root_key(Script &script, const Box &box, std::size_t filter_count) {
  if (filter_count == 1) {
    const double middle = box.top - 12;
    script.key_symbol({box.right - 100, middle}, zero_style(0), "zero");
    script.key_symbol({box.right - 44, middle}, pole_style(0), "pole");
    return;
  }
  constexpr double pitch = 46;
  const double middle = box.bottom + 56;
  double left = box.left + 6;
  for (std::size_t i = 0; i < filter_count; ++i, left += pitch) {
    script.key_symbol({left, middle}, zero_style(i), "");
    script.key_symbol({left + 11, middle}, pole_style(i), fmt::format("{}", i + 1));
  }
}

}  // namespace gnuplot
