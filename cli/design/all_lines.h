// Work on all lines of a text, in as many processes as there are processors.
#ifndef CLI_DESIGN_ALL_LINES_H
#define CLI_DESIGN_ALL_LINES_H

#include <functional>

#include "base/line_reader.h"
#include "design/result.h"

namespace cli {

/** Takes the results one by one. */
struct Taker {
  std::function<void(const Result &)> take;

  /** Called when those that were ready have been taken. @return false when no more are wanted */
  std::function<bool()> rest;
};

/**
 * Where a worker is the program once more, and this is one: does the work on the lines that its
 * parent sends. To be called before anything is read or written.
 * @return whether this was a worker, which has nothing else to do
 */
bool works_for_another(const Work &work);

/**
 * Does the work on each line, as they come, and gives the results in their order.
 * Raises std::runtime_error, std::bad_alloc when a worker had no memory, as LineReader, and what
 * the taker raises.
 */
void work_on_all_lines(LineReader &reader, const Work &work, const Loss &loss, const Taker &taker);

}  // namespace cli

#endif
