// Where the program lies, and what is installed with it.
#ifndef CLI_BASE_INSTALLATION_H
#define CLI_BASE_INSTALLATION_H

#include <filesystem>

namespace cli {

/** @return the folder PREFIX of this program, which is PREFIX/bin/veltane once links are followed:
 *          PREFIX/lib and PREFIX/share belong to it. A build tree is such a folder, too.
 *  Raises std::filesystem::filesystem_error where /proc is not mounted. */
std::filesystem::path installation();

}  // namespace cli

#endif
