// The manual page, in troff, made from the same tables as the help.
#ifndef CLI_ARGS_MANUAL_H
#define CLI_ARGS_MANUAL_H

#include <span>
#include <string>

#include "args/subcommand.h"

namespace cli {

/** @return the manual page of the command, with a section for each subcommand. */
std::string manual_page(std::span<const Subcommand *const> subcommands);

}  // namespace cli

#endif
