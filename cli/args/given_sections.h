// Sections of another program, named by --sections.
#ifndef CLI_ARGS_GIVEN_SECTIONS_H
#define CLI_ARGS_GIVEN_SECTIONS_H

#include <optional>
#include <string>

#include "args/arguments.h"
#include "designer/filter_forms.h"

namespace cli {

/** What to say of --sections beside the name of a saved design. */
inline constexpr char two_filters[] =
    "--sections and a saved design exclude each other: each of them is a filter";

struct GivenSections {
  std::string title;            /**< in one line: "3 sections of 'sos.csv', at 48000 Hz" */
  designer::FilterForms filter; /**< with nothing but sections */
};

/**
 * @return what --sections names, at the rate of --samplerate, else of the file, else of the audio;
 *         none if it was not given
 * Raises designer::Refusal when the file cannot be read or does not hold sections, when settings
 * other than the sample rate, or --from were given beside it, and when
 * the rate is not a number above 0.
 */
std::optional<GivenSections> given_sections(const Arguments &arguments);

}  // namespace cli

#endif
