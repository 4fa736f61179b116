// `veltane check`: whether a filter is what its settings ask for, in plain words.

#include <unistd.h>

#include <array>
#include <set>

#include <fmt/format.h>

#include "args/given_sections.h"
#include "args/saved_file.h"
#include "args/settings_options.h"
#include "args/shared_options.h"
#include "args/subcommands.h"
#include "base/output_file.h"
#include "check/page.h"
#include "designer/refusal.h"
#include "verdict/verdict.h"

namespace cli {
namespace {

constexpr std::array options{&sections_option, &format_option, &output_option};

constexpr std::array<std::string_view, 2> examples{
    "veltane check --topology butterworth --order 4 --frequency 1000",
    "veltane check --response bandpass --frequency 300 3400 --tf-output on --format json"};

std::string description() {
  return "Checks one filter: what its settings mean, whether it is stable and reaches the levels\n"
         "asked for, and which of its forms can be trusted. The exit status is 0 when the filter\n"
         "is sound and 1 when it has a problem; each problem says what to change.\n"
         "'veltane check FILE.json [OPTIONS]' checks the coefficients of a saved design as they\n"
         "are, and --sections FILE those of another program; otherwise the settings say which\n"
         "filter is designed and checked.";
}

verdict::FilterUnderTest saved(const Request &request, const std::string &file) {
  const designer::SavedDesign design = read_operand(request.arguments, file);
  designer::Designer designer(request.module);
  return verdict::saved_filter(designer, design, in_quotes(file));
}

verdict::FilterUnderTest designed(const Request &request) {
  const designer::Settings settings = requested_settings(request.arguments);
  std::set<std::string> typed;
  for (const auto &setting : typed_settings(request.arguments)) typed.insert(setting.name);
  designer::Designer designer(request.module);
  return verdict::new_filter(designer, settings, typed);
}

verdict::FilterUnderTest filter_under_test(const Request &request) {
  const auto file = request.arguments.operand();
  const auto given = given_sections(request.arguments);
  if (file && given) throw designer::Refusal(two_filters);
  if (given) return verdict::foreign_filter(given->title, given->filter);
  return file ? saved(request, *file) : designed(request);
}

int run(const Request &request) {
  const bool json = request.arguments.choice(format_option) == "json";
  const auto output = request.arguments.value(output_option);
  const verdict::Verdict verdict = verdict::judge(filter_under_test(request));
  const Colour colour = output ? Colour::off : colour_for(STDOUT_FILENO);
  write_output(output,
               json ? check_document(verdict, request.command) : check_page(verdict, colour));
  return verdict.problems() == 0 ? 0 : 1;
}

}  // namespace

const Subcommand check_subcommand{.name = "check",
                                  .summary = "Checks one filter and says what is wrong with it",
                                  .description = description,
                                  .options = options,
                                  .shared = SharedOptions::settings_and_module,
                                  .operand = "FILE.json",
                                  .examples = examples,
                                  .run = run};

}  // namespace cli
