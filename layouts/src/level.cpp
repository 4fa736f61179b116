#include "level.h"

#include <fmt/format.h>

#include "analysis/band.h"
#include "analysis/cascade_gain.h"
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
  const double db = analysis::reference_level(filter.family, filter.order, filter.passband_ripple);
  return {w, db, place_of(filter, w)};
}

double normalising_factor(const analysis::Sections &filter, const ReferenceLevel &reference) {
  const auto factor = analysis::gain_factor(filter, reference.w, reference.db);
  if (!factor)
    throw designer::Refusal(
        fmt::format("--normalise cannot set the level {}: it is {:.6g} dB there", reference.place,
                    analysis::level_db(filter, reference.w)));
  return *factor;
}

}  // namespace layouts
