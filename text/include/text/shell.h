// Command lines as a shell takes them.
#ifndef TEXT_SHELL_H
#define TEXT_SHELL_H

#include <string>
#include <vector>

namespace text {

/** @return the words of a command as one line for a POSIX shell, quoted where that is needed, in
 *  which `printable` would change nothing whatever the words hold: fit for a comment. Words that it
 *  would change are quoted as bash and its like take them. */
std::string shell_line(const std::vector<std::string> &words);

}  // namespace text

#endif
