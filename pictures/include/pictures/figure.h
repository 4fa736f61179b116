// The figure of one filter or several: what each panel shows, whatever draws it.
#ifndef PICTURES_FIGURE_H
#define PICTURES_FIGURE_H

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "pictures/axis.h"
#include "pictures/drawn_filter.h"
#include "pictures/figure_key.h"
#include "pictures/response_panels.h"
#include "pictures/root_panels.h"
#include "pictures/time_panels.h"

namespace pictures {

/** As many filters as there are distinguishable dash patterns. */
inline constexpr std::size_t most_filters = 6;

/** What a figure leaves to its reader's choice. */
struct FigureOptions {
  std::optional<std::string> title{}; /**< by default the name of the filter, or "3 filters" */
  std::optional<Axis> frequencies{};  /**< in Hz, of all panels over frequency; that of the passband
                                         stays within it where it can. By default `whole_axis` for
                                         the level and `passband_axis` for the others */
  Scale scale = Scale::logarithmic;   /**< of axes that are not given; linear ones only, or
                                         logarithmic ones where they show more */
  std::optional<double>
      floor_db{}; /**< the lowest level, below `highest_peak`; by default `usual_floor` */
  Detail detail = Detail::full;
};

struct Figure {
  std::string title;
  FigureKey key;
  ResponsePanel level;
  ResponsePanel passband, phase, delay; /**< the last two over the same axis */
  RootPanel zeros_and_poles, poles;
  TimePanel impulse, step;

  std::size_t filter_count() const { return level.curves.size(); }
};

/**
 * @param filters  1 to most_filters, with their names
 * Time grows with the square of the order, and with the number of filters. Each panel can also be made
 * alone, over any axis.
 */
Figure figure_of(const std::vector<DrawnFilter> &filters, const FigureOptions &options = {});

}  // namespace pictures

#endif
