#include "session/panels.h"

#include "designer/published_filter.h"
#include "pictures/figure.h"

namespace page {
namespace {

using text::Json;

Json json(const pictures::LabelledAxis &labelled) {
  return {{"low", labelled.axis.low},
          {"high", labelled.axis.high},
          {"logarithmic", labelled.axis.is_logarithmic()},
          {"label", labelled.label}};
}

Json json(const std::vector<pictures::Curve> &curves, Answer &answer) {
  Json list = Json::array();
  for (const pictures::Curve &curve : curves)
    list.push_back({{"x", answer.list(curve.x)}, {"y", answer.list(curve.y)}});
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

}  // namespace

text::Json panels(const std::vector<designer::Design> &designs, const Request &, Answer &answer) {
  std::vector<pictures::DrawnFilter> filters;
  for (const designer::Design &design : designs)
    filters.push_back(pictures::drawn_filter(designer::published_filter(design), "the filter"));
  const pictures::Figure figure = pictures::figure_of(filters);
  Json drawn = Json::object();
  drawn["level"] = json(figure.level, answer);
  drawn["phase"] = json(figure.phase, answer);
  return drawn;
}

}  // namespace page
