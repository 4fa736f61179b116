// The structure that sections are run in.
#ifndef LAYOUTS_STRUCTURE_H
#define LAYOUTS_STRUCTURE_H

#include <string>
#include <vector>

#include "analysis/realization.h"
#include "layouts/request.h"
#include "layouts/target.h"

namespace layouts {

/** A filter at its level, before its sections are arranged. */
struct ScaledFilter {
  analysis::Sections sections; /**< in their published order */
  analysis::Roots roots;       /**< that they were made of; empty if they are not known */
};

/** @return its name in a sentence: "direct form I". */
std::string name_of(analysis::Structure structure);

struct StructuredFilter {
  analysis::Realization realization;
  std::vector<std::string> sentences; /**< for the comment of a file, each with its full stop */
};

/**
 * Arranges sections and gives them a structure: the target's own, the one asked for, or the one
 * that is best for the target's arithmetic.
 * Raises designer::Refusal if the filter has no form in the structure asked for.
 */
StructuredFilter in_structure(const ScaledFilter &filter, const Target &target,
                              const Request &request);

/** @return how to come to sections in floats that make less noise than is refused, or to others:
 *          what follows a semicolon in the sentence that refuses these. */
std::string way_to_less_noise(const ScaledFilter &filter, const Target &target,
                              const Request &request);

}  // namespace layouts

#endif
