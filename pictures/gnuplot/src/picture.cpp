#include "gnuplot/picture.h"

#include <cmath>

#include "gnuplot/picture_metadata.h"
#include "gnuplot/process.h"
#include "response_panels.h"
#include "root_panels.h"
#include "styles.h"
#include "time_panels.h"

namespace gnuplot {
namespace {

using pictures::Figure;

double scale_of(const Page &page, const PictureType &type) { return type.width / page.size.width; }

int height(const Figure &figure, const PictureType &type) {
  const PageSize size = page_for(figure).size;
  return static_cast<int>(std::lround(size.height * type.width / size.width));
}

// The names of the filters, one under the other, and below them what the marks are.
void draw_key(Script &script, const Place &first, const pictures::FigureKey &key) {
  constexpr double column = 325;
  Place row = first;
  for (std::size_t i = 0; i < key.names.size(); ++i, row.top += key_row) {
    script.key_line(row, line_style(i), key.names[i]);
    script.key_symbol({row.left + 22, row.top}, half_power_style(i), "");
  }
  if (!key.cutoffs.empty()) script.key_line(row, cutoff_style, key.cutoffs);
  const Place second{row.left + column, row.top}, third{row.left + 2 * column, row.top};
  // With several filters, the symbol is different for each and stands at its name.
  if (!key.names.empty() && !key.half_power.empty()) script.key_text(second, key.half_power);
  if (key.names.empty() && !key.half_power.empty())
    script.key_symbol(second, half_power_style(0), key.half_power);
  if (!key.limits.empty()) script.key_line(third, limit_style, key.limits);
}

}  // namespace

std::string script(const Figure &figure, const PictureType &type) {
  const Page page = page_for(figure);
  // An SVG is drawn at its own size: gnuplot places its texts best there.
  Script out(page.size, type.format, type.format == Format::svg ? 1.0 : scale_of(page, type));
  out.title(figure.title, page.title);
  draw_key(out, page.key, figure.key);
  draw_response(out, page.level, figure.level, {18, 8, Numbering::shown});
  const Numbering below = has_one_axis_for_details(figure) ? Numbering::left_out : Numbering::shown;
  draw_response(out, page.passband, figure.passband, {8, 6, below});
  draw_response(out, page.phase, figure.phase, {8, 6, Numbering::left_out});
  draw_response(out, page.delay, figure.delay, {8, 6, Numbering::shown});
  draw_root_key(out, page.zeros_and_poles, figure.filter_count());
  draw_roots(out, page.zeros_and_poles, figure.zeros_and_poles);
  draw_roots(out, page.poles, figure.poles);
  draw_over_time(out, page.impulse, figure.impulse);
  draw_over_time(out, page.step, figure.step);
  return out.text();
}

std::string picture(const Figure &figure, const PictureType &type, const std::string &command) {
  std::string drawn = described(run(script(figure, type)), {figure.title, command});
  if (type.format != Format::svg) return drawn;
  return resized(drawn, {type.width, height(figure, type)});
}

}  // namespace gnuplot
