// What the panels over time show: the responses to an impulse and to a step.
#ifndef PICTURES_TIME_PANELS_H
#define PICTURES_TIME_PANELS_H

#include <optional>
#include <string>
#include <vector>

#include "pictures/curves.h"
#include "pictures/drawn_filter.h"
#include "pictures/labelled_axis.h"

namespace pictures {

/** All numbers are in the units of its axes. */
struct TimePanel {
  std::string title; /**< says which filters have no curve, and where a curve ends too early */
  LabelledAxis time, amplitude;
  std::vector<Curve> curves; /**< a point a sample, or fewer if live; one for each filter, in their
                                  order */
  bool shows_samples;        /**< so few that each can be marked */
};

struct TimePanels {
  TimePanel impulse, step;
};

/** What panels over time leave to their reader's choice. */
struct TimeOptions {
  std::optional<Axis>
      seconds{}; /**< a linear axis from 0 or later, 0 <= low < high; by default it is
                                      as long as is said below */
  Detail detail = Detail::full;
};

/**
 * The responses are those of the sections, arranged as by analysis::arranged, so that they are
 * those of the filter and not of its rounding. A filter without sections, or a silent one, has
 * none.
 *
 * An axis is as long as the slowest filter takes until it stays within 0.5 % of its largest value of
 * where it ends; for an unstable filter, until its fastest pole has grown by 60 dB. The step's is
 * often longer, since it shows what an impulse hardly excites. What would take more than two million
 * samples, or more than 5e7 of them times sections, is shown up to there.
 *
 * A live response is shown up to 32,768 samples, or two million times sections, and drawn with at most
 * four points for each of 400 columns.
 *
 * Time grows with the number of these samples times that of the sections, and with the square of the
 * order.
 */
TimePanels time_panels(const std::vector<DrawnFilter> &filters, const TimeOptions &options = {});

/** One of them, in the same time. */
TimePanel impulse_panel(const std::vector<DrawnFilter> &filters, const TimeOptions &options = {});
TimePanel step_panel(const std::vector<DrawnFilter> &filters, const TimeOptions &options = {});

}  // namespace pictures

#endif
