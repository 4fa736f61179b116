// Many designs in one go: settings in JSON lines, results in JSON lines.
#ifndef VELTANE_CLI_BATCH_H
#define VELTANE_CLI_BATCH_H

#include <optional>
#include <string>

#include "design.h"
#include "lines.h"
#include "workers.h"

namespace cli {

/**
 * Designs the filter of one line.
 * @param host    with the module loaded
 * @param common  settings that hold where the line has none of its own
 * @return one line of JSON: as to_json_line, or {"line": N, "error": "..."}
 */
Result design_line(patchbay::Host &host, const Settings &common, const Line &line);

/**
 * Designs one filter for each line, with all processors, and writes one line for
 * each in the same order: as to_json_line, or {"line": N, "error": "..."}. How far
 * it is goes to standard error where that is a terminal.
 * @param host    with the module loaded
 * @param common  settings of all lines that do not have their own
 * @param input   the file with the lines; "-" for standard input
 * @param output  the file to write, whole or not at all; standard output without one
 * @return 0, also when the output's reader goes away before the end; 1 when some lines had
 *         errors, which standard error then tells
 * Raises as LineReader, OutputFile and Workers.
 */
int run_batch(patchbay::Host &host, const Settings &common, const std::string &input,
              const std::optional<std::string> &output);

}  // namespace cli

#endif
