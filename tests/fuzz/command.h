// The command as a fuzz target may run it.
#ifndef TESTS_FUZZ_COMMAND_H
#define TESTS_FUZZ_COMMAND_H

#include <string>
#include <vector>

namespace fuzz {

/**
 * Runs the command in this process, as its `main` would. Words that would make it write
 * files, start processes or load other modules are not carried out.
 * @return the exit status
 */
int run_command(const std::vector<std::string> &words);

}  // namespace fuzz

#endif
