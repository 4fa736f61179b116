// Whether a filter works at all.

#include <algorithm>
#include <cmath>
#include <limits>

#include <fmt/format.h>

#include "analysis/stability.h"
#include "subject.h"

namespace cli {
namespace {

using analysis::Complex;

bool is_finite(const std::vector<Complex> &roots) {
  return std::all_of(roots.begin(), roots.end(), [](const Complex &root) {
    return std::isfinite(root.real()) && std::isfinite(root.imag());
  });
}

bool is_finite(const Subject &subject) {
  return is_finite(subject.roots.zeros) && is_finite(subject.roots.poles) &&
         std::isfinite(subject.roots.gain) &&
         std::all_of(subject.sections.begin(), subject.sections.end(), [](const auto &section) {
           const auto &[b0, b1, b2, a1, a2] = section;
           return std::isfinite(b0) && std::isfinite(b1) && std::isfinite(b2) &&
                  std::isfinite(a1) && std::isfinite(a2);
         });
}

const char *remedy(const Subject &subject) {
  if (subject.has_no_band()) return "mend the cutoffs first";
  if (subject.saved) return "design it again: 'veltane design --from FILE.json'";
  return "a lower --order, or cutoffs further from 0, from the Nyquist frequency and apart";
}

bool check_stability(const Subject &subject, Verdict &verdict) {
  const analysis::Stability of_roots = analysis::stability(subject.roots);
  const analysis::Stability of_sections = analysis::stability(subject.sections);
  const analysis::Stability &worst = of_roots.margin < of_sections.margin ? of_roots : of_sections;
  verdict.measured["stable"] = worst.stable;
  verdict.measured["margin"] = worst.margin;
  if (!worst.stable) {
    verdict.problem("stability",
                    fmt::format("unstable: a pole is {:.3g} outside the unit circle, so that the "
                                "output grows without end",
                                -worst.margin),
                    remedy(subject));
    return false;
  }
  const double samples = analysis::ringing_samples(worst);
  const double milliseconds = analysis::ringing_milliseconds(worst, subject.whole.samplerate);
  verdict.measured["ringing_samples"] = samples;
  verdict.measured["ringing_ms"] = milliseconds;
  verdict.fact(
      "stability",
      fmt::format("stable: the outermost pole is {:.3g} inside the unit circle", worst.margin));
  verdict.fact("ringing", fmt::format("{:.0f} samples, {} ms, until the slowest pole is 60 dB down",
                                      std::ceil(samples),
                                      milliseconds < 1000 ? fmt::format("{:.3g}", milliseconds)
                                                          : fmt::format("{:.0f}", milliseconds)));
  return true;
}

bool check_gain(const Subject &subject, Verdict &verdict) {
  const double gain = subject.roots.gain;
  double in_sections = 1.0;
  for (const analysis::Section &section : subject.sections) in_sections *= section.b0;
  verdict.measured["gain"] = gain;
  const double smallest = std::min(std::fabs(gain), std::fabs(in_sections));
  if (smallest >= std::numeric_limits<double>::min()) return true;
  verdict.problem("gain",
                  smallest == 0
                      ? "it is 0, because it is too small for a number: the filter is silent"
                      : fmt::format("{:.3g} is so small that it has lost digits", smallest),
                  subject.has_no_band() ? "mend the cutoffs first"
                                        : "a lower --order, a higher cutoff or a wider band, or "
                                          "several filters of a lower order in a row");
  return smallest > 0;
}

}  // namespace

bool check_health(const Subject &subject, Verdict &verdict) {
  const bool finite = is_finite(subject);
  verdict.measured["finite"] = finite;
  if (!finite) {
    verdict.problem("numbers", "not all of them are finite", remedy(subject));
    return false;
  }
  const bool stable = check_stability(subject, verdict);
  const bool sounds = check_gain(subject, verdict);
  return stable && sounds;
}

}  // namespace cli
