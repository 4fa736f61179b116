#include "layouts/exported_filter.h"

#include <fmt/format.h>

#include "analysis/cascade_gain.h"
#include "designer/published_filter.h"
#include "designer/title.h"
#include "floats.h"
#include "level.h"
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

ScaledFilter with_gain(analysis::Sections sections, Gain gain) {
  if (gain == Gain::in_first_section)
    return {std::move(sections), "Gain: all of it in the first section (--spread-gain is off)."};
  return {analysis::with_gain_spread(std::move(sections)),
          "Gain: spread by powers of two, so that the output of each section but the last peaks "
          "between -3.01 and +3.01 dB (--spread-gain)."};
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
    scaled = with_gain(std::move(scaled.sections), request.gain);
    filter.scaling.push_back(scaled.sentence);
  }
  filter.remarks = remarks_on(scaled.sections, target.arithmetic);
  filter.sections = std::move(scaled.sections);
  if (target.arithmetic == Arithmetic::floats) {
    RoundedFilter rounded = in_floats(filter.sections, target.name, filter.samplerate);
    filter.sections = std::move(rounded.sections);
    if (rounded.remark) filter.remarks.push_back(*rounded.remark);
  }
  return filter;
}

}  // namespace layouts
