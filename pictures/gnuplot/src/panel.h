// gnuplot's commands for one panel: its axes, and the lines and marks in it.
#ifndef GNUPLOT_PANEL_H
#define GNUPLOT_PANEL_H

#include <string>
#include <vector>

#include "page.h"
#include "pictures/labelled_axis.h"
#include "script.h"

namespace gnuplot {

/** Whether an axis shows its numbers and its label. A panel directly above another one with the
 *  same axis omits them. */
enum class Numbering { shown, left_out };

/** One pair of axes. Nothing is drawn before `finish`. It keeps the script. */
class Panel {
 public:
  Panel(Script &script, const Box &box, const std::string &title, const pictures::Axis &x,
        const pictures::Axis &y);

  /** The labels and ticks of its axes. @param most  as of pictures::ticks */
  void label_x(const pictures::LabelledAxis &axis, int most, Numbering numbering);
  /** @param distance  of the label from the axis, in pixels */
  void label_y(const pictures::LabelledAxis &axis, int most, double distance);
  /** Both axes without ticks and labels, where there is nothing to read. */
  void leave_axes_blank();
  /** A third axis on the right. */
  void label_right(const pictures::LabelledAxis &axis, int most);

  /** Lines across the panel. */
  void vertical(double x, const std::string &style);
  void horizontal(double y, const std::string &style);

  /** Draws a curve as it is, whose x need not ascend. */
  void outline(const pictures::Curve &curve, const std::string &style) { line(curve, style); }

  /** Draws a curve with the fewest points that look the same; its x ascends. */
  void curve(const pictures::Curve &curve, const std::string &style);

  /** Draws a symbol at each point, and nothing if there are none. */
  void symbols(const pictures::Curve &places, const std::string &style);

  /** A text beside a place in the panel, this many pixels to the right of it and above it. */
  void text_beside(const Place &values, const Place &offset, const std::string &text);

  void finish();

 private:
  void line(const pictures::Curve &ends, const std::string &style);
  void ticks(const char *which, const pictures::LabelledAxis &axis, int most, Numbering numbering);

  Script &script_;
  Box box_;
  pictures::Axis x_, y_;
  std::vector<std::string> drawn_;
};

}  // namespace gnuplot

#endif
