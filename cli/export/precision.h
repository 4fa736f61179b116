// Whether a target's numbers can hold a filter.
#ifndef VELTANE_CLI_EXPORT_PRECISION_H
#define VELTANE_CLI_EXPORT_PRECISION_H

#include "analysis/filter.h"
#include "subcommand.h"

namespace cli {

/**
 * Raises Refusal when there are no sections, a coefficient is not finite, or all of a
 * numerator is zero or too small for a normal double.
 */
void check_sections(const analysis::Sections &sections);

/**
 * Rounds the sections to floats.
 * @param target      its name, for the sentences
 * @param samplerate  in Hz
 * @param remarks     gets a sentence when the response is not what it was
 * Raises Refusal when a numerator is outside the range of floats, or when a stable
 * filter becomes unstable.
 */
analysis::Sections in_floats(const analysis::Sections &sections, const std::string &target,
                             double samplerate, Words &remarks);

/**
 * Adds a sentence to `remarks` when the filter is not stable, and one when what a section
 * hands on is so small or large that digits are lost.
 * @param floats  whether the target computes in floats
 */
void check_cascade(const analysis::Sections &sections, bool floats, Words &remarks);

}  // namespace cli

#endif
