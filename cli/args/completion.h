// Completion of command lines in shells, made from the same tables as the help.
#ifndef CLI_ARGS_COMPLETION_H
#define CLI_ARGS_COMPLETION_H

#include <array>
#include <span>
#include <string>
#include <string_view>

#include "args/command_line.h"

namespace cli {

inline constexpr std::array<std::string_view, 3> completion_shells{"bash", "zsh", "fish"};

/** @param shell  one of `completion_shells`
 *  @param own    the command line without a subcommand
 *  @return a script for that shell that completes subcommands, options, and the choices of an
 *          option; file names elsewhere */
std::string completion(std::string_view shell, const CommandLine &own,
                       std::span<const Subcommand *const> subcommands);

}  // namespace cli

#endif
