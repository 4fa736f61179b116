// Objects: all that a module may send messages to and free.
#ifndef PATCHBAY_OBJECTS_H
#define PATCHBAY_OBJECTS_H

#include "operations.h"

namespace patchbay {

struct State;

/** Releases an object that is the module's to free. @return whether it was one; if not, that is
 *  reported. */
bool destroy(State &s, void *object, Op by);

}  // namespace patchbay

#endif
