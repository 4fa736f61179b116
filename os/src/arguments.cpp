#include "os/arguments.h"

namespace os {

std::vector<std::string> arguments(int count, char **words) {
  return {words + (count > 0 ? 1 : 0), words + count};
}

}  // namespace os
