#include "export/gain.h"

#include <algorithm>
#include <cmath>

#include <fmt/format.h>

#include "analysis/band.h"
#include "analysis/cascade_peaks.h"
#include "analysis/response.h"

namespace cli {
namespace {

using analysis::Band;
using analysis::Section;

Band band_of(const std::string &response) {
  if (response == "lowpass") return Band::lowpass;
  if (response == "highpass") return Band::highpass;
  return response == "bandpass" ? Band::bandpass : Band::bandstop;
}

std::string place_of(Band band, double hertz) {
  if (band == Band::highpass) return "at the Nyquist frequency";
  if (band == Band::bandpass) return fmt::format("at {:.6g} Hz, the centre of the band", hertz);
  return "at DC";
}

double decibels_of_two() { return 20.0 * std::log10(2.0); }

}  // namespace

Reference reference_of(const Published &filter, double ripple_db) {
  const Band band = band_of(filter.response);
  std::vector<double> cutoffs = filter.cutoffs;
  std::sort(cutoffs.begin(), cutoffs.end());
  if (analysis::has_two_edges(band) && cutoffs.at(0) == cutoffs.at(1))
    throw Refusal("--normalise needs a band: the two cutoffs are equal");
  const double w = analysis::reference_frequency(band, cutoffs);
  const std::size_t order = filter.poles.size() / (analysis::has_two_edges(band) ? 2 : 1);
  const bool bottom = filter.topology == "chebyshev-1" && order % 2 == 0;
  return {w, bottom ? -ripple_db : 0.0, place_of(band, w * filter.samplerate / 2)};
}

double normalise(analysis::Sections &sections, const Reference &reference) {
  const double level = analysis::level_db(sections, reference.w);
  const double factor = std::pow(10.0, (reference.db - level) / 20.0);
  if (!std::isnormal(factor))
    throw Refusal(fmt::format("--normalise cannot set the level {}: it is {:.6g} dB there",
                              reference.place, level));
  Section &first = sections.front();
  first.b0 *= factor;
  first.b1 *= factor;
  first.b2 *= factor;
  return factor;
}

void spread_gain(analysis::Sections &sections) {
  const std::vector<analysis::Peak> peaks = analysis::running_peaks(sections);
  int before = 0;
  for (std::size_t i = 0; i < sections.size(); ++i) {
    const bool last = i + 1 == sections.size();
    const int until = last ? 0 : static_cast<int>(std::lround(-peaks[i].db / decibels_of_two()));
    Section &s = sections[i];
    for (double *value : {&s.b0, &s.b1, &s.b2}) *value = std::ldexp(*value, until - before);
    before = until;
  }
}

}  // namespace cli
