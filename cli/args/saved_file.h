// Files with saved designs.
#ifndef CLI_ARGS_SAVED_FILE_H
#define CLI_ARGS_SAVED_FILE_H

#include <string>

#include "args/arguments.h"
#include "designer/designer.h"
#include "designer/published_filter.h"
#include "designer/saved_design.h"

namespace cli {

/** @return what a sentence calls a file: its name in quotes. */
std::string in_quotes(const std::string &file);

/** @param file  its name; "-" for standard input
 *  Raises designer::Refusal when it cannot be read or is not a saved design. */
designer::SavedDesign read_saved_design(const std::string &file);

/**
 * The saved design that is a subcommand's operand, whose coefficients are taken as they are.
 * Raises designer::Refusal when settings were given beside it, it cannot be read, or it holds
 * settings but no coefficients.
 */
designer::SavedDesign read_operand(const Arguments &arguments, const std::string &file);

/** The filter of a file, and the design that it was taken from. */
struct OpenedFilter {
  designer::Design design;
  designer::PublishedFilter filter;
};

/**
 * The filter of a saved design that was read from a file. Says on standard error what became of its
 * settings, with the file's name.
 * Raises designer::Refusal as `designer::opened` and `designer::filter_in_file`.
 */
OpenedFilter opened_filter(designer::Designer &designer, const designer::SavedDesign &saved,
                           const std::string &file);

}  // namespace cli

#endif
