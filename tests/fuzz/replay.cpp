// Feeds files to a fuzz target: the files named, and all those in the folders named.

#include <cstdio>
#include <exception>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <vector>

#include "fuzz.h"

namespace {

std::size_t replayed = 0;

void replay(const std::filesystem::path &path) {
  if (std::filesystem::is_directory(path)) {
    for (const auto &entry : std::filesystem::directory_iterator(path)) replay(entry.path());
    return;
  }
  std::fprintf(stderr, "%s\n", path.c_str());  // before what may end the process
  std::ifstream file(path, std::ios::binary);
  fuzz::require(file.is_open(), "the file cannot be read");
  const std::vector<char> bytes{std::istreambuf_iterator<char>(file), {}};
  LLVMFuzzerTestOneInput(reinterpret_cast<const std::uint8_t *>(bytes.data()), bytes.size());
  ++replayed;
}

}  // namespace

int main(int argc, char **argv) {
  try {
    for (int i = 1; i < argc; ++i) replay(argv[i]);
  } catch (const std::exception &error) {
    std::fprintf(stderr, "%s\n", error.what());
    return 1;
  }
  std::fprintf(stderr, "%zu files survived\n", replayed);
  return replayed == 0 ? 1 : 0;
}
