#include "command.h"

#include <algorithm>
#include <cstdio>
#include <exception>

#include "designer/refusal.h"
#include "dispatch.h"
#include "fuzz.h"

namespace fuzz {

int run_command(const std::vector<std::string> &words) {
  module();
  const auto reaches_out = [](const std::string &word) {
    return word.starts_with("-o") || word.starts_with("--output") || word.starts_with("--batch") ||
           word.starts_with("--module");
  };
  if (std::any_of(words.begin(), words.end(), reaches_out)) return 2;
  try {
    return cli::run(words);
  } catch (const designer::Refusal &refusal) {
    require(*refusal.what() != '\0', "a refusal gives no reason");
    return 2;
  } catch (const std::exception &error) {
    std::fprintf(stderr, "%s\n", error.what());
    return 3;
  }
}

}  // namespace fuzz
