#include "level.h"

#include <cmath>

#include <fmt/format.h>

#include "analysis/band.h"
#include "analysis/response.h"
#include "designer/refusal.h"

namespace layouts {
namespace {

using designer::Response;

std::string place_of(const designer::PublishedFilter &filter, double w) {
  switch (filter.response) {
    case Response::lowpass:
    case Response::bandstop: return "at DC";
    case Response::highpass: return "at the Nyquist frequency";
    case Response::bandpass: break;
  }
  return fmt::format("at {}, the centre of the band", filter.hz_text(w));
}

}  // namespace

ReferenceLevel reference_level(const designer::PublishedFilter &filter) {
  const std::vector<double> cutoffs = filter.ascending_cutoffs();
  if (filter.has_two_cutoffs() && cutoffs[0] == cutoffs[1])
    throw designer::Refusal("--normalise needs a band: the two cutoffs are equal");
  const double w = analysis::reference_frequency(filter.response, cutoffs);
  const bool bottom = filter.family == designer::Family::chebyshev_1 && filter.order % 2 == 0;
  return {w, bottom ? -filter.passband_ripple : 0.0, place_of(filter, w)};
}

NormalisedFilter normalised(analysis::Sections sections, const ReferenceLevel &reference) {
  const double level = analysis::level_db(sections, reference.w);
  const double factor = std::pow(10.0, (reference.db - level) / 20.0);
  if (!std::isnormal(factor))
    throw designer::Refusal(fmt::format(
        "--normalise cannot set the level {}: it is {:.6g} dB there", reference.place, level));
  analysis::Section &first = sections.front();
  for (double *b : {&first.b0, &first.b1, &first.b2}) *b *= factor;
  return {std::move(sections), factor};
}

}  // namespace layouts
