/** A folder that nobody else has, whoever runs the same tests at the same time. */
#ifndef TESTS_TEMPORARY_FOLDER_H
#define TESTS_TEMPORARY_FOLDER_H

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <string>

namespace tests {

class TemporaryFolder {
 public:
  TemporaryFolder() {
    std::string name = (std::filesystem::temp_directory_path() / "veltane-test-XXXXXX").string();
    if (mkdtemp(name.data()) == nullptr) ADD_FAILURE() << "no folder can be made at " << name;
    path_ = name;
  }
  ~TemporaryFolder() {
    std::error_code ignored;
    std::filesystem::remove_all(path_, ignored);
  }
  TemporaryFolder(const TemporaryFolder &) = delete;
  TemporaryFolder &operator=(const TemporaryFolder &) = delete;

  const std::filesystem::path &path() const { return path_; }

  /** @return the path of something in it. */
  std::filesystem::path operator/(const std::string &name) const { return path_ / name; }

 private:
  std::filesystem::path path_;
};

}  // namespace tests

#endif
