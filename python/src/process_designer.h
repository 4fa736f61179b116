// The designer of the process.
#ifndef PYTHON_PROCESS_DESIGNER_H
#define PYTHON_PROCESS_DESIGNER_H

#include "designer/designer.h"

namespace python {

/**
 * One host lives in a process, and belongs to the thread that made it. Whoever holds the
 * interpreter's lock is the only one to design, so that a host is made anew, which takes less than a
 * millisecond, whenever another thread comes than the last one. Nothing of a filter depends on it.
 * A child made by `fork` goes on with its copy.
 * @return that of the calling thread, good until the lock is released
 */
designer::Designer &process_designer();

}  // namespace python

#endif
