// Processes that end with the one that made them.
#ifndef OS_CHILD_PROCESS_H
#define OS_CHILD_PROCESS_H

#include <sys/types.h>

namespace os {

/** For a new child: has it killed when its parent ends, even if that is killed itself, provided
 *  that the system can do so. Ends it now when the parent is gone already. Allocates nothing. */
void end_with(pid_t parent);

}  // namespace os

#endif
