// What the settings of a filter mean, and what became of those that were asked for.

#include <algorithm>
#include <numbers>
#include <optional>

#include <fmt/format.h>

#include "subject.h"

namespace cli {
namespace {

constexpr double lowest_cutoff = 0.0001;
constexpr double highest_cutoff = 0.9999;

// None where it is no number.
std::optional<double> number(const patchbay::Value &value) {
  if (const auto *integer = std::get_if<t_long>(&value)) return static_cast<double>(*integer);
  if (const auto *real = std::get_if<double>(&value)) return *real;
  const patchbay::Values read = patchbay::parse_line(std::get<std::string>(value));
  if (read.size() != 1 || std::holds_alternative<std::string>(read[0])) return std::nullopt;
  return number(read[0]);
}

std::string option(std::string name) {
  std::replace(name.begin(), name.end(), '_', '-');
  return "--" + name;
}

void check_clipping(const Subject &subject, Verdict &verdict) {
  for (const auto &[name, asked] : subject.requested) {
    if (name != "order" && name != "passband_ripple" && name != "stopband_attenuation") continue;
    const double used = subject.numbers(name).front();
    if (const auto wanted = number(asked.front()); wanted && *wanted != used)
      verdict.problem(name,
                      fmt::format("{} is asked for and {} is used", patchbay::to_text(asked[0]),
                                  subject.setting(name)),
                      fmt::format("{} {}; 'veltane design --help' tells what is allowed",
                                  option(name), subject.setting(name)));
  }
}

void check_order(const Subject &subject, Verdict &verdict) {
  const std::string order = subject.setting("order");
  const std::size_t poles = subject.roots.poles.size();
  const std::size_t sections = subject.sections.size();
  verdict.measured["poles"] = poles;
  verdict.measured["sections"] = sections;
  if (subject.has_two_cutoffs())
    verdict.fact("order",
                 fmt::format("{} is that of the lowpass it is made from; the {} has twice as many "
                             "poles: {}, in {} sections",
                             order, subject.whole.response, poles, sections));
  else
    verdict.fact("order", fmt::format("{}: {} poles, in {} sections", order, poles, sections));
}

void check_samplerate(const Subject &subject, Verdict &verdict) {
  const double rate = subject.whole.samplerate;
  verdict.measured["samplerate"] = rate;
  const bool assumed = subject.numbers("samplerate").front() < 1;
  verdict.fact("sample rate",
               fmt::format("{} Hz{}", rate, assumed ? ", assumed: --samplerate sets another" : ""));
}

std::string meaning(const Subject &subject) {
  if (subject.whole.topology == "chebyshev-1")
    return fmt::format("there the passband's ripple of {} dB ends",
                       subject.setting("passband_ripple"));
  if (subject.whole.topology == "chebyshev-2")
    return fmt::format("there the stopband begins, {} dB down",
                       subject.setting("stopband_attenuation"));
  return "there the level is -3.01 dB, half the power";
}

void check_cutoff_in_range(const Subject &subject, double asked, double w, Verdict &verdict) {
  const bool hertz = subject.setting("units") == "hertz";
  const double unit = hertz ? subject.whole.samplerate / 2 : 1.0;
  if (asked / unit >= lowest_cutoff && asked / unit <= highest_cutoff) return;
  const bool low = !(asked / unit > lowest_cutoff);
  const std::string shown = fmt::format("{}{}", asked, hertz ? " Hz" : "");
  const std::string limit = hertz ? subject.hz(w) : fmt::format("{}", w);
  std::string change = fmt::format("choose a cutoff of {} or {}", limit, low ? "more" : "less");
  if (low && hertz && asked > 0)
    change += ", or --units normalized if a fraction of the Nyquist frequency is meant";
  if (!low) change += hertz ? ", or a higher --samplerate" : ", or --units hertz if Hz are meant";
  verdict.problem(
      "cutoff",
      fmt::format("{} is too {}, {} is used: cutoffs lie between {} and {} of the "
                  "Nyquist frequency, {}",
                  shown, low ? "low" : "high", limit, lowest_cutoff, highest_cutoff, subject.hz(1)),
      change);
}

void check_radians(const Subject &subject, Verdict &verdict) {
  std::string fractions;
  bool below_nyquist = true;
  for (std::size_t i = 0; i < subject.whole.cutoffs.size(); ++i) {
    const double fraction = subject.numbers("frequency").at(i) / std::numbers::pi;
    below_nyquist = below_nyquist && fraction < 1;
    fractions += fmt::format(" {:.10g}", fraction);
  }
  verdict.problem("units",
                  "radians are not supported: the cutoffs given are not used, and those of a new "
                  "box are",
                  below_nyquist
                      ? fmt::format("--units normalized --frequency{}, which are these radians "
                                    "divided by pi",
                                    fractions)
                      : "--units hertz, or --units normalized for fractions of the Nyquist "
                        "frequency");
}

void check_band(const Subject &subject, Verdict &verdict) {
  if (!subject.has_no_band()) return;
  const std::vector<double> asked = subject.numbers("frequency");
  if (asked[0] > asked[1])
    verdict.problem("cutoff", "the two cutoffs are in reverse order",
                    fmt::format("give the lower one first: --frequency {} {}", asked[1], asked[0]));
  else
    verdict.problem(
        "cutoff",
        fmt::format(
            "the two cutoffs are {}, so that there is no band between them",
            asked[0] == asked[1] ? "equal" : "both " + subject.hz(subject.whole.cutoffs[0])),
        "give two cutoffs: --frequency LOWER UPPER");
}

void check_cutoffs(const Subject &subject, Verdict &verdict) {
  const std::vector<double> asked = subject.numbers("frequency");
  const std::vector<double> &used = subject.whole.cutoffs;
  verdict.measured["cutoffs_hz"] = Json::array();
  std::string text;
  for (const double w : used) {
    verdict.measured["cutoffs_hz"].push_back(w * subject.whole.samplerate / 2);
    text += (text.empty() ? "" : " and ") + subject.hz(w);
  }
  const std::string units = subject.setting("units");
  if (units == "normalized")
    text +=
        fmt::format(" ({}{}{} of the Nyquist frequency)", used[0], used.size() == 2 ? " and " : "",
                    used.size() == 2 ? fmt::format("{}", used[1]) : "");
  // A filter that does not work has no level there.
  Verdict unused;
  if (check_health(subject, unused) && !subject.has_no_band()) text += ": " + meaning(subject);
  verdict.fact("cutoff", text);
  if (units == "radians") {
    check_radians(subject, verdict);
  } else {
    for (std::size_t i = 0; i < used.size(); ++i)
      check_cutoff_in_range(subject, asked.at(i), used[i], verdict);
  }
  check_band(subject, verdict);
}

void check_unused(const Subject &subject, Verdict &verdict) {
  for (const auto &[name, values] : subject.requested)
    if (name == "frequency" && values.size() == 2 && !subject.has_two_cutoffs())
      verdict.note("cutoff",
                   fmt::format("a {} has one: {} is not used", subject.whole.response,
                               patchbay::to_text(values[1])),
                   "for two, --response bandpass or bandstop");
  const auto unused = [&](const char *name, const char *family) {
    if (subject.typed.contains(name) && subject.whole.topology != family)
      verdict.note(name, fmt::format("a {} has none: it is not used", subject.whole.topology),
                   fmt::format("for one, --topology {}", family));
  };
  unused("passband_ripple", "chebyshev-1");
  unused("stopband_attenuation", "chebyshev-2");
}

void check_published(const Subject &subject, Verdict &verdict) {
  const Published &published = subject.published;
  const bool roots = published.gain.has_value();
  const bool sections = !published.sections.empty();
  const bool transfer = subject.publishes_transfer();
  verdict.measured["published"] = {
      {"roots", roots}, {"sections", sections}, {"transfer_function", transfer}};
  std::string text;
  const auto add = [&](bool there, const char *form) {
    if (there) text += (text.empty() ? "" : "; ") + std::string(form);
  };
  add(roots, "zeros, poles and gain");
  add(sections, "sections");
  add(transfer, "transfer function");
  if (!text.empty()) verdict.fact("published", text);
  if (!sections && subject.numbers("sos_output").front() != 0)
    verdict.problem("published",
                    "the sections are asked for and empty: they are made from the published zeros "
                    "and poles, which are switched off",
                    "--zpk-output on");
  else if (text.empty())
    verdict.problem("published", "no form of the filter is", "--zpk-output on --sos-output on");
}

}  // namespace

void check_settings(const Subject &subject, Verdict &verdict) {
  check_order(subject, verdict);
  check_samplerate(subject, verdict);
  check_cutoffs(subject, verdict);
  check_clipping(subject, verdict);
  check_unused(subject, verdict);
  check_published(subject, verdict);
}

}  // namespace cli
