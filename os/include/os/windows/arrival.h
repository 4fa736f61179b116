// Whether a read on Windows would wait.
#ifndef OS_WINDOWS_ARRIVAL_H
#define OS_WINDOWS_ARRIVAL_H

namespace os {

/** @return false if a pipe holds nothing and is not at its end, so that a read would wait. Nothing
 *  tells of an arrival there: who waits for one asks again after a pause. Of what is not a pipe
 *  nothing is known: true. */
bool has_arrived(int descriptor);

}  // namespace os

#endif
