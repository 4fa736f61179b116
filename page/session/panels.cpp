#include "session/panels.h"

#include <algorithm>
#include <optional>

#include "designer/published_filter.h"
#include "designer/refusal.h"
#include "pictures/level_difference.h"
#include "pictures/mask.h"
#include "pictures/ranges.h"
#include "pictures/response_panels.h"
#include "pictures/root_panels.h"
#include "pictures/section_levels.h"
#include "pictures/time_panels.h"
#include "session/request.h"

namespace page {
namespace {

using pictures::Axis;
using pictures::Detail;
using pictures::DrawnFilter;
using text::Json;

using Filters = std::vector<DrawnFilter>;

Json json(const pictures::LabelledAxis &labelled) {
  return {{"low", labelled.axis.low},
          {"high", labelled.axis.high},
          {"logarithmic", labelled.axis.is_logarithmic()},
          {"label", labelled.label}};
}

Json json(const pictures::Curve &curve, Answer &answer) {
  return {{"x", answer.list(curve.x)}, {"y", answer.list(curve.y)}};
}

Json json(const std::vector<pictures::Curve> &curves, Answer &answer) {
  Json list = Json::array();
  for (const pictures::Curve &curve : curves) list.push_back(json(curve, answer));
  return list;
}

Json json(const pictures::ResponsePanel &panel, Answer &answer) {
  Json object{{"title", panel.title},
              {"x", json(panel.frequency)},
              {"y", json(panel.value)},
              {"cutoffs", panel.cutoffs},
              {"limits", panel.limits},
              {"curves", json(panel.curves, answer)},
              {"marks", json(panel.half_power, answer)}};
  if (panel.right) object["right"] = json(*panel.right);
  return object;
}

Json json(const pictures::RootPanel &panel, Answer &answer) {
  Json filters = Json::array();
  for (const pictures::ShownRoots &roots : panel.filters)
    filters.push_back({{"zeros", json(roots.zeros, answer)}, {"poles", json(roots.poles, answer)}});
  Json labels = Json::array();
  for (const pictures::MultiplicityLabel &label : panel.multiplicities)
    labels.push_back({{"x", label.x}, {"y", label.y}, {"counts", label.counts}});
  return {{"title", panel.title},
          {"x", json(panel.real)},
          {"y", json(panel.imaginary)},
          {"origin", {panel.origin.real(), panel.origin.imag()}},
          {"unit", panel.unit},
          {"circle", json(panel.unit_circle, answer)},
          {"frame", json(panel.frame, answer)},
          {"filters", filters},
          {"labels", labels}};
}

Json json(const pictures::TimePanel &panel, Answer &answer) {
  return {{"title", panel.title},
          {"x", json(panel.time)},
          {"y", json(panel.amplitude)},
          {"curves", json(panel.curves, answer)},
          {"shows_samples", panel.shows_samples}};
}

Json json(const pictures::Mask &mask, Answer &answer) {
  Json list = Json::array();
  for (const auto *regions : {&mask.passband, &mask.stopband})
    for (const pictures::ForbiddenRegion &region : *regions)
      list.push_back(
          {{"polygon", json(region.polygon, answer)}, {"border", json(region.border, answer)}});
  return list;
}

// What is shown of the frequencies.
struct View {
  std::optional<Axis> asked;
  pictures::Scale scale = pictures::Scale::logarithmic;
  pictures::PhaseForm phase = pictures::PhaseForm::continuous;

  Axis whole(const Filters &filters) const {
    return asked ? *asked : pictures::whole_axis(filters, scale);
  }

