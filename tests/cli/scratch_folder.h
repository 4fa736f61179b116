// A folder of its own for a test, gone after it.
#ifndef VELTANE_TESTS_SCRATCH_FOLDER_H
#define VELTANE_TESTS_SCRATCH_FOLDER_H

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

#include "../temporary_folder.h"

class ScratchFolder : public testing::Test {
 protected:
  std::string path(const std::string &name) const { return (folder_ / name).string(); }

  std::string write(const std::string &name, const std::string &text) const {
    std::ofstream(path(name), std::ios::binary) << text;
    return path(name);
  }

  // Hidden ones as well.
  std::vector<std::string> names() const {
    std::vector<std::string> list;
    for (const auto &entry : std::filesystem::directory_iterator(folder_.path()))
      list.push_back(entry.path().filename().string());
    std::sort(list.begin(), list.end());
    return list;
  }

 private:
  tests::TemporaryFolder folder_;
};

#endif
