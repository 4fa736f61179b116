// The levels that a filter reaches, against those that were asked for.

#include <algorithm>
#include <cmath>

#include <fmt/format.h>

#include "analysis/crossing.h"
#include "analysis/extremes.h"
#include "analysis/response.h"
#include "check_limits.h"
#include "subject.h"

namespace cli {
namespace {

// Rounded to what a reader wants, and never "-0".
std::string db(double level) {
  const double rounded = std::round(level * 1000) / 1000;
  return fmt::format("{:.6g} dB", rounded == 0 ? 0.0 : rounded);
}

class Levels {
 public:
  Levels(const Subject &subject, Verdict &verdict) : subject_(subject), verdict_(verdict) {}

  // A level that is not as it should be is a problem; one that is, is told by `summary`.
  void expect(const std::string &what, double reached, double asked) {
    if (std::fabs(reached - asked) <= tolerance_db) return;
    met_ = false;
    verdict_.problem(
        "levels", fmt::format("{} is {}, and should be {}", what, db(reached), db(asked)),
        subject_.saved ? "design it again: 'veltane design --from FILE.json'"
                       : "a lower --order, or cutoffs further from 0 and from the Nyquist "
                         "frequency");
  }

  void summary(const std::string &text) {
    if (met_) verdict_.fact("levels", text);
  }

 private:
  const Subject &subject_;
  Verdict &verdict_;
  bool met_ = true;
};

void check_half_power(const Subject &subject, Verdict &verdict) {
  Json list = Json::array();
  std::string text;
  for (const double w :
       analysis::half_power_points(subject.sections, subject.band, subject.whole.cutoffs, 0.0)) {
    list.push_back(w * subject.whole.samplerate / 2);
    if (!std::isnan(w)) text += (text.empty() ? "" : " and ") + subject.hz(w);
  }
  verdict.measured["half_power_hz"] = list;
  if (subject.whole.topology != "butterworth" && !text.empty()) verdict.fact("-3 dB", "at " + text);
}

void check_butterworth(const Subject &subject, const std::string &top, Levels &levels) {
  for (const double w : subject.whole.cutoffs)
    levels.expect("the level at " + subject.hz(w), analysis::level_db(subject.sections, w),
                  -analysis::half_power_db);
  levels.summary(fmt::format("{}, and -3.01 dB at the cutoff{}, as asked", top,
                             subject.has_two_cutoffs() ? "s" : ""));
}

void check_chebyshev_1(const Subject &subject, Verdict &verdict, Levels &levels) {
  const double ripple = subject.numbers("passband_ripple").front();
  const auto [highest, lowest] =
      analysis::extremes(subject.sections, analysis::passband(subject.band, subject.whole.cutoffs));
  verdict.measured["passband_highest_db"] = highest.db;
  verdict.measured["passband_lowest_db"] = lowest.db;
  levels.expect("the highest level of the passband", highest.db, 0.0);
  levels.expect("the lowest level of the passband", lowest.db, -ripple);
  levels.summary(
      fmt::format("the passband lies between {} and {}, as asked", db(lowest.db), db(highest.db)));
}

void check_chebyshev_2(const Subject &subject, const std::string &top, Verdict &verdict,
                       Levels &levels) {
  const double attenuation = subject.numbers("stopband_attenuation").front();
  const analysis::Peak highest =
      analysis::extremes(subject.sections, analysis::stopband(subject.band, subject.whole.cutoffs))
          .highest;
  verdict.measured["stopband_highest_db"] = highest.db;
  levels.expect("the highest level of the stopband", highest.db, -attenuation);
  levels.summary(fmt::format("{}, and at most {} in the stopband, as asked", top, db(highest.db)));
}

}  // namespace

void check_levels(const Subject &subject, Verdict &verdict) {
  const std::string &topology = subject.whole.topology;
  const double w = analysis::reference_frequency(subject.band, subject.whole.cutoffs);
  const double reached = analysis::level_db(subject.sections, w);
  const bool even =
      subject.numbers("order").front() / 2 == std::floor(subject.numbers("order").front() / 2);
  const double ripple = subject.numbers("passband_ripple").front();
  verdict.measured["reference_hz"] = w * subject.whole.samplerate / 2;
  verdict.measured["reference_db"] = reached;

  Levels levels(subject, verdict);
  levels.expect("the level at " + subject.hz(w), reached,
                topology == "chebyshev-1" && even ? -ripple : 0.0);
  const std::string top = fmt::format("{} at {}", db(reached), subject.hz(w));
  if (topology == "butterworth")
    check_butterworth(subject, top, levels);
  else if (topology == "chebyshev-1")
    check_chebyshev_1(subject, verdict, levels);
  else
    check_chebyshev_2(subject, top, verdict, levels);
  check_half_power(subject, verdict);
}

}  // namespace cli
