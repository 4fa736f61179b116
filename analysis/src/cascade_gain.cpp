#include "analysis/cascade_gain.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "analysis/cascade_peaks.h"
#include "analysis/impulse_norms.h"
#include "analysis/response.h"

namespace analysis {
namespace {

double decibels_of_two() { return 20.0 * std::log10(2.0); }

// The power of two that brings a peak nearest to 0 dB.
int levelling_exponent(const Peak &peak) {
  if (!std::isfinite(peak.db)) return 0;
  return static_cast<int>(std::lround(-peak.db / decibels_of_two()));
}

// What is left between the norm and full scale is for roundings on the way.
constexpr double room_for_rounding = 0x1p-20;

// The power of two that brings a norm as near to 1 from below as there is room for.
int fitting_exponent(double norm) {
  int exponent = 0;
  std::frexp(norm / (1.0 - room_for_rounding), &exponent);
  return -exponent;
}

// Each numerator multiplied so that the product up to each section has these powers of two.
Sections with_exponents(Sections filter, const std::vector<int> &running) {
  int before = 0;
  for (std::size_t i = 0; i < filter.size(); ++i) {
    Section &s = filter[i];
    for (double *value : {&s.b0, &s.b1, &s.b2}) *value = std::ldexp(*value, running[i] - before);
    before = running[i];
  }
  return filter;
}

bool keep_their_digits(const Sections &before, const Sections &after) {
  const auto fits = [](double given, double value) { return given == 0.0 || std::isnormal(value); };
  return std::equal(before.begin(), before.end(), after.begin(),
                    [&](const Section &s, const Section &t) {
                      return fits(s.b0, t.b0) && fits(s.b1, t.b1) && fits(s.b2, t.b2);
                    });
}

}  // namespace

std::optional<double> gain_factor(const Sections &filter, double w, double db) {
  const double factor = std::pow(10.0, (db - level_db(filter, w)) / 20.0);
  if (!std::isnormal(factor)) return std::nullopt;
  return factor;
}

Sections scaled(Sections filter, double factor) {
  Section &first = filter.front();
  first.b0 *= factor;
  first.b1 *= factor;
  first.b2 *= factor;
  return filter;
}

Sections with_gain_spread(Sections filter) {
  std::vector<int> exponents;
  for (const Peak &peak : running_peaks(filter)) exponents.push_back(levelling_exponent(peak));
  if (!exponents.empty()) exponents.back() = 0;
  return with_exponents(std::move(filter), exponents);
}

std::optional<Sections> with_gain_within_full_scale(const Sections &filter) {
  std::vector<int> exponents;
  for (const Norms &norms : norms_from_input(filter)) {
    if (!std::isfinite(norms.l1)) return std::nullopt;
    exponents.push_back(fitting_exponent(norms.l1));
  }
  if (!exponents.empty()) exponents.back() = 0;
  Sections scaled = with_exponents(filter, exponents);
  if (!keep_their_digits(filter, scaled)) return std::nullopt;
  return scaled;
}

}  // namespace analysis
