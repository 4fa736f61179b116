// From the words after "veltane" to an exit status.
#ifndef CLI_DISPATCH_H
#define CLI_DISPATCH_H

#include "base/words.h"

namespace cli {

/**
 * Runs the subcommand that the words name, or answers --help, --version, --man and --completion.
 * @return as Subcommand::run, and raises what that raises
 */
int run(const Words &words);

}  // namespace cli

#endif
