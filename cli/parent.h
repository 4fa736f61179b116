// Processes that end with the one that made them.
#ifndef VELTANE_CLI_PARENT_H
#define VELTANE_CLI_PARENT_H

#include <sys/types.h>

namespace cli {

/** For a new child: has it killed when its parent ends, even if that is killed itself, where the
 *  system can do so. Ends it now when the parent is gone already. Allocates nothing. */
void end_with(pid_t parent);

}  // namespace cli

#endif
