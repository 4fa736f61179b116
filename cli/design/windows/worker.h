// A worker on Windows, which copies no processes: the program once more, which takes lines from its
// standard input and writes their results to its standard output.
#ifndef CLI_DESIGN_WINDOWS_WORKER_H
#define CLI_DESIGN_WINDOWS_WORKER_H

#include <cstddef>
#include <memory>
#include <optional>
#include <vector>

#include "design/all_lines.h"
#include "design/result.h"

namespace cli {

/** It ends with this object. */
class Worker {
 public:
  static constexpr unsigned long no_memory = 12; /**< the status of one that had none */

  explicit Worker(const Job &job); /**< Raises std::system_error. */
  ~Worker();
  Worker(const Worker &) = delete;
  Worker &operator=(const Worker &) = delete;

  /** Gives it some of the lines, from the first up to the end, whose results are asked for before
   *  it is given more. @return false when it has ended */
  bool send(const std::vector<Line> &lines, std::size_t first, std::size_t end);

  /** @return the next result; none when it has ended. */
  std::optional<Result> result();

  /** @return the status of one that has ended. */
  unsigned long status() const;

 private:
  struct Running;
  std::unique_ptr<Running> running_;
};

}  // namespace cli

#endif
