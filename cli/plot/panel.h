// gnuplot commands for a page of panels: each at a place in pixels, with its axes, lines and key.
#ifndef VELTANE_CLI_PLOT_PANEL_H
#define VELTANE_CLI_PLOT_PANEL_H

#include <string>
#include <vector>

#include "plot/axis.h"
#include "plot/series.h"

namespace cli::plot {

/** A place on the page, in pixels from its upper left corner, at a page width of 1000. */
struct Box {
  double left, top, right, bottom;
};

/** The styles of the i-th filter, as gnuplot's options: they differ in dash pattern, symbol and
 *  colour. */
std::string line_style(std::size_t i);
std::string half_power_style(std::size_t i);
std::string pole_style(std::size_t i);
std::string zero_style(std::size_t i);

/** The style of a cutoff's line, and of a level that was asked for. Their greys differ because
 *  gnuplot's SVG takes two dash patterns of one colour for the same. */
inline constexpr char cutoff_style[] = "lw 1 lc rgb '#606060' dt (2,4)";
inline constexpr char limit_style[] = "lw 1 lc rgb '#585858' dt (14,4,2,4)";

/** Commands as they are collected. */
class Script {
 public:
  /** @param width, height  of the page, in the unit of boxes */
  Script(double width, double height) : width_(width), height_(height) {}

  /** @param scale  how many pixels one of a box is */
  void begin(const std::string &terminal, double scale);

  void title(const std::string &text, double top);

  /** Samples of a line or a symbol, and what it stands for, for the key of the next panel.
   *  `left` and `middle` are pixels from the left and from the top. */
  void key_line(double left, double middle, const std::string &style, const std::string &text);
  void key_text(double left, double middle, const std::string &text);
  void key_symbol(double left, double middle, const std::string &style, const std::string &text);

  /** Appends a line. */
  void line(const std::string &command);

  /** @return the name of a data block with these points, NaN between parts of a line. */
  std::string block(const Curve &curve);

  double across(double pixels) const { return pixels / width_; }
  double upwards(double pixels) const { return 1.0 - pixels / height_; }

  std::string text() const;

 private:
  double width_, height_;
  std::string blocks_, commands_;
  std::string head_;
  int count_ = 0;
  int title_size_ = 0;
};

/** One pair of axes. Nothing is drawn before `finish`. */
class Panel {
 public:
  Panel(Script &script, const Box &box, const std::string &title, const Axis &x, const Axis &y);

  /** @param label  empty: none, and no numbers either, for panels that stand on another one */
  void x_ticks(const std::vector<Tick> &ticks, const std::string &label);
  /** @param distance  of the label from the axis, in pixels */
  void y_ticks(const std::vector<Tick> &ticks, const std::string &label, double distance);
  void right_ticks(const Axis &axis, const std::vector<Tick> &ticks, const std::string &label);

  /** Lines across the panel; none where it lies outside. */
  void vertical(double x, const std::string &style);
  void horizontal(double y, const std::string &style);

  /** Draws a curve with the fewest points that look the same. */
  void curve(const Curve &curve, const std::string &style);
  void points(const Curve &curve, const std::string &style);

  /** A text beside a place, this many pixels away from it. */
  void label(double x, double y, double right, double up, const std::string &text);

  void finish();

 private:
  void line(double x0, double y0, double x1, double y1, const std::string &style);
  void ticks(const char *which, const std::vector<Tick> &ticks, bool numbers);

  Script &script_;
  Box box_;
  Axis x_, y_;
  std::vector<std::string> drawn_;
};

}  // namespace cli::plot

#endif
