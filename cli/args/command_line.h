// A command line as its parts: what parsing, help, manual page and completion all read.
#ifndef CLI_ARGS_COMMAND_LINE_H
#define CLI_ARGS_COMMAND_LINE_H

#include <cstddef>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "args/arguments.h"
#include "args/subcommand.h"

namespace cli {

/** What may follow "veltane", or "veltane design". */
struct CommandLine {
  std::string name; /**< such as "veltane design" */
  std::string description;
  std::string_view operand; /**< what a word before the options means; empty if none is taken */
  std::size_t most_operands;
  std::vector<const Option *> options;
  std::span<const std::string_view> examples;
  std::string notes; /**< paragraphs with an empty line between them */
};

/** @return that of a subcommand, with the shared options after its own. */
CommandLine command_line(const Subcommand &subcommand);

/** @return what --help prints. */
std::string help(const CommandLine &line);

/**
 * Reads words. Names of options may be typed with underscores, and shortened as long as one option
 * is meant (`in_full`); the number of values of an option is checked when it is asked for.
 * @return the arguments; none if the words ask for help
 * Raises designer::Refusal for an unknown option, a word too many, or a switch with a value.
 */
std::optional<Arguments> parse(const CommandLine &line, const Words &words);

}  // namespace cli

#endif
