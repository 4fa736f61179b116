// `veltane response`: what a filter does, as numbers.

#include <array>
#include <numbers>
#include <utility>

#include <fmt/format.h>

#include "analysis/arrangement.h"
#include "analysis/impulse.h"
#include "analysis/phase.h"
#include "analysis/response.h"
#include "args/given_sections.h"
#include "args/saved_file.h"
#include "args/settings_options.h"
#include "args/shared_options.h"
#include "args/subcommands.h"
#include "base/messages.h"
#include "base/output_file.h"
#include "designer/designer.h"
#include "designer/published_filter.h"
#include "designer/refusal.h"
#include "designer/title.h"
#include "response/response_options.h"
#include "response/table.h"

namespace cli {
namespace {

constexpr std::array<std::string_view, 3> format_words{"text", "csv", "json"};
constexpr Option table_format_option{.names = "--format",
                                     .value = "WORD",
                                     .help = "Output format: text, csv, json [text]",
                                     .choices = format_words};

constexpr std::array options{&low_or_file_option, &high_option,         &points_option,
                             &linear_option,      &at_option,           &wrapped_option,
                             &impulse_option,     &step_option,         &length_option,
                             &sections_option,    &table_format_option, &output_option};

constexpr std::array<std::string_view, 3> examples{
    "veltane response --topology butterworth --order 4 --frequency 1000 --at 50 100 1000",
    "veltane response --response bandpass --frequency 300 3400 --from 20 --to 20000 --points 50",
    "veltane response --topology butterworth --impulse --step --length 20 --format csv"};

std::string description() {
  return "Prints what a filter does, for those who plot or compute elsewhere: the level in dB,\n"
         "the phase in degrees and the group delay over the frequency, or the impulse and step\n"
         "responses over time. 'veltane response FILE.json' takes the coefficients of a saved\n"
         "design as they are, and --sections FILE those of another program.";
}

constexpr char notes[] =
    "The level comes from the sections, phase and delay from the zeros and poles, as in pictures.\n"
    "Impulse and step run through the sections as 'veltane export' arranges them.\n"
    "The phase is continuous but for a rise of 180 degrees at each zero on the unit circle.\n";

constexpr double degrees = 180.0 / std::numbers::pi;

Table over_frequency(const designer::FilterForms &filter, const Arguments &arguments) {
  const std::optional<analysis::Roots> roots = designer::roots_of(filter);
  if (!roots)
    throw designer::Refusal(
        "these settings publish neither zeros and poles nor sections; --zpk-output on publishes "
        "both");
  const bool wrapped = arguments.given(wrapped_option);
  Table table;
  table.columns = {{"frequency_hz", "frequency (Hz)", {}},
                   {"level_db", "level (dB)", {}},
                   {"phase_deg", "phase (deg)", {}},
                   {"group_delay_samples", "delay (samples)", {}},
                   {"group_delay_ms", "delay (ms)", {}}};
  for (const double f : response_frequencies(arguments, filter.nyquist())) {
    const double w = f / filter.nyquist();
    const double level = filter.sections.empty() ? analysis::level_db(*roots, w)
                                                 : analysis::level_db(filter.sections, w);
    const double phase =
        wrapped ? analysis::wrapped_phase(*roots, w) : analysis::unwrapped_phase(*roots, w);
    const double delay = analysis::group_delay(*roots, w);
    const std::array row{f, level, phase * degrees, delay, delay / filter.samplerate * 1000.0};
    for (std::size_t i = 0; i < row.size(); ++i) table.columns[i].values.push_back(row[i]);
  }
  return table;
}

Table over_time(const designer::FilterForms &filter, const Arguments &arguments) {
  if (filter.sections.empty())
    throw designer::Refusal(
        "these settings publish no sections, so there is nothing to run; --zpk-output on and "
        "--sos-output on publish them");
  // Arranged, so that it is the response of the filter and not of its roundings.
  const analysis::Sections quiet =
      analysis::arranged(filter.sections, analysis::Structure::direct_2_transposed);
  const std::size_t length = length_in(arguments);
  Table table;
  table.columns = {{"sample", "sample", {}}, {"time_ms", "time (ms)", {}}};
  for (std::size_t i = 0; i < length; ++i) {
    table.columns[0].values.push_back(static_cast<double>(i));
    table.columns[1].values.push_back(static_cast<double>(i) / filter.samplerate * 1000.0);
  }
  if (arguments.given(impulse_option))
    table.columns.push_back({"impulse", "impulse", analysis::impulse_response(quiet, length)});
  if (arguments.given(step_option))
    table.columns.push_back({"step", "step", analysis::step_response(quiet, length)});
  return table;
}

// Whose response it is, with its name in one line.
struct ChosenFilter {
  std::string title;
  designer::FilterForms filter;
};

ChosenFilter chosen_filter(const Request &request) {
  const auto saved = from_in(request.arguments).file;
  if (auto given = given_sections(request.arguments)) {
    if (request.arguments.operand()) throw designer::Refusal(two_filters);
    if (saved)
      throw designer::Refusal(
          "--sections and --from FILE exclude each other: each of them is a filter");
    return {given->title, std::move(given->filter)};
  }
  if (const auto file = request.arguments.operand()) {
    const designer::SavedDesign kept = read_operand(request.arguments, *file);
    designer::Designer designer(request.module);
    OpenedFilter found = opened_filter(designer, kept, *file);
    return {designer::title(found.design), std::move(found.filter)};
  }
  const designer::Settings settings = requested_settings(request.arguments, saved);
  const designer::Design design = designer::Designer(request.module).design(settings);
  for (const std::string &remark : design.remarks) warn(remark);
  return {designer::title(design), designer::published_filter(design)};
}

int run(const Request &request) {
  const Arguments &arguments = request.arguments;
  const std::string format = arguments.choice(table_format_option);
  const auto file = arguments.value(output_option);
  check_kind(arguments);
  const ChosenFilter chosen = chosen_filter(request);
  const designer::FilterForms &filter = chosen.filter;
  Table table = arguments.given(impulse_option) || arguments.given(step_option)
                    ? over_time(filter, arguments)
                    : over_frequency(filter, arguments);
  table.title = chosen.title;
  table.samplerate = filter.samplerate;
  write_output(file, format == "json"  ? table_json(table, request.command)
                     : format == "csv" ? table_csv(table)
                                       : table_page(table));
  return 0;
}

}  // namespace

const Subcommand response_subcommand{
    .name = "response",
    .summary = "Prints level, phase and delay, or impulse and step, as numbers",
    .description = description,
    .options = options,
    .shared = SharedOptions::attributes_and_module,
    .operand = "FILE.json",
    .examples = examples,
    .notes = notes,
    .run = run};

}  // namespace cli
