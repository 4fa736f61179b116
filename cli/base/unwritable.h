// Why a file cannot be written, in the words that every system has for it.
#ifndef CLI_BASE_UNWRITABLE_H
#define CLI_BASE_UNWRITABLE_H

#include <filesystem>
#include <stdexcept>
#include <string>

#include "designer/refusal.h"

namespace cli {

/** @param path  as it was given */
designer::Refusal is_a_folder(const std::filesystem::path &path);
designer::Refusal names_no_file(const std::filesystem::path &path);

/** @param folder  the one that is missing
 *  @param file    what was to be written in it */
designer::Refusal has_no_folder(const std::filesystem::path &folder,
                                const std::filesystem::path &file);

std::runtime_error cannot_be_written(const std::filesystem::path &path, const std::string &reason);

}  // namespace cli

#endif
