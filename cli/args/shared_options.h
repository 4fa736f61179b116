// Options that several subcommands have.
#ifndef CLI_ARGS_SHARED_OPTIONS_H
#define CLI_ARGS_SHARED_OPTIONS_H

#include <array>

#include "args/option.h"

namespace cli {

inline constexpr std::array<std::string_view, 2> format_choices{"text", "json"};

inline constexpr Option format_option{.names = "--format",
                                      .value = "WORD",
                                      .help = "Output format: text, json [text]",
                                      .choices = format_choices};

inline constexpr Option output_option{
    .names = "-o,--output", .value = "FILE", .help = "Write to a file, either whole or not at all"};

inline constexpr Option sections_option{
    .names = "--sections",
    .value = "FILE",
    .help =
        "Take the sections that another program wrote instead of a design, a row each: b0 b1 b2 a1 "
        "a2, or b0 b1 b2 a0 a1 a2 as SciPy and Octave have them; --samplerate alone goes beside "
        "it"};

inline constexpr Option from_option{
    .names = "--from",
    .value = "FILE",
    .help =
        "Take the settings of a design saved as JSON; settings given beside it take precedence"};

inline constexpr Option module_option{
    .names = "--module", .value = "FILE", .help = "The module to load [the installed one]"};

}  // namespace cli

#endif
