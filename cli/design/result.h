// What becomes of one line of a batch.
#ifndef CLI_DESIGN_RESULT_H
#define CLI_DESIGN_RESULT_H

#include <functional>
#include <string>

#include "base/line_reader.h"

namespace cli {

enum class Outcome { designed, failed };

struct Result {
  Outcome outcome = Outcome::designed;
  std::string text; /**< one line, without its newline */
};

using Work = std::function<Result(const Line &)>;

/** What becomes of a line that ended its process. */
using Loss = std::function<Result(const Line &, const std::string &how)>;

}  // namespace cli

#endif
