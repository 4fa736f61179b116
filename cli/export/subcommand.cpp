// `veltane export`: one filter in another program's layout.

#include <algorithm>
#include <array>
#include <optional>

#include <fmt/format.h>

#include "args/given_sections.h"
#include "args/nearest.h"
#include "args/saved_file.h"
#include "args/settings_options.h"
#include "args/shared_options.h"
#include "args/subcommands.h"
#include "base/messages.h"
#include "base/output_file.h"
#include "designer/refusal.h"
#include "layouts/exported_filter.h"
#include "layouts/layout.h"
#include "os/path.h"
#include "text/letters.h"

namespace cli {
namespace {

constexpr Option target_option{
    .names = "--for", .value = "TARGET", .help = "One of the targets above"};
constexpr Option file_option{
    .names = "-o,--output",
    .value = "FILE",
    .help =
        "Write to a file, either whole or not at all; the filter in it is named after the file"};
constexpr Option normalise_option{
    .names = "--normalise",
    .help =
        "Scale the filter to 0 dB at DC (highpass: at the Nyquist frequency; bandpass: at the "
        "centre of the band); a chebyshev-1 of even order to minus its ripple there, so that "
        "the ripple's top is 0 dB [off]"};
constexpr Option published_option{
    .names = "--as-published",
    .help =
        "Keep the sections in the order and with the gain that the module gives them, instead of "
        "arranging them for the least rounding noise [off]"};
constexpr Option spread_option{
    .names = "--spread-gain",
    .help =
        "With --as-published: distribute the gain over the sections, so that the signal is near "
        "its full level from each section to the next [off]"};
constexpr Option structure_option{
    .names = "--structure",
    .value = "STRUCTURE",
    .help =
        "How the routine for C and C++ computes a section: direct-2-transposed, direct-1 or "
        "state-variable [in doubles and with --as-published direct-2-transposed; in floats "
        "state-variable where that makes 6 dB less noise]",
    .choices = layouts::structure_words};
constexpr Option anyway_option{
    .names = "--anyway",
    .help =
        "Write a filter that makes too much noise in the target's floats or integers, too [off]"};

constexpr std::array options{&target_option,    &file_option,      &sections_option,
                             &normalise_option, &published_option, &spread_option,
                             &structure_option, &anyway_option};

constexpr std::array<std::string_view, 2> examples{
    "veltane export --for scipy --topology butterworth --order 4 --frequency 1000",
    "veltane export --for c --response bandpass --frequency 300 3400 -o band.h"};

std::string description() {
  std::string text =
      "Designs one filter and writes its second-order sections in the layout of another program;\n"
      "'veltane export FILE.json --for TARGET' takes the coefficients of a saved design as they "
      "are,\n"
      "and --sections FILE those of another program.\n"
      "The sections are arranged so that they run with the least rounding noise.\n"
      "A comment in the file holds the equation, the sign of the feedback terms, the sample rate\n"
      "and the command that makes it again. Numbers have 17 significant digits, 9 for targets\n"
      "with floats, and are integers in fixed point.\n\nTargets:\n";
  for (const layouts::Target &target : layouts::targets())
    text += fmt::format("  {:<19}{}\n", target.name, target.summary);
  return text;
}

std::optional<analysis::Structure> wanted_structure(const Arguments &arguments) {
  if (!arguments.given(structure_option)) return std::nullopt;
  return layouts::structure_named(arguments.choice(structure_option));
}

const layouts::Target &target_meant_by(const std::string &word) {
  const std::string name = text::lower_case(word);
  std::vector<std::string_view> names;
  for (const layouts::Target &target : layouts::targets()) names.emplace_back(target.name);
  const bool known = std::find(names.begin(), names.end(), name) != names.end();
  if (const auto near = known ? std::nullopt : nearest(name, names))
    throw designer::Refusal(fmt::format("--for cannot be '{}'; did you mean {}?", word, *near));
  return layouts::target_named(known ? name : word);
}

layouts::Request layout_request(const Request &request, const layouts::Target &target) {
  const Arguments &arguments = request.arguments;
  const auto file = arguments.value(file_option);
  const std::string stem = file && *file != "-" ? os::name_of(os::path_of(*file).stem()) : "";
  layouts::Request wanted{layouts::identifier_for(stem), request.command};
  if (arguments.given(normalise_option)) wanted.level = layouts::Level::normalised;
  const bool published = arguments.given(published_option), spread = arguments.given(spread_option);
  // The gain of arranged sections is spread anyway; what has no sections cannot do either.
  if (spread && (published || target.form == layouts::Form::lists))
    wanted.arrangement = layouts::Arrangement::published_spread;
  else if (published)
    wanted.arrangement = layouts::Arrangement::published;
  if (arguments.given(sections_option)) wanted.source = layouts::Source::elsewhere;
  if (arguments.given(anyway_option)) wanted.noisy = layouts::Noisy::written;
  wanted.structure = wanted_structure(arguments);
  return wanted;
}

void warn_of(const std::vector<std::string> &remarks) {
  for (const std::string &remark : remarks) warn(remark);
}

// A new design, or a saved one with its coefficients as they are.
designer::Design exported_design(const Request &request) {
  const Arguments &arguments = request.arguments;
  if (const auto file = arguments.operand()) {
    const designer::SavedDesign saved = read_operand(arguments, *file);
    designer::Designer designer(request.module);
    return designer::opened(designer, saved, in_quotes(*file));
  }
  const designer::Settings settings = layouts::with_sections(requested_settings(arguments));
  return designer::Designer(request.module).design(settings);
}

layouts::ExportedFilter exported_filter(const Request &request, const layouts::Target &target,
                                        const layouts::Request &wanted) {
  if (const auto given = given_sections(request.arguments)) {
    if (request.arguments.operand()) throw designer::Refusal(two_filters);
    return layouts::exported_filter(given->title, given->filter, target, wanted);
  }
  const designer::Design design = exported_design(request);
  warn_of(design.remarks);
  return layouts::exported_filter(design, target, wanted);
}

int run(const Request &request) {
  const Arguments &arguments = request.arguments;
  const auto name = arguments.value(target_option);
  if (!name) throw designer::Refusal("veltane export needs --for TARGET; --help lists the targets");
  const layouts::Target &target = target_meant_by(*name);
  const layouts::Request wanted = layout_request(request, target);
  layouts::check(wanted, target);
  const layouts::ExportedFilter filter = exported_filter(request, target, wanted);
  warn_of(filter.remarks);
  write_output(arguments.value(file_option), target.write(filter));
  return 0;
}

}  // namespace

const Subcommand export_subcommand{.name = "export",
                                   .summary = "Writes one filter in another program's layout",
                                   .description = description,
                                   .options = options,
                                   .shared = SharedOptions::settings_and_module,
                                   .operand = "FILE.json",
                                   .examples = examples,
                                   .run = run};

}  // namespace cli
