#include "base/unwritable.h"

#include <fmt/format.h>

#include "os/path.h"

namespace cli {

designer::Refusal is_a_folder(const std::filesystem::path &path) {
  return designer::Refusal(
      fmt::format("'{}' is a folder; -o takes the name of a file", os::name_of(path)));
}

designer::Refusal names_no_file(const std::filesystem::path &path) {
  return designer::Refusal(fmt::format("'{}' is not the name of a file", os::name_of(path)));
}

designer::Refusal has_no_folder(const std::filesystem::path &folder,
                                const std::filesystem::path &file) {
  return designer::Refusal(fmt::format("there is no folder '{}' to write '{}' in",
                                       os::name_of(folder), os::name_of(file.filename())));
}

std::runtime_error cannot_be_written(const std::filesystem::path &path, const std::string &reason) {
  return std::runtime_error(fmt::format("'{}' cannot be written: {}", os::name_of(path), reason));
}

}  // namespace cli
