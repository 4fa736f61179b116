#include "integers_between.h"

#include <algorithm>
#include <cmath>

#include <fmt/format.h>

#include "analysis/cascade_gain.h"
#include "analysis/extremes.h"
#include "analysis/impulse_norms.h"
#include "analysis/noise.h"
#include "analysis/stability.h"
#include "designer/limits.h"
#include "designer/refusal.h"

namespace layouts {
namespace {

constexpr double unit = 0x1p-31;

double decibels(double ratio) { return 20.0 * std::log10(ratio); }

/**
 * The noise of integers between the sections, in dB of the output's peak, for white noise of full
 * scale and for the worst sine, the larger of both: each rounding is white, with a variance of a
 * twelfth of the unit's square, and all sections behind filter it.
 */
double integer_noise_db(const analysis::Sections &sections) {
  double squares = 1.0;  // of the gains of all roundings; the last one is that of the output
  for (std::size_t first = 1; first < sections.size(); ++first) {
    const analysis::Sections behind(sections.begin() + static_cast<std::ptrdiff_t>(first),
                                    sections.end());
    const double gain = analysis::norms_from_input(behind).back().l2;
    squares += gain * gain;
  }
  const double error = unit * std::sqrt(squares / 12.0);
  const double white_peak = 4.0 / std::sqrt(3.0) * analysis::norms_from_input(sections).back().l2;
  const double sine_peak_db = analysis::extremes(sections, {{0.0, 1.0}}).highest.db;
  return decibels(error) - std::min(decibels(white_peak), sine_peak_db);
}

std::string noise_text(double db) {
  return db > -0.5 ? "as much noise as signal"
                   : fmt::format("noise {:.0f} dB below the output's peak", -db);
}

std::string clipping_sentence(double reach) {
  const std::string between =
      "Clipping: none between the sections, whose gains see to that, for any input within full "
      "scale;";
  if (reach <= 1.0) return between + " none of the output either.";
  // Two digits, rounded down; a power of ten below 1 would not be exact.
  const double scale = std::pow(10.0, std::ceil(std::log10(reach)) + 1.0);
  const double room = std::floor(scale / reach) / scale;
  return fmt::format(
      "{} the output can exceed full scale by {:.1f} dB and clips there, unless the input is "
      "multiplied by {:.2g} or less (sox -v {:.2g} in.wav ...).",
      between, decibels(reach), room, room);
}

}  // namespace

IntegerFilter with_integers_between(const analysis::Sections &sections, const Target &target,
                                    const Request &request) {
  if (!analysis::stability(sections).stable)
    return {sections, 0, {}, {"this filter is not stable"}};
  const auto scaled = analysis::with_gain_within_full_scale(sections);
  if (!scaled)
    return {sections, 0, {}, {"this filter rings for so long that sections may clip between"}};
  const double doubles =
      analysis::noise(*scaled, analysis::Structure::direct_1, analysis::Arithmetic::doubles)
          .worst_db();
  const double db = std::max(integer_noise_db(*scaled), doubles);
  if (request.noisy == Noisy::refused && !(db <= designer::most_float_noise_db))
    throw designer::Refusal(fmt::format(
        "--for {} passes integers of 32 bits from section to section, where this filter "
        "makes {}; {} (--anyway writes it)",
        target.name, noise_text(db),
        request.arrangement == Arrangement::quiet ? "take a target with doubles, such as ffmpeg"
                                                  : "without --as-published it makes less"));
  return {
      *scaled,
      0,
      {clipping_sentence(analysis::norms_from_input(*scaled).back().l1),
       fmt::format("Rounding: {}, with integers of 32 bits between the sections.", noise_text(db))},
      {}};
}

}  // namespace layouts
