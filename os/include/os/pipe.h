// Pipes.
#ifndef OS_PIPE_H
#define OS_PIPE_H

#include <cstddef>
#include <string>

namespace os {

/** Waits until a pipe holds something or is at its end.
 *  @return what it holds then, which stays in it, up to `most` bytes; empty at the end, and where
 *          that cannot be known */
std::string waiting_bytes(int descriptor, std::size_t most);

}  // namespace os

#endif
