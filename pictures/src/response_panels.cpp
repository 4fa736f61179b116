#include "pictures/response_panels.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include <fmt/format.h>

#include "ascending.h"
#include "filter_numbers.h"
#include "pictures/ranges.h"
#include "pictures/wrapped_phase.h"
#include "time_unit.h"

namespace pictures {
namespace {

bool is_inside(const Axis &axis, double value) { return value > axis.low && value < axis.high; }

std::vector<double> cutoffs_within(const std::vector<DrawnFilter> &filters, const Axis &axis) {
  std::vector<double> all;
  for (const DrawnFilter &filter : filters)
    for (const double hz : filter.cutoffs)
      if (is_inside(axis, hz)) all.push_back(hz);
  return ascending(std::move(all));
}

// A limit that is nearer to 0 dB than the curve is thick would be hidden by it.
std::vector<double> limits_within(const std::vector<DrawnFilter> &filters, const Axis &levels) {
  std::vector<double> limits = levels_asked_for(filters);
  std::erase_if(limits, [&](double db) {
    return !(-db > 0.02 * (levels.high - levels.low)) || !is_inside(levels, db);
  });
  return limits;
}

std::vector<Curve> half_power_marks(const std::vector<DrawnFilter> &filters) {
  std::vector<Curve> marks(filters.size());
  for (std::size_t i = 0; i < filters.size(); ++i)
    for (const double hz : filters[i].half_power)
      marks[i].add(hz, filters[i].level_db(hz / filters[i].nyquist()));
  return marks;
}

template <class MakeCurve>
std::vector<Curve> curves_of(const std::vector<DrawnFilter> &filters, const Axis &frequencies,
                             Detail detail, const MakeCurve &make_curve) {
  std::vector<Curve> curves;
  curves.reserve(filters.size());
  for (const DrawnFilter &filter : filters)
    curves.push_back(make_curve(filter, frequencies, detail));
  return curves;
}

ResponsePanel panel_over(const Axis &frequencies, std::string title,
                         const std::vector<DrawnFilter> &filters) {
  ResponsePanel panel;
  panel.title = std::move(title);
  panel.frequency = {frequencies, TickStyle::magnitudes, "frequency in Hz"};
  panel.cutoffs = cutoffs_within(filters, frequencies);
  return panel;
}

ResponsePanel panel_of_levels(std::string title, const std::vector<DrawnFilter> &filters,
                              const Axis &frequencies, const Axis &levels, Detail detail) {
  ResponsePanel panel = panel_over(frequencies, std::move(title), filters);
  panel.value = {levels, TickStyle::decimal, "level in dB"};
  panel.limits = limits_within(filters, levels);
  panel.curves = curves_of(filters, frequencies, detail, level_curve);
  panel.half_power = half_power_marks(filters);
  return panel;
}

// What one must know to read the levels rightly.
std::string level_title(const std::vector<DrawnFilter> &filters) {
  const bool several = filters.size() > 1;
  const std::string silent =
      numbers_of(filters, [](const DrawnFilter &filter) { return filter.is_silent(); });
  const std::string unstable =
      numbers_of(filters, [](const DrawnFilter &filter) { return filter.is_unstable(); });
  std::string title = "Level";
  if (!silent.empty())
    title += several ? "; silent, drawn without the gain, which is 0: " + silent
                     : " without the gain, which is 0: the filter is silent";
  if (!unstable.empty())
    title += several ? "; unstable: " + unstable
                     : "; the filter is unstable, with poles outside the unit circle";
  return title;
}

bool have_one_samplerate(const std::vector<DrawnFilter> &filters) {
  return std::all_of(filters.begin(), filters.end(), [&](const DrawnFilter &filter) {
    return filter.samplerate == filters.front().samplerate;
  });
}

}  // namespace

std::vector<double> levels_asked_for(const std::vector<DrawnFilter> &filters) {
  std::vector<double> all;
  for (const DrawnFilter &filter : filters)
    for (const auto &limit : {filter.ripple, filter.attenuation})
      if (limit) all.push_back(-*limit);
  return ascending(std::move(all));
}

ResponsePanel level_panel(const std::vector<DrawnFilter> &filters, const Axis &frequencies,
                          const Axis &levels, Detail detail) {
  return panel_of_levels(level_title(filters), filters, frequencies, levels, detail);
}

ResponsePanel passband_panel(const std::vector<DrawnFilter> &filters, const Axis &frequencies,
                             Detail detail) {
  return panel_of_levels("Passband enlarged", filters, frequencies, passband_levels(filters),
                         detail);
}

ResponsePanel phase_panel(const std::vector<DrawnFilter> &filters, const Axis &frequencies,
                          PhaseForm form, Detail detail) {
  ResponsePanel panel = panel_over(frequencies, "Phase", filters);
  panel.curves = curves_of(filters, frequencies, detail, phase_curve);
  panel.value = {range_of(panel.curves), TickStyle::degrees, "phase in degrees"};
  if (form == PhaseForm::wrapped) {
    for (Curve &curve : panel.curves) curve = wrapped_phase(curve);
    panel.value.axis = {-180.0, 180.0, Scale::linear};
  }
  return panel;
}

ResponsePanel delay_panel(const std::vector<DrawnFilter> &filters, const Axis &frequencies,
                          Detail detail) {
  ResponsePanel panel = panel_over(frequencies, "Group delay", filters);
  panel.curves = curves_of(filters, frequencies, detail, delay_curve);
  const Axis seconds = delay_axis(filters, frequencies, panel.curves, detail);
  const TimeUnit unit = time_unit(std::max(std::fabs(seconds.low), std::fabs(seconds.high)));
  for (Curve &curve : panel.curves)
    for (double &y : curve.y) y /= unit.seconds;
  panel.value = {seconds.scaled(1 / unit.seconds), TickStyle::magnitudes,
                 fmt::format("delay in {}", unit.name)};
  if (have_one_samplerate(filters))
    panel.right = LabelledAxis{seconds.scaled(filters.front().samplerate), TickStyle::magnitudes,
                               "delay in samples"};
  return panel;
}

}  // namespace pictures
