// Files with saved designs.
#ifndef CLI_ARGS_SAVED_FILE_H
#define CLI_ARGS_SAVED_FILE_H

#include <string>

#include "args/arguments.h"
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

}  // namespace cli

#endif
