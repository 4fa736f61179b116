// Runs a program as a shell would, and catches what it says.
#ifndef VELTANE_TESTS_RUN_COMMAND_H
#define VELTANE_TESTS_RUN_COMMAND_H

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/wait.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>

#include "../temporary_folder.h"

struct Outcome {
  int status;
  std::string out;
  std::string err;
};

inline std::string read_file(const std::filesystem::path &path) {
  std::ifstream file(path, std::ios::binary);
  std::ostringstream text;
  text << file.rdbuf();
  return text.str();
}

// @param command  a line for the shell
inline Outcome run(const std::string &command) {
  const tests::TemporaryFolder folder;
  const auto out = folder / "out";
  const auto err = folder / "err";
  const int status =
      std::system(("{ " + command + " ; } >" + out.string() + " 2>" + err.string()).c_str());
  return {WIFEXITED(status) ? WEXITSTATUS(status) : -1, read_file(out), read_file(err)};
}

// @param arguments  as typed behind the command's name
inline Outcome veltane(const std::string &arguments) {
  return run(std::string(VELTANE_COMMAND) + ' ' + arguments);
}

#endif
