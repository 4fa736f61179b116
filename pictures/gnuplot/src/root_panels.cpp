#include "root_panels.h"

#include <fmt/format.h>

#include "pictures/label_places.h"
#include "styles.h"

namespace gnuplot {
namespace {

constexpr double mark_width = 9, digit_width = 8, line_height = 13;

// One count under the other, around the middle of the text.
void draw_multiplicities(Panel &panel, const pictures::MultiplicityLabel &label,
                         const pictures::LabelOffset &offset) {
  double up = offset.up + line_height * (static_cast<double>(label.counts.size()) - 1) / 2;
  for (const std::size_t count : label.counts) {
    panel.text_beside({label.x, label.y}, {offset.right, up}, fmt::format("{}", count));
    up -= line_height;
  }
}

}  // namespace

void draw_roots(Script &script, const Box &box, const pictures::RootPanel &shown) {
  constexpr int most_ticks = 5;
  constexpr double label_distance = 52;
  Panel panel(script, box, shown.title, shown.real.axis, shown.imaginary.axis);
  panel.label_x(shown.real, most_ticks, Numbering::shown);
  panel.label_y(shown.imaginary, most_ticks, label_distance);
  panel.outline(shown.unit_circle, unit_circle_style);
  panel.outline(shown.frame, frame_style);
  // The first filter's come last, on top of the others'.
  for (std::size_t i = shown.filters.size(); i-- > 0;) {
    panel.symbols(shown.filters[i].zeros, zero_style(i));
    panel.symbols(shown.filters[i].poles, pole_style(i));
  }
  const auto offsets =
      label_offsets(shown, {box.right - box.left, mark_width, digit_width, line_height});
  for (std::size_t i = 0; i < offsets.size(); ++i)
    draw_multiplicities(panel, shown.multiplicities[i], offsets[i]);
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
