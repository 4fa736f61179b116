#include "violations.h"

#include <utility>

#include "claim.h"
#include "state.h"

namespace patchbay {

void report(State &s, std::string violation) { s.violations.push_back(std::move(violation)); }

const std::vector<std::string> &violations(State &s) {
  for (std::string &stray : take_strays()) report(s, std::move(stray));
  return s.violations;
}

}  // namespace patchbay
