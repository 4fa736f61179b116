// `veltane plot`: a figure of one filter or several.

#include <algorithm>
#include <array>
#include <cctype>

#include <fmt/format.h>

#include "args/given_sections.h"
#include "args/saved_file.h"
#include "args/settings_options.h"
#include "args/shared_options.h"
#include "args/subcommands.h"
#include "base/messages.h"
#include "base/output_file.h"
#include "designer/refusal.h"
#include "designer/title.h"
#include "gnuplot/picture.h"
#include "os/path.h"
#include "pictures/filter_names.h"
#include "pictures/warnings.h"
#include "plot/figure_options.h"
#include "text/letters.h"
#include "text/shell.h"

namespace cli {
namespace {

constexpr std::array options{&picture_option,     &compare_option, &sections_option,
                             &names_option,       &title_option,   &range_option,
                             &linear_axis_option, &floor_option,   &width_option};

constexpr std::array<std::string_view, 2> examples{
    "veltane plot --topology butterworth --order 4 --frequency 1000 -o lowpass.svg",
    "veltane design --format json -o five.json && veltane plot --order 8 --compare five.json "
    "-o both.png"};

std::string description() {
  return "Draws one filter, or several over one another: the level, the passband enlarged, phase,\n"
         "group delay, zeros and poles, impulse and step responses. Cutoffs, the -3 dB points, "
         "and\n"
         "the ripple or attenuation asked for are marked. It needs gnuplot. A setting that is not\n"
         "given keeps its default, which is shown in brackets. 'veltane plot FILE.json -o "
         "PICTURE'\n"
         "draws a saved design, and --sections FILE a filter of another program.";
}

gnuplot::Format format_of(const std::string &file) {
  const std::string ending = text::lower_case(os::name_of(os::path_of(file).extension()));
  if (ending == ".svg") return gnuplot::Format::svg;
  if (ending == ".png") return gnuplot::Format::png;
  if (ending == ".pdf") return gnuplot::Format::pdf;
  throw designer::Refusal(
      fmt::format("--output takes a file whose name ends in .svg, .png or .pdf, not '{}'", file));
}

pictures::DrawnFilter designed(designer::Designer &designer, const designer::Settings &settings) {
  const designer::Design design = designer.design(settings);
  for (const std::string &remark : design.remarks) warn(remark);
  pictures::DrawnFilter filter =
      pictures::drawn_filter(designer::published_filter(design), "the filter");
  filter.name = designer::title(design);
  return filter;
}

designer::SavedDesign read_compared(const std::string &file) {
  designer::SavedDesign stored = read_saved_design(file);
  if (stored.dictionary.empty())
    throw designer::Refusal(in_quotes(file) +
                            " has settings but no filter; 'veltane design --format json -o FILE' "
                            "saves both");
  return stored;
}

pictures::DrawnFilter saved(designer::Designer &designer, const designer::SavedDesign &stored,
                            const std::string &file) {
  const OpenedFilter found = opened_filter(designer, stored, file);
  pictures::DrawnFilter filter = pictures::drawn_filter(found.filter, in_quotes(file));
  const std::string name = os::name_of(os::path_of(file).filename());
  filter.name = pictures::saved_filter_name(name, designer::title(found.design));
  return filter;
}

pictures::DrawnFilter foreign(const GivenSections &given) {
  pictures::DrawnFilter filter = pictures::drawn_without_settings(given.filter, "the filter");
  filter.name = given.title;
  return filter;
}

// The names that were given take the place of the usual ones.
void rename(std::vector<pictures::DrawnFilter> &filters, const Words &names) {
  if (names.empty()) return;
  if (names.size() != filters.size())
    throw designer::Refusal(fmt::format("--names takes a name for each filter, {} in all, not {}",
                                        filters.size(), names.size()));
  for (std::size_t i = 0; i < names.size(); ++i) filters[i].name = names[i];
}

// The filters that were asked for, in the order of the key.
std::vector<pictures::DrawnFilter> drawn_filters(const Request &request) {
  const Words files = request.arguments.values(compare_option);
  const auto operand = request.arguments.operand();
  const auto given = given_sections(request.arguments);
  if (given && operand) throw designer::Refusal(two_filters);
  const designer::Settings settings = requested_settings(request.arguments);
  const bool designs = !operand && !given && (files.empty() || !settings.empty());
  const std::size_t count = files.size() + (designs || operand || given ? 1 : 0);
  if (count > pictures::most_filters)
    throw designer::Refusal(fmt::format("a picture takes up to {} filters, and {} were given",
                                        pictures::most_filters, count));
  designer::Designer designer(request.module);
  std::vector<pictures::DrawnFilter> filters;
  const auto add = [&](const pictures::DrawnFilter &filter, const std::string &what) {
    for (const std::string &sentence : pictures::warnings(filter, what)) warn(sentence);
    filters.push_back(filter);
  };
  if (designs) add(designed(designer, settings), "the filter");
  if (given) add(foreign(*given), "the filter");
  if (operand)
    add(saved(designer, read_operand(request.arguments, *operand), *operand), in_quotes(*operand));
  for (const std::string &file : files)
    add(saved(designer, read_compared(file), file), in_quotes(file));
  rename(filters, request.arguments.values(names_option));
  return filters;
}

int run(const Request &request) {
  const Arguments &arguments = request.arguments;
  const auto file = arguments.value(picture_option);
  if (!file)
    throw designer::Refusal(
        "plot needs --output with a file whose name ends in .svg, .png or .pdf");
  const gnuplot::PictureType type{format_of(*file), width_in(arguments)};
  pictures::FigureOptions wanted;
  wanted.title = arguments.value(title_option);
  wanted.frequencies = frequencies_in(arguments);
  wanted.scale = scale_in(arguments);
  const std::vector<pictures::DrawnFilter> filters = drawn_filters(request);
  wanted.floor_db = floor_in(arguments, filters);
  const pictures::Figure figure = pictures::figure_of(filters, wanted);

  OutputFile out(os::path_of(*file));
  out.write(gnuplot::picture(figure, type, text::shell_line(request.command)));
  out.finish();
  return 0;
}

}  // namespace

const Subcommand plot_subcommand{
    .name = "plot",
    .summary = "Draws filters: level, phase, delay, zeros and poles, impulse and step",
    .description = description,
    .options = options,
    .shared = SharedOptions::settings_and_module,
    .operand = "FILE.json",
    .examples = examples,
    .run = run};

}  // namespace cli
