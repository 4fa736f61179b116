// `veltane plot`: a figure of one filter or several.

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <filesystem>

#include <fmt/format.h>

#include "options.h"
#include "output.h"
#include "plot/figure.h"
#include "plot/ranges.h"
#include "saved.h"
#include "settings_options.h"
#include "subcommands.h"
#include "title.h"
#include "text/printable.h"

namespace cli {
namespace {

constexpr int least_width = 500, most_width = 4000, usual_width = 1000;
// Half of what there is room for, in bytes.
constexpr std::size_t file_part = 14, name_part = 68, title_part = 55;

std::string lower_case(std::string text) {
  std::transform(text.begin(), text.end(), text.begin(), [](unsigned char c) {
    return c < 0x80 ? static_cast<char>(std::tolower(c)) : static_cast<char>(c);
  });
  return text;
}

plot::Format format_of(const std::string &file) {
  const std::string ending = lower_case(std::filesystem::path(file).extension().string());
  if (ending == ".svg") return plot::Format::svg;
  if (ending == ".png") return plot::Format::png;
  throw Refusal(
      fmt::format("--output takes a file whose name ends in .svg or .png, not '{}'", file));
}

double number_of(const std::string &option, const std::string &word) {
  const char *end = word.c_str() + word.size();
  char *stopped = nullptr;
  const double number = std::strtod(word.c_str(), &stopped);
  if (word.empty() || stopped != end || !std::isfinite(number))
    throw Refusal(fmt::format("{} takes numbers, not '{}'", option, word));
  return number;
}

int width_of(const Option &option) {
  const auto word = option.value();
  if (!word) return usual_width;
  const double width = number_of("--width", *word);
  if (width != std::floor(width) || width < least_width || width > most_width)
    throw Refusal(fmt::format("--width takes whole numbers of pixels from {} to {}, not '{}'",
                              least_width, most_width, *word));
  return static_cast<int>(width);
}

void set_range(plot::Axis &axis, const Option &option) {
  if (!option.given()) return;
  const Words words = option.values();
  if (words.size() != 2)
    throw Refusal(
        "--range takes two frequencies in Hz, the lowest and the highest, and one was "
        "given");
  const double low = number_of("--range", words[0]);
  const double high = number_of("--range", words[1]);
  if (!(low > 0.0 && low * 1.0001 < high && high <= 1e12 && low >= 1e-12))
    throw Refusal(fmt::format(
        "--range takes two frequencies in Hz above 0, the lower one first, not '{}' and '{}'",
        words[0], words[1]));
  axis = {low, high, true};
}

double floor_of(const Option &option, const std::vector<plot::Trace> &traces) {
  const auto word = option.value();
  if (!word) return plot::usual_floor(traces);
  const double floor = number_of("--floor", *word);
  const double peak = plot::highest_peak(traces);
  if (!(floor < peak - 1.0 && floor > -1e5))
    throw Refusal(fmt::format(
        "--floor takes a level in dB from -100000 to 1 dB below the peak, which is {:.4g}, not "
        "'{}'",
        peak, *word));
  return floor;
}

// `part` is how many bytes are kept on each side.
std::string brief(const std::string &text, std::size_t part) {
  return text::shortened(text::printable(text), part, part, "\u2026");
}

plot::Trace saved_trace(patchbay::Host &host, const std::string &file) {
  const std::string what = fmt::format("'{}'", file);
  const Design saved = read_saved(file);
  if (saved.dictionary.empty())
    throw Refusal(what +
                  " has settings and no filter; 'veltane design --format json -o FILE' "
                  "saves both");
  const Design design = saved_filter(host, file, saved);
  for (const std::string &remark : design.remarks) say(fmt::format("{}: {}", what, remark));
  try {
    plot::Trace trace = plot::trace(design, what);
    const std::string name = std::filesystem::path(file).filename().string();
    trace.name = fmt::format("{}: {}", brief(name, file_part), title(design));
    return trace;
  } catch (const Refusal &) {
    throw;
  } catch (const std::runtime_error &error) {
    throw Refusal(fmt::format("{}: {}", what, error.what()));
  }
}

void warn(const plot::Trace &trace, const std::string &what) {
  if (trace.silent)
    say(what +
        " is silent: its gain is too small for a number in the computer; its level is drawn "
        "without the gain, with the peak at 0 dB");
  if (trace.outside > 0)
    say(fmt::format("{} is unstable: {} of its poles lie outside the unit circle", what,
                    trace.outside));
}

}  // namespace

int plot_command(const Invocation &invocation) {
  patchbay::Host host;
  load_module(host, invocation.module);
  Options options(
      "veltane plot",
      "Draws one filter, or several over one another: the level, the passband enlarged, phase,\n"
      "group delay, zeros and poles. Cutoffs, the -3 dB points, and the ripple or attenuation\n"
      "that was asked for are drawn in. It needs gnuplot. Settings that are not given stay as a\n"
      "new box has them, which is what stands in brackets.",
      {"veltane plot --topology butterworth --order 4 --frequency 1000 -o lowpass.svg",
       "veltane design --format json -o five.json && veltane plot --order 8 --compare five.json "
       "-o both.png"});
  const Option &output =
      options.add("-o,--output", "FILE", "The picture; its name ends in .svg or .png");
  const Option &compare =
      options.add("--compare", "FILE...",
                  "Draw designs saved as JSON as well, up to 6 filters in all; only these where "
                  "no setting is given beside them",
                  Options::any_number);
  const Option &caption =
      options.add("--title", "TEXT", "The line over the picture [the settings of the filter]");
  const Option &range = options.add(
      "--range", "NUMBER NUMBER",
      "The frequencies that the level is drawn for, in Hz [from a tenth of the cutoff or lower, "
      "to half the sample rate]",
      2);
  const Option &floor =
      options.add("--floor", "NUMBER",
                  "The lowest level drawn, in dB [-120, for chebyshev-2 1/4 below its "
                  "attenuation]");
  const Option &width =
      options.add("--width", "NUMBER", "The picture's width in pixels: 500 to 4000 [1000]");
  const SettingsOptions settings(options, host);
  options.parse(invocation.rest);

  const auto file = output.value();
  if (!file) throw Refusal("plot needs --output with a file whose name ends in .svg or .png");
  plot::Figure figure;
  figure.format = format_of(*file);
  figure.width = width_of(width);
  const Words saved = compare.values();
  const Settings asked = settings.settings();
  const bool designs = saved.empty() || !asked.empty();
  if (saved.size() + (designs ? 1 : 0) > plot::most_traces)
    throw Refusal(fmt::format("a picture takes up to {} filters, and {} were given",
                              plot::most_traces, saved.size() + (designs ? 1 : 0)));
  if (designs) {
    const Design design = run_design(host, asked);
    for (const std::string &remark : design.remarks) say(remark);
    figure.traces.push_back(plot::trace(design, "the filter"));
    figure.traces.back().name = title(design);
    warn(figure.traces.back(), "the filter");
  }
  for (const std::string &other : saved) {
    figure.traces.push_back(saved_trace(host, other));
    warn(figure.traces.back(), fmt::format("'{}'", other));
  }
  const bool one = figure.traces.size() == 1;
  figure.title =
      brief(caption.value().value_or(one ? figure.traces.front().name
                                         : fmt::format("{} filters", figure.traces.size())),
            title_part);
  for (std::size_t i = 0; i < figure.traces.size(); ++i)
    figure.traces[i].name = fmt::format("{}  {}", i + 1, brief(figure.traces[i].name, name_part));
  figure.frequencies = plot::whole_axis(figure.traces);
  figure.levels = plot::whole_levels(figure.traces, floor_of(floor, figure.traces));
  set_range(figure.frequencies, range);

  OutputFile out(*file);
  out.write(plot::picture(figure, shell_line(invocation)));
  out.finish();
  return 0;
}

}  // namespace cli
