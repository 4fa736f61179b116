// Work on all lines of a text, in as many processes as there are processors.
#ifndef CLI_DESIGN_ALL_LINES_H
#define CLI_DESIGN_ALL_LINES_H

#include <filesystem>
#include <functional>
#include <string>

#include "base/line_reader.h"
#include "design/result.h"
#include "designer/settings.h"

namespace cli {

/** Takes the results one by one. */
struct Taker {
  std::function<void(const Result &)> take;

  /** Called when those that were ready have been taken. @return false when no more are wanted */
  std::function<bool()> rest;
};

/** The work, for workers that are copies of this process, and what they are told where each is the
 *  program once more. */
struct Job {
  Work work;
  std::filesystem::path module;
  designer::Settings common; /**< settings of all lines that do not have their own */
};

/**
 * Where a worker is the program once more, and this is one: designs the filters of the lines that
 * its parent sends. To be called before standard input is read or anything is written.
 * @param lines   what was given as the file of lines, which shows a worker that it is one
 * @param module  the file to load
 * @return whether this was a worker, which has nothing else to do
 * Raises as designer::Designer.
 */
bool works_for_another(const std::string &lines, const std::filesystem::path &module);

/**
 * Does the job on each line, as they come, and gives the results in their order.
 * Raises std::runtime_error, std::bad_alloc when a worker had no memory, as LineReader, and what
 * the taker raises.
 */
void work_on_all_lines(LineReader &reader, const Job &job, const Loss &loss, const Taker &taker);

}  // namespace cli

#endif
