#include "apply/filter.h"

#include <optional>
#include <utility>

#include <fmt/format.h>

#include "analysis/arrangement.h"
#include "args/given_sections.h"
#include "args/saved_file.h"
#include "args/settings_options.h"
#include "base/messages.h"
#include "designer/designer.h"
#include "designer/published_filter.h"
#include "designer/refusal.h"
#include "designer/runnable.h"

namespace cli {
namespace {

// Of the settings; none where they leave it open, or it is not a number, which the module refuses.
std::optional<double> samplerate_in(const designer::Settings &settings) {
  const designer::Values *values = settings.find("samplerate");
  if (values == nullptr || values->size() != 1) return std::nullopt;
  const auto rate = designer::number_in(values->front());
  return rate && *rate == 0.0 ? std::nullopt : rate;
}

bool in_hertz(const designer::Settings &settings) {
  return !settings.has("units") || settings.text("units") == "hertz";
}

designer::Settings at_rate_of(const Input &input, designer::Settings settings) {
  const double rate = input.source().samplerate();
  const auto asked = samplerate_in(settings);
  if (rate > 0.0) {
    if (asked && *asked != rate)
      throw designer::Refusal(fmt::format(
          "{} has a sample rate of {} Hz, and the settings say {} Hz: omit --samplerate "
          "to filter at the file's own",
          input.name(), rate, *asked));
    settings.set("samplerate", designer::Values{fmt::format("{}", rate)});
  } else if (!settings.has("samplerate") && in_hertz(settings)) {
    throw designer::Refusal(
        fmt::format("{} holds columns of numbers, which have no sample rate: give --samplerate, in "
                    "Hz",
                    input.name()));
  }
  return settings;
}

void check(const analysis::Sections &sections) {
  if (sections.empty())
    throw designer::Refusal(
        "these settings publish no sections, so there is nothing to run; --zpk-output on and "
        "--sos-output on publish them");
  designer::require_runnable(sections, "'veltane check'");
}

// Their own rate is that of the signal, unless somebody says another.
designer::FilterForms at_rate_of(const Input &input, designer::FilterForms given) {
  const double rate = input.source().samplerate();
  if (rate > 0.0 && !given.samplerate_assumed && given.samplerate != rate)
    throw designer::Refusal(
        fmt::format("{} has a sample rate of {} Hz, and the sections are for {} Hz", input.name(),
                    rate, given.samplerate));
  if (rate > 0.0) given.samplerate = rate;
  return given;
}

designer::FilterForms designed(const Request &request, const Input &input) {
  const designer::Settings settings = at_rate_of(input, requested_settings(request.arguments));
  const designer::Design design = designer::Designer(request.module).design(settings);
  for (const std::string &remark : design.remarks) warn(remark);
  if (const auto asked = samplerate_in(settings); asked && *asked != design.samplerate)
    throw designer::Refusal(fmt::format(
        "the module designs for whole sample rates in Hz, and not for {} Hz; with "
        "--units normalized, cutoffs are fractions of the Nyquist frequency at any rate",
        *asked));
  return designer::published_filter(design);
}

designer::FilterForms opened(const Request &request, const Input &input, const std::string &file) {
  const designer::SavedDesign saved = read_operand(request.arguments, file);
  designer::Designer designer(request.module);
  OpenedFilter found = opened_filter(designer, saved, file);
  const double rate = input.source().samplerate();
  if (rate > 0.0 && rate != found.filter.samplerate)
    throw designer::Refusal(fmt::format(
        "{} has a sample rate of {} Hz, and {} holds coefficients for {} Hz; --from {} designs its "
        "filter anew at the signal's",
        input.name(), rate, in_quotes(file), found.filter.samplerate, file));
  return std::move(found.filter);
}

}  // namespace

RunningFilter running_filter(const Request &request, const Input &input,
                             const std::optional<std::string> &saved) {
  const auto given = given_sections(request.arguments);
  if (given && saved) throw designer::Refusal(two_filters);
  const designer::FilterForms filter = given   ? at_rate_of(input, given->filter)
                                       : saved ? opened(request, input, *saved)
                                               : designed(request, input);
  check(filter.sections);
  return {analysis::arranged(filter.sections, analysis::Structure::direct_2_transposed),
          filter.samplerate};
}

}  // namespace cli
