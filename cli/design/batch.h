// Many designs in one go: settings in JSON lines, results in JSON lines.
#ifndef CLI_DESIGN_BATCH_H
#define CLI_DESIGN_BATCH_H

#include <cstddef>
#include <filesystem>
#include <optional>
#include <string>

#include "base/line_reader.h"
#include "design/result.h"
#include "designer/designer.h"

namespace cli {

/**
 * Designs the filter of one line.
 * @param common  settings that hold where the line has none of its own
 * @return one line of JSON: as design_line, or as error_line
 */
Result designed_line(designer::Designer &designer, const designer::Settings &common,
                     const Line &line);

/** Where the lines of a batch come from. */
struct BatchInput {
  std::string file;           /**< its name; "-" for standard input */
  std::size_t first_line = 1; /**< the number of its first line: a part of a file counts on from the
                                   part before it */
};

/**
 * Designs one filter for each line, with all processors, and writes one line for
 * each in the same order: as design_line, or as error_line. How far it is goes to standard error
 * where that is a terminal.
 * @param module  the file to load
 * @param common  settings of all lines that do not have their own
 * @param output  the file to write, whole or not at all; standard output without one
 * @return 0, also when the output's reader goes away before the end; 1 when some lines failed,
 *         which standard error then tells
 * Raises as designer::Designer, LineReader, OutputFile and work_on_all_lines.
 */
int run_batch(const std::filesystem::path &module, const designer::Settings &common,
              const BatchInput &input, const std::optional<std::string> &output);

}  // namespace cli

#endif