  // What of the passband is in sight, or all of it where nothing is.
  Axis passband(const Filters &filters) const {
    Axis axis = pictures::passband_axis(filters, scale);
    if (!asked) return axis;
    const double low = std::max(axis.low, asked->low), high = std::min(axis.high, asked->high);
    return low < high ? Axis{low, high, axis.scale} : axis;
  }
};

View view_in(const Request &request) {
  View view;
  if (!has(request, "view")) return view;
  const Request &given = request.at("view");
  if (!given.is_object()) throw designer::Refusal("'view' is an object");
  if (has(given, "scale") && text_in(given, "scale") == "linear")
    view.scale = pictures::Scale::linear;
  if (flag_in(given, "wrapped")) view.phase = pictures::PhaseForm::wrapped;
  if (!has(given, "low") && !has(given, "high")) return view;
  view.asked = Axis{number_in(given, "low"), number_in(given, "high"), view.scale};
  const double least = view.asked->is_logarithmic() ? 1e-9 : 0.0;
  if (!(view.asked->low >= least && view.asked->low < view.asked->high && view.asked->high <= 1e9))
    throw designer::Refusal(
        "the frequencies in view are to ascend from 0 Hz, or from above it on a logarithmic axis");
  return view;
}

Json level(const Filters &filters, const View &view, Answer &answer) {
  const Axis frequencies = view.whole(filters);
  const Axis levels = pictures::whole_levels(filters, pictures::usual_floor(filters));
  Json panel = json(pictures::level_panel(filters, frequencies, levels, Detail::live), answer);
  panel["mask"] = json(pictures::settings_mask(filters.front(), frequencies, levels), answer);
  return panel;
}

// A panel of other curves over the axes of the level.
Json like_level(const Filters &filters, const View &view, const std::string &title,
                const Axis &values, const std::vector<pictures::Curve> &curves, Answer &answer) {
  pictures::ResponsePanel panel =
      pictures::level_panel({filters.front()}, view.whole(filters), values, Detail::live);
  panel.title = title;
  panel.limits.clear();
  panel.half_power.clear();
  panel.curves = curves;
  return json(panel, answer);
}

Json difference(const Filters &filters, const View &view, Answer &answer) {
  const std::vector<pictures::Curve> curves{pictures::level_difference_curve(
      filters.at(0), filters.at(1), view.whole(filters), Detail::live)};
  return like_level(filters, view, "Difference in level, A less B", pictures::range_of(curves),
                    curves, answer);
}

Json sections(const Filters &filters, const View &view, Answer &answer) {
  const std::vector<pictures::Curve> curves =
      pictures::section_level_curves(filters.front(), view.whole(filters), Detail::live);
  return like_level(filters, view, "Level of each section", pictures::range_of(curves), curves,
                    answer);
}

}  // namespace

Json panels(const std::vector<designer::Design> &designs, const std::vector<std::string> &names,
            const Request &request, Answer &answer) {
  Json drawn = Json::object();
  if (names.empty()) return drawn;
  const View view = view_in(request);
  Filters filters;
  for (const designer::Design &design : designs)
    filters.push_back(
        pictures::drawn_filter(designer::published_filter(design), "the filter", Detail::live));
  std::optional<pictures::TimePanels> times;
  const auto over_time = [&]() -> const pictures::TimePanels & {
    if (!times) times = pictures::time_panels(filters, {.detail = Detail::live});
    return *times;
  };
  for (const std::string &name : names) {
    if (name == "level")
      drawn[name] = level(filters, view, answer);
    else if (name == "passband")
      drawn[name] =
          json(pictures::passband_panel(filters, view.passband(filters), Detail::live), answer);
    else if (name == "phase")
      drawn[name] = json(
          pictures::phase_panel(filters, view.whole(filters), view.phase, Detail::live), answer);
    else if (name == "delay")
      drawn[name] = json(pictures::delay_panel(filters, view.whole(filters), Detail::live), answer);
    else if (name == "zeros_and_poles")
      drawn[name] = json(pictures::zeros_and_poles_panel(filters), answer);
    else if (name == "poles")
      drawn[name] = json(pictures::poles_panel(filters), answer);
    else if (name == "impulse")
      drawn[name] = json(over_time().impulse, answer);
    else if (name == "step")
      drawn[name] = json(over_time().step, answer);
    else if (name == "sections")
      drawn[name] = sections(filters, view, answer);
    else if (name == "difference" && filters.size() == 2)
      drawn[name] = difference(filters, view, answer);
  }
  return drawn;
}

}  // namespace page
