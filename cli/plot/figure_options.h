// The options that determine what a picture looks like.
#ifndef CLI_PLOT_FIGURE_OPTIONS_H
#define CLI_PLOT_FIGURE_OPTIONS_H

#include <optional>
#include <string_view>
#include <vector>

#include "args/arguments.h"
#include "args/option.h"
#include "pictures/axis.h"
#include "pictures/drawn_filter.h"

namespace cli {

inline constexpr Option picture_option{.names = "-o,--output",
                                       .value = "FILE",
                                       .help = "The picture; its name ends in .svg, .png or .pdf"};
inline constexpr Option compare_option{
    .names = "--compare",
    .value = "FILE...",
    .help =
        "Also draw designs saved as JSON, up to 6 filters in all; only these if no setting is "
        "given beside them",
    .most = Option::any_number};
inline constexpr Option names_option{
    .names = "--names",
    .value = "TEXT...",
    .help = "Names of the filters in the key, in its order [settings, and names of files]",
    .most = Option::any_number};
inline constexpr Option title_option{
    .names = "--title",
    .value = "TEXT",
    .help = "The title of the picture [the settings of the filter]"};
inline constexpr Option range_option{
    .names = "--range",
    .value = "NUMBER NUMBER",
    .help =
        "The frequencies of all panels, in Hz; the passband is enlarged within them if they meet "
        "[level: from a "
        "tenth of the cutoff or lower to half the sample rate, or around a narrow band; phase and "
        "delay: the passband]",
    .most = 2,
    .unit = Unit::hertz};
inline constexpr Option linear_axis_option{
    .names = "--linear", .help = "Linear frequency axes, which may begin with 0 Hz [off]"};
inline constexpr Option floor_option{
    .names = "--floor",
    .value = "NUMBER",
    .help =
        "The lowest level drawn, in dB [-120; for chebyshev-2, 5/4 of its attenuation below the "
        "peak]",
    .unit = Unit::decibels};
inline constexpr Option width_option{
    .names = "--width",
    .value = "NUMBER",
    .help = "The picture's width in pixels, in a PDF 96 to the inch: 500 to 4000 [1000]"};

/** Each raises designer::Refusal with what is wrong. */

/** @return the width in pixels. */
int width_in(const Arguments &arguments);

/** @return how frequencies lie along their axes. */
pictures::Scale scale_in(const Arguments &arguments);

/** @return the frequencies of the panels; none where they were not given. */
std::optional<pictures::Axis> frequencies_in(const Arguments &arguments);

/** @return the lowest level in dB, below the peak of these filters; none where it was not given. */
std::optional<double> floor_in(const Arguments &arguments,
                               const std::vector<pictures::DrawnFilter> &filters);

}  // namespace cli

#endif
