// File descriptors.
#ifndef OS_DESCRIPTOR_H
#define OS_DESCRIPTOR_H

#include <string_view>

namespace os {

/** Writes all of a text to a descriptor, however many calls that takes. It allocates nothing.
 *  @return 0, or the number of the error */
int write_all(int descriptor, std::string_view text);

}  // namespace os

#endif
