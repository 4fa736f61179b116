// What a file name given to -o stands for.
#ifndef CLI_BASE_DESTINATION_H
#define CLI_BASE_DESTINATION_H

#include <sys/stat.h>

#include <filesystem>
#include <optional>

namespace cli {

struct Destination {
  std::filesystem::path file;    /**< where all links lead, whether or not there is a file */
  std::optional<int> descriptor; /**< the one of this process that it stands for */
  std::optional<struct stat> old;
  bool in_proc =
      false; /**< true if it is reached through /proc, such as another process's descriptor */
};

/**
 * Follows all links, including those that lead nowhere. /dev/stdout, /dev/fd/3 and the like stand
 * for descriptors even where /proc is not mounted.
 * Raises std::filesystem::filesystem_error if links form a loop, or a folder on the way may not be
 * searched.
 */
Destination destination(const std::filesystem::path &path);

}  // namespace cli

#endif
