// The words that the program was started with.
#ifndef OS_ARGUMENTS_H
#define OS_ARGUMENTS_H

#include <string>
#include <vector>

namespace os {

/** @param count, words  as `main` is given them
 *  @return the words after the program's name, in UTF-8 where the system knows what they are in;
 *          elsewhere the bytes as they came */
std::vector<std::string> arguments(int count, char **words);

}  // namespace os

#endif
