#include "layouts/exported_filter.h"

#include <utility>

#include <fmt/format.h>

#include "analysis/cascade_gain.h"
#include "analysis/stability.h"
#include "designer/published_filter.h"
#include "designer/refusal.h"
#include "designer/title.h"
#include "floats.h"
#include "integer_filter.h"
#include "level.h"
#include "noise.h"
#include "soundness.h"
#include "structure.h"

namespace layouts {
namespace {

struct LevelledFilter {
  analysis::Sections sections;
  std::string sentence; /**< that says how */
};

LevelledFilter at_level(const designer::PublishedFilter &filter, Level level) {
  if (level == Level::as_designed)
    return {filter.sections, "Level: as designed (--normalise is off)."};
  const ReferenceLevel reference = reference_level(filter);
  const double factor = normalising_factor(filter.sections, reference);
  const std::string why = reference.db < 0.0 ? ", the bottom of the ripple, whose top is 0 dB" : "";
  return {analysis::scaled(filter.sections, factor),
          fmt::format("Level: multiplied by {:.17g}, which makes it {:g} dB {}{} (--normalise).",
                      factor, reference.db, reference.place, why)};
}

// Coefficients as the target's numbers, and what that does to them.
void add_coefficients(ExportedFilter &filter, const analysis::Realization &given,
                      const ScaledFilter &scaled, const Target &target, const Request &request) {
  filter.structure = given.structure;
  filter.sections = given.sections;
  filter.forms = given.forms;
  if (target.arithmetic != Arithmetic::floats) return;
  RoundedFilter rounded = in_floats(given, target.name, filter.samplerate);
  if (rounded.becomes_unstable)
    throw designer::Refusal(instability_refusal(given.sections, target.name,
                                                way_to_less_noise(scaled, target, request)));
  filter.sections = std::move(rounded.sections);
  filter.forms = std::move(rounded.forms);
  if (rounded.remark) filter.remarks.push_back(*rounded.remark);
}

void add_noise(ExportedFilter &filter, const analysis::Realization &given,
               const ScaledFilter &scaled, const Target &target, const Request &request) {
  if (!analysis::stability(given.sections).stable) return;
  if (request.noisy == Noisy::refused && is_too_noisy(given, target))
    throw designer::Refusal(
        noise_refusal(given, target, way_to_less_noise(scaled, target, request)));
  filter.scaling.push_back(expected_noise(given, target));
}

void add_sections(ExportedFilter &filter, const ScaledFilter &scaled, const Target &target,
                  const Request &request) {
  StructuredFilter structured = in_structure(scaled, target, request);
  filter.scaling.insert(filter.scaling.end(), structured.sentences.begin(),
                        structured.sentences.end());
  filter.remarks =
      remarks_on(structured.realization.sections, target.arithmetic, request.arrangement);
  add_coefficients(filter, structured.realization, scaled, target, request);
  add_noise(filter, structured.realization, scaled, target, request);
}

void add_integers(ExportedFilter &filter, IntegerFilter integers) {
  filter.structure = analysis::Structure::direct_1;
  filter.sections = std::move(integers.sections);
  filter.shift = integers.shift;
  filter.scaling.insert(filter.scaling.end(), integers.sentences.begin(), integers.sentences.end());
  filter.remarks = std::move(integers.remarks);
}

ExportedFilter exported(const std::string &title, double samplerate, LevelledFilter levelled,
                        const analysis::Roots &roots, const Target &target,
                        const Request &request) {
  ExportedFilter filter;
  filter.title = title;
  filter.samplerate = samplerate;
  filter.identifier = request.identifier;
  filter.command = request.command;
  filter.scaling.push_back(levelled.sentence);
  if (has_integer_signals(target)) {
    add_integers(filter, integer_filter(levelled.sections, target, request, samplerate));
  } else if (target.form == Form::sections) {
    add_sections(filter, {std::move(levelled.sections), roots}, target, request);
  } else {
    filter.remarks = remarks_on(levelled.sections, target.arithmetic, request.arrangement);
    filter.sections = std::move(levelled.sections);
  }
  return filter;
}

}  // namespace

ExportedFilter exported_filter(const designer::Design &design, const Target &target,
                               const Request &request) {
  check(request, target);
  const designer::PublishedFilter published = designer::published_filter(design);
  check_sections(published.sections);
  return exported(designer::title(design), design.samplerate, at_level(published, request.level),
                  published.roots.value_or(analysis::Roots{}), target, request);
}

ExportedFilter exported_filter(const std::string &title, const designer::FilterForms &filter,
                               const Target &target, const Request &request) {
  check(request, target);
  check_sections(filter.sections);
  return exported(title, filter.samplerate, {filter.sections, "Level: as given."}, {}, target,
                  request);
}

}  // namespace layouts
