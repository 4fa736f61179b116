#include "designer/cutoffs.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <numbers>
#include <stdexcept>

#include <fmt/format.h>

#include "designer/limits.h"
#include "designer/refusal.h"

namespace designer {
namespace {

double fraction_of(double asked, Units units, double samplerate) {
  return units == Units::hertz ? asked / (samplerate / 2) : asked;
}

template <class Meaning>
Meaning known(const Settings &settings, const char *name,
              std::optional<Meaning> (*meaning)(std::string_view)) {
  const std::string word = settings.text(name);
  if (const auto found = meaning(word)) return *found;
  throw std::runtime_error(fmt::format("{} cannot be '{}'", name, word));
}

}  // namespace

bool Cutoff::is_clipped() const {
  const double fraction = fraction_of(asked, units, samplerate);
  return !(std::abs(fraction - used) <= 4 * std::numeric_limits<double>::epsilon() * used);
}

std::string Cutoff::asked_text() const { return fmt::format("{}", asked); }

std::string Cutoff::used_text() const {
  if (!is_clipped()) return asked_text();
  return fmt::format("{:.12g}", units == Units::hertz ? used * samplerate / 2 : used);
}

const char *Cutoff::unit() const { return units == Units::hertz ? " Hz" : " of Nyquist"; }

std::string used_text(const std::vector<Cutoff> &cutoffs) {
  std::string text;
  for (const Cutoff &cutoff : cutoffs) text += (text.empty() ? "" : " and ") + cutoff.used_text();
  return text + cutoffs.front().unit();
}

std::vector<Cutoff> cutoffs_in(const Settings &settings, double samplerate) {
  refuse_radians(settings);
  const Units units = known(settings, "units", units_named);
  const bool band = analysis::has_two_edges(known(settings, "response", response_named));
  const std::vector<double> asked = settings.numbers("frequency");
  const std::size_t count = band ? 2 : 1;
  if (asked.size() < count) throw std::runtime_error("a band response needs two cutoffs");
  std::vector<Cutoff> cutoffs;
  for (std::size_t i = 0; i < count; ++i) {
    const double fraction = fraction_of(asked[i], units, samplerate);
    cutoffs.push_back({asked[i], std::clamp(fraction, cutoff_range.lowest, cutoff_range.highest),
                       units, samplerate});
  }
  return cutoffs;
}

std::string hz_text(double w, double samplerate) {
  return fmt::format("{:.6g} Hz", w * samplerate / 2);
}

void refuse_radians(const Settings &settings) {
  const Values *units = settings.find("units");
  if (units == nullptr || units->empty() ||
      units_named(patchbay::to_text(units->front())) != Units::radians)
    return;
  std::string fractions;
  if (const Values *cutoffs = settings.find("frequency"))
    for (const Value &cutoff : *cutoffs)
      if (const auto radians = number_in(cutoff); radians && *radians < std::numbers::pi)
        fractions +=
            fmt::format("{} {:.10g}", fractions.empty() ? ":" : "", *radians / std::numbers::pi);
  throw Refusal(
      fmt::format("radians are not supported; give cutoffs in hertz, or in normalized units, which "
                  "are radians divided by pi{}",
                  fractions));
}

}  // namespace designer
