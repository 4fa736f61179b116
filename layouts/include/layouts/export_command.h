// The command that writes the same file at a terminal.
#ifndef LAYOUTS_EXPORT_COMMAND_H
#define LAYOUTS_EXPORT_COMMAND_H

#include <string>
#include <vector>

#include "layouts/request.h"
#include "layouts/target.h"

namespace layouts {

/**
 * The words of `veltane export` that write what `write` does with this request. Whoever shows a
 * layout elsewhere makes them its `Request::command`, and the command writes the same bytes to its
 * standard output.
 * @param settings  of the design, as `designer::command_words` has them
 * @param request   of a design, with the identifier of no file; its command is not read
 * @return "veltane" and all that follows
 */
std::vector<std::string> export_command(const Target &target,
                                        const std::vector<std::string> &settings,
                                        const Request &request);

}  // namespace layouts

#endif
