// `veltane apply`: a signal through one filter.

#include <array>
#include <cmath>

#include <fmt/format.h>

#include "apply/filter.h"
#include "apply/filtering.h"
#include "apply/input.h"
#include "apply/output.h"
#include "args/shared_options.h"
#include "args/subcommands.h"
#include "base/messages.h"
#include "designer/refusal.h"

namespace cli {
namespace {

constexpr Option file_option{
    .names = "-o,--output",
    .value = "FILE",
    .help =
        "Write to a file, either whole or not at all; its ending says what it becomes: wav, flac, "
        "aiff, ogg, au, caf, rf64, w64, csv, txt or tsv [what the input is, to standard output]"};
constexpr Option bits_option{
    .names = "--bits",
    .value = "WORD",
    .help = "Samples of a sound file: 8, 16, 24, 32, float, double [as the input]",
    .choices = signals::encoding_words};
constexpr Option column_option{
    .names = "--column",
    .value = "WORD...",
    .help =
        "The columns to filter, by number from 1 or by name, or all; the others stay as they are "
        "[the only one]",
    .most = Option::any_number};
constexpr Option zero_phase_option{
    .names = "--zero-phase",
    .help =
        "Filter forwards and then backwards: no phase, no delay, and twice the attenuation [off]"};
constexpr Option tail_option{
    .names = "--tail",
    .help =
        "Let the filter ring out after the end, until it stays 120 dB below the peak, for ten "
        "minutes at most [off]"};

constexpr std::array options{&file_option,       &bits_option, &column_option,
                             &zero_phase_option, &tail_option, &sections_option};

constexpr std::array<std::string_view, 2> examples{
    "seq 0 499 | awk '{print sin($1 / 8)}' | veltane apply --samplerate 500 --topology butterworth "
    "--order 4 --frequency 40 - -o filtered.csv",
    "veltane apply filtered.csv --samplerate 500 --topology butterworth --response bandstop "
    "--frequency 48 52 --zero-phase -o clean.csv"};

std::string description() {
  return "Filters a signal: a sound file (WAV, FLAC, AIFF, Ogg and others) or columns of numbers.\n"
         "FILE is read, - is standard input. The filter is designed for the sample rate of the\n"
         "sound file; columns need --samplerate. All channels are filtered, in doubles, in memory\n"
         "that does not grow with the signal. 'veltane apply FILE.json FILE' takes the\n"
         "coefficients of a saved design as they are, and --sections FILE those of another "
         "program.";
}

constexpr char notes[] =
    "Columns are separated by tabs, semicolons, commas or blanks; the first line may name them.\n"
    "Numbers have decimal points. Everything but the filtered numbers stays as it is.\n"
    "\n"
    "Samples beyond full scale are clipped where the file holds integers, and their number is\n"
    "said. --zero-phase continues both ends by a point reflection, as SciPy's sosfiltfilt does;\n"
    "a temporary file holds the signal meanwhile, of 8 bytes a sample, in the folder that TMPDIR\n"
    "names.\n";

void check_tail(const Request &request, const Input &input) {
  if (!request.arguments.given(tail_option)) return;
  if (request.arguments.given(zero_phase_option))
    throw designer::Refusal(
        "--tail and --zero-phase exclude each other: filtered backwards, a signal has no tail");
  const signals::ColumnReader *columns = input.columns();
  if (columns != nullptr && columns->layout().columns != columns->channels())
    throw designer::Refusal(fmt::format(
        "--tail adds lines to {}, for which its other columns have no values", input.name()));
}

double decibels(double level) { return 20.0 * std::log10(level); }

void warn_of(const Passage &passage, const Input &input, const Output &output) {
  if (passage.peak_in == 0.0)
    warn(fmt::format("{} is silent: all of its samples are 0", input.name()));
  if (!passage.tail_is_complete)
    warn(fmt::format("the tail is cut off after {} s, and the filter still rings", longest_tail));
  if (const std::uint64_t clipped = output.sink().clipped(); clipped > 0)
    warn(fmt::format(
        "{} of {} samples were clipped, as the output peaks {:.2f} dB above full "
        "scale{}",
        clipped, passage.frames * input.source().channels(), decibels(passage.peak_out),
        signals::integer_bits(*output.format()) > 0 ? "; --bits float keeps them" : ""));
}

int run(const Request &request) {
  const Arguments &arguments = request.arguments;
  const Words &files = arguments.operands();
  if (files.empty())
    throw designer::Refusal(
        "veltane apply needs the name of a file to filter, or - for standard input");
  const std::string &file = files.back();
  const auto saved = files.size() > 1 ? std::optional(files.front()) : std::nullopt;
  if (file == "-" && (saved == "-" || arguments.value(from_option) == "-" ||
                      arguments.value(sections_option) == "-"))
    throw designer::Refusal(
        "the signal and the filter both read standard input: give one of them a file");
  OutputRequest wanted{arguments.value(file_option), std::nullopt};
  if (arguments.given(bits_option)) wanted.bits = arguments.choice(bits_option);
  const Direction direction =
      arguments.given(zero_phase_option) ? Direction::both_ways : Direction::forwards;
  const Ending ending = arguments.given(tail_option) ? Ending::rung_out : Ending::with_the_input;
  const Input input(file, arguments.values(column_option));
  check_tail(request, input);
  const RunningFilter chosen = running_filter(request, input, saved);
  Output output(wanted, input, chosen.samplerate);
  const Passage passage =
      filter(input.source(), output.sink(), chosen.sections, chosen.samplerate, direction, ending);
  output.finish();
  warn_of(passage, input, output);
  return 0;
}

}  // namespace

const Subcommand apply_subcommand{.name = "apply",
                                  .summary = "Filters a sound file, or columns of numbers",
                                  .description = description,
                                  .options = options,
                                  .shared = SharedOptions::settings_and_module,
                                  .operand = "FILE",
                                  .most_operands = 2,
                                  .examples = examples,
                                  .notes = notes,
                                  .run = run};

}  // namespace cli
