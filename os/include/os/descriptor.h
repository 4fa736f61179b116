// File descriptors.
#ifndef OS_DESCRIPTOR_H
#define OS_DESCRIPTOR_H

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace os {

/** Opens a file for reading; no other program inherits it.
 *  @param file  its name in UTF-8
 *  @return the descriptor, or -1 with errno set */
int open_to_read(const std::string &file);

/** One call of read, made again where a signal interrupted it.
 *  @return how many bytes came, 0 at the end; -1 with errno set */
std::ptrdiff_t read_some(int descriptor, char *bytes, std::size_t size);

/** Writes all of a text to a descriptor, however many calls that takes. It allocates nothing.
 *  @return 0, or the number of the error */
int write_all(int descriptor, std::string_view text);

/** One call of read or write at a place of a file, which its next plain read does not notice.
 *  @return as read and write, with errno set */
std::ptrdiff_t read_at(int descriptor, char *bytes, std::size_t size, std::uint64_t at);
std::ptrdiff_t write_at(int descriptor, const char *bytes, std::size_t size, std::uint64_t at);

}  // namespace os

#endif
