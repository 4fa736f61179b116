// An axis of a picture: its range, its ticks, and how a frequency is written.
#ifndef VELTANE_CLI_PLOT_AXIS_H
#define VELTANE_CLI_PLOT_AXIS_H

#include <string>
#include <vector>

namespace cli::plot {

/** From `low` to `high`, low < high; 0 < low where it is logarithmic. */
struct Axis {
  double low = 0.0;
  double high = 1.0;
  bool logarithmic = false;
};

/** A place on an axis; without a label it is a small tick. */
struct Tick {
  double at;
  std::string label;
};

/** @return how far along the axis a value lies: 0 at its low end, 1 at its high end. */
double along(const Axis &axis, double value);

/** The inverse of `along`. */
double value_at(const Axis &axis, double part);

/** @return the smallest of 1, 2 and 5 times a power of ten that is not below `value` > 0. */
double rounded_up(double value);

/** @return the largest of these that is not above it. */
double rounded_down(double value);

/** @return multiples of a round step, at most `most` + 1 of them. */
std::vector<Tick> number_ticks(const Axis &axis, int most);

/** @return multiples of a step that divides a turn or is made of whole turns. */
std::vector<Tick> degree_ticks(const Axis &axis, int most);

/** @return ticks in Hz or samples, with k for thousands and M for millions: multiples of a round step, or, where the axis is
 *  logarithmic and more than a decade long, 1, 2 and 5 times powers of ten. */
std::vector<Tick> frequency_ticks(const Axis &axis, int most);

/** @return a frequency with its unit and up to five digits: "812.4 Hz", "3 kHz". */
std::string frequency_text(double hz);

}  // namespace cli::plot

#endif
