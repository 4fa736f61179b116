// The options that describe what a filter has to do.
#ifndef CLI_ESTIMATE_DEMAND_OPTIONS_H
#define CLI_ESTIMATE_DEMAND_OPTIONS_H

#include <array>
#include <string_view>
#include <vector>

#include "args/arguments.h"
#include "args/option.h"
#include "designer/candidates.h"

namespace cli {

/** A demand, and its edges as they were typed. */
struct TypedDemand {
  designer::RatedDemand rated;
  std::vector<double> passband; /**< in the units of `rated` */
  std::vector<double> stopband;
};

inline constexpr std::array<std::string_view, 2> unit_choices{"hertz", "normalized"};

inline constexpr Option passband_option{
    .names = "--passband",
    .value = "NUMBER [NUMBER]",
    .help = "Edge of the passband in --units; two for a band response",
    .most = 2,
    .unit = Unit::hertz};
inline constexpr Option stopband_option{
    .names = "--stopband",
    .value = "NUMBER [NUMBER]",
    .help =
        "Edge of the stopband in --units; as many as for the passband. The edges fix the "
        "response",
    .most = 2,
    .unit = Unit::hertz};
inline constexpr Option ripple_option{.names = "--ripple",
                                      .value = "NUMBER",
                                      .help = "The maximum loss in the passband, in dB",
                                      .unit = Unit::decibels};
inline constexpr Option attenuation_option{.names = "--attenuation",
                                           .value = "NUMBER",
                                           .help = "The minimum loss in the stopband, in dB",
                                           .unit = Unit::decibels};
inline constexpr Option samplerate_option{.names = "--samplerate,--fs",
                                          .value = "NUMBER",
                                          .help = "The sample rate in whole Hz [48000]",
                                          .unit = Unit::hertz};
inline constexpr std::array<std::string_view, 4> family_choices{"all", "butterworth", "chebyshev-1",
                                                                "chebyshev-2"};
inline constexpr Option family_option{
    .names = "--topology",
    .value = "WORD",
    .help = "The family: all, butterworth, chebyshev-1, chebyshev-2 [all]",
    .choices = family_choices};

inline constexpr Option units_option{
    .names = "--units",
    .value = "WORD",
    .help = "hertz, normalized (fractions of the Nyquist frequency) [hertz]",
    .choices = unit_choices};

/** @return those of --topology. Raises designer::Refusal if it is none of them. */
std::vector<designer::Family> families_in(const Arguments &arguments);

/** Reads the other options. Raises designer::Refusal with what is wrong. */
TypedDemand demand_in(const Arguments &arguments);

}  // namespace cli

#endif
