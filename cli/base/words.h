// Words of a command line.
#ifndef CLI_BASE_WORDS_H
#define CLI_BASE_WORDS_H

#include <string>
#include <vector>

namespace cli {

using Words = std::vector<std::string>;

}  // namespace cli

#endif
