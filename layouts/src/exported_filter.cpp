#include "layouts/exported_filter.h"

#include <fmt/format.h>

#include "analysis/arrangement.h"
#include "analysis/cascade_gain.h"
#include "designer/published_filter.h"
#include "designer/title.h"
#include "floats.h"
#include "level.h"
#include "noise.h"
#include "soundness.h"

namespace layouts {
namespace {

struct ScaledFilter {
  analysis::Sections sections;
  std::string sentence; /**< that says how */
};

ScaledFilter at_level(const designer::PublishedFilter &filter, Level level) {
  if (level == Level::as_designed)
    return {filter.sections, "Level: as designed (--normalise is off)."};
  const ReferenceLevel reference = reference_level(filter);
  const double factor = normalising_factor(filter.sections, reference);
  const std::string why = reference.db < 0.0 ? ", the bottom of the ripple, whose top is 0 dB" : "";
  return {analysis::scaled(filter.sections, factor),
          fmt::format("Level: multiplied by {:.17g}, which makes it {:g} dB {}{} (--normalise).",
                      factor, reference.db, reference.place, why)};
}

ScaledFilter in_arrangement(analysis::Sections sections, Arrangement arrangement) {
  switch (arrangement) {
    case Arrangement::quiet: break;
    case Arrangement::published:
      return {std::move(sections),
              "Sections: in the order in which the module publishes them, all of the gain in the "
              "first one (--as-published; --spread-gain is off)."};
    case Arrangement::published_spread:
      return {
          analysis::with_gain_spread(std::move(sections)),
          "Sections: in the order in which the module publishes them, the gain spread by powers "
          "of two, so that the output of each but the last peaks between -3.01 and +3.01 dB "
          "(--as-published --spread-gain)."};
  }
  return {analysis::arranged(sections, analysis::Structure::direct_2_transposed),
          "Sections: arranged for the least rounding noise, and the gain spread over them; the "
          "module publishes another order (--as-published keeps it)."};
}

}  // namespace

ExportedFilter exported_filter(const designer::Design &design, const Target &target,
                               const Request &request) {
  check(request, target);
  const designer::PublishedFilter published = designer::published_filter(design);
  check_sections(published.sections);
  ExportedFilter filter;
  filter.title = designer::title(design);
  filter.samplerate = design.samplerate;
  filter.identifier = request.identifier;
  filter.command = request.command;
  ScaledFilter scaled = at_level(published, request.level);
  filter.scaling.push_back(scaled.sentence);
  if (target.form == Form::sections) {
    scaled = in_arrangement(std::move(scaled.sections), request.arrangement);
    filter.scaling.push_back(scaled.sentence);
  }
  filter.remarks = remarks_on(scaled.sections, target.arithmetic);
  filter.sections = scaled.sections;
  if (target.arithmetic == Arithmetic::floats) {
    RoundedFilter rounded = in_floats(filter.sections, target.name, filter.samplerate);
    filter.sections = std::move(rounded.sections);
    if (rounded.remark) filter.remarks.push_back(*rounded.remark);
  }
  if (target.form == Form::sections)
    if (const std::string noise = expected_noise(scaled.sections, target, request.noisy);
        !noise.empty())
      filter.scaling.push_back(noise);
  return filter;
}

}  // namespace layouts
