// A subcommand of `veltane`: one file, and one line in the table of subcommands.cpp.
// command_design.cpp shows the way from an Invocation to a design; published.h makes
// plain lists of it. Help and manual page follow from the Options.
#ifndef VELTANE_CLI_SUBCOMMAND_H
#define VELTANE_CLI_SUBCOMMAND_H

#include <filesystem>
#include <span>
#include <stdexcept>
#include <string>
#include <vector>

namespace cli {

using Words = std::vector<std::string>;

/** A request that was wrong: exit status 2. Its text is one sentence. */
class Refusal : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

/** A question that is answered by a text alone, such as --help: exit status 0. */
struct Answer {
  std::string text;
};

/** What the command line says. */
struct Invocation {
  Words words;                  /**< all of it after "veltane": what makes the result again */
  Words rest;                   /**< what follows the subcommand, but for --module FILE */
  std::filesystem::path module; /**< the file to load: the one named, or the installed one */
};

/** @return all words, "veltane" included. */
Words spoken(const Invocation &invocation);

/** @return the same as one line for a shell, which `text::printable` leaves as it is, whatever the words
 *  hold: fit for a comment. */
std::string shell_line(const Invocation &invocation);

struct Subcommand {
  const char *name;
  const char *summary; /**< one line, for the list in the help */

  /**
   * Does it: prints, writes files.
   * @return 0 when it is done, 1 when the filter has a problem that was asked about
   * Raises Refusal when the request was wrong (status 2), Answer for --help, and
   * any other exception when something else failed (status 3).
   */
  int (*run)(const Invocation &invocation);
};

/** @return all subcommands, in the order in which the help lists them. */
std::span<const Subcommand> subcommands();

/**
 * Reads the words after "veltane" and runs the subcommand that they name.
 * @return as Subcommand::run. Raises what that raises.
 */
int run(const Words &words);

}  // namespace cli

#endif
