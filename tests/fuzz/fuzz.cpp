#include "fuzz.h"

#include <dlfcn.h>
#include <sys/mman.h>
#include <unistd.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>

namespace fuzz {

std::string text_of(const std::uint8_t *data, std::size_t size) { return {data, data + size}; }

std::vector<std::string> lines_of(const std::string &text) {
  std::vector<std::string> lines;
  for (std::size_t at = 0; at < text.size();) {
    const std::size_t end = std::min(text.find('\n', at), text.size());
    lines.push_back(text.substr(at, end - at));
    at = end + 1;
  }
  return lines;
}

void require(bool holds, const std::string &sentence) {
  if (holds) return;
  std::fprintf(stderr, "%s\n", sentence.c_str());
  std::abort();
}

File::File(const std::string &text) : descriptor_(memfd_create("input", MFD_CLOEXEC)) {
  const auto size = static_cast<ssize_t>(text.size());
  require(descriptor_ >= 0 && write(descriptor_, text.data(), text.size()) == size,
          "no file can be made");
  name_ = "/proc/self/fd/" + std::to_string(descriptor_);
}

File::~File() { close(descriptor_); }

const std::string &module() {
  static const std::string file = VELTANE_MODULE;
  static const void *kept = dlopen(file.c_str(), RTLD_NOW | RTLD_LOCAL | RTLD_NODELETE);
  if (kept == nullptr) require(false, dlerror());
  return file;
}

}  // namespace fuzz
