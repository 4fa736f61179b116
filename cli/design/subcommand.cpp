// `veltane design`: one filter, as a page or as JSON; or many.

#include <array>
#include <charconv>
#include <cstddef>
#include <string>
#include <system_error>

#include <fmt/format.h>

#include "args/settings_options.h"
#include "args/shared_options.h"
#include "args/subcommands.h"
#include "base/messages.h"
#include "base/output_file.h"
#include "design/all_lines.h"
#include "design/batch.h"
#include "design/page.h"
#include "designer/refusal.h"
#include "layouts/document.h"

namespace cli {
namespace {

constexpr Option batch_option{
    .names = "--batch",
    .value = "FILE",
    .help = "Design one filter for each line of settings, such as {\"order\": 4}"};

constexpr Option first_line_option{
    .names = "--first-line",
    .value = "N",
    .help = "Count the lines of --batch from N, for a part of a file [1]"};

constexpr std::array options{&format_option, &output_option, &batch_option, &first_line_option};

constexpr std::array<std::string_view, 4> examples{
    "veltane design --topology butterworth --order 4 --frequency 1000",
    "veltane design --response bandpass --frequency 300 3400 --format json -o band.json",
    "veltane design --from band.json --order 8",
    "echo '{\"order\": 4}' | veltane design --batch -"};

std::string description() {
  return "Designs one filter and prints it: zeros, poles and gain, second-order sections, and, if\n"
         "asked for, the transfer function, as the object publishes them. A setting that is not\n"
         "given keeps its default, which is shown in brackets.";
}

constexpr char notes[] =
    "--batch reads one JSON object per line; - is standard input. It writes one JSON result per\n"
    "line, in the same order, using all processors. Settings given beside it apply to lines\n"
    "without their own. A line that fails becomes {\"line\": N, \"error\": \"...\"}; the others\n"
    "are still designed. Lines are counted from --first-line: parts of a file that are designed\n"
    "one by one give the results of the whole file.\n"
    "\n"
    "The exit status is 0 on success, 1 when lines of a batch failed, 2 when the request was\n"
    "wrong, and 3 when something else failed.\n";

constexpr std::size_t last_line =
    1'000'000'000'000'000;  // which every reader of JSON holds exactly

std::size_t first_line(const Arguments &arguments) {
  const auto text = arguments.value(first_line_option);
  if (!text) return 1;
  std::size_t number = 0;
  const char *const end = text->data() + text->size();
  const auto [stop, error] = std::from_chars(text->data(), end, number);
  if (error != std::errc() || stop != end || number < 1 || number > last_line)
    throw designer::Refusal(
        fmt::format("--first-line takes a whole number from 1 to {}, not '{}'", last_line, *text));
  return number;
}

int design_many(const Request &request, const std::string &lines) {
  if (works_for_another(lines, request.module)) return 0;
  const Arguments &arguments = request.arguments;
  if (arguments.given(format_option) && arguments.choice(format_option) != "json")
    throw designer::Refusal("--batch writes JSON: omit --format, or give json");
  if (lines == "-" && arguments.value(from_option) == "-")
    throw designer::Refusal(
        "--batch - and --from - both read standard input: give one of them a file");
  const BatchInput input{.file = lines, .first_line = first_line(arguments)};
  const auto file = arguments.value(output_option);
  const designer::Settings common = requested_settings(arguments);
  return run_batch(request.module, common, input, file);
}

int design_one(const Request &request) {
  const Arguments &arguments = request.arguments;
  if (arguments.given(first_line_option))
    throw designer::Refusal("--first-line counts the lines of --batch: give that as well");
  const bool json = arguments.choice(format_option) == "json";
  const auto file = arguments.value(output_option);
  const designer::Settings settings = requested_settings(arguments);
  const designer::Design design = designer::Designer(request.module).design(settings);
  for (const std::string &remark : design.remarks) warn(remark);
  write_output(file,
               json ? layouts::design_document(design, request.command) : design_page(design));
  return 0;
}

int run(const Request &request) {
  const auto lines = request.arguments.value(batch_option);
  return lines ? design_many(request, *lines) : design_one(request);
}

}  // namespace

const Subcommand design_subcommand{.name = "design",
                                   .summary = "Designs one filter and prints it",
                                   .description = description,
                                   .options = options,
                                   .shared = SharedOptions::settings_and_module,
                                   .examples = examples,
                                   .notes = notes,
                                   .run = run};

}  // namespace cli
