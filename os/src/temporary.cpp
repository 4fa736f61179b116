#include "os/temporary.h"

#include <fcntl.h>
#include <unistd.h>

#include <cstdlib>
#include <string>

#include "os/leftovers.h"

namespace os {

std::filesystem::path temporary_folder() {
  std::error_code none;
  const std::filesystem::path folder = std::filesystem::temp_directory_path(none);
  return none ? "/tmp" : folder;
}

int open_temporary() {
  const std::filesystem::path folder = temporary_folder();
  const int nameless = open(folder.c_str(), O_TMPFILE | O_RDWR | O_CLOEXEC, 0600);
  if (nameless >= 0) return nameless;
  const SignalsHeld held;
  std::string name = (folder / ".veltane-XXXXXX").string();
  const int named = mkostemp(name.data(), O_CLOEXEC);
  if (named >= 0) unlink(name.c_str());
  return named;
}

}  // namespace os
