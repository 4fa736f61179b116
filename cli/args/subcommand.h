// What a subcommand of `veltane` is: a folder of cli/ with one of these in its subcommand.cpp, and
// one line in subcommands.inc.
#ifndef CLI_ARGS_SUBCOMMAND_H
#define CLI_ARGS_SUBCOMMAND_H

#include <cstddef>
#include <filesystem>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "args/arguments.h"
#include "args/option.h"
#include "base/words.h"

namespace cli {

/** What one call of a subcommand was asked for. */
struct Request {
  Words command; /**< "veltane" and all that was typed: the command that makes the result again */
  std::filesystem::path module; /**< the file to load: the one named, or the installed one */
  Arguments arguments;
};

/** Which shared options follow a subcommand's own. */
enum class SharedOptions {
  none,                  /**< it needs no module */
  module,                /**< --module */
  attributes_and_module, /**< one for each attribute of the box, and --module */
  settings_and_module    /**< these and --from */
};

struct Subcommand {
  std::string_view name;
  std::string_view summary;     /**< one line, for the list in the help */
  std::string (*description)(); /**< what it does, for the help */
  Options options;              /**< its own */
  SharedOptions shared;
  std::string_view operand =
      {}; /**< what a word before the options means; empty if it takes none */
  std::size_t most_operands = 1; /**< how many such words it takes, if any */
  std::span<const std::string_view>
      examples; /**< command lines that work one after the other in an empty folder */
  std::string_view notes = {}; /**< paragraphs at the end of the help */

  /**
   * Runs it: prints, writes files.
   * @return 0 on success, 1 if the filter has a problem that was asked about
   * Raises designer::Refusal when the request was wrong (status 2), and any other exception when
   * something else failed (status 3).
   */
  int (*run)(const Request &request);
};

/** @return its own options and the shared ones, in the order of the help. */
std::vector<const Option *> all_options(const Subcommand &subcommand);

}  // namespace cli

#endif
