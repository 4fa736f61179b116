// Failures on demand.
#ifndef PATCHBAY_FAULTS_H
#define PATCHBAY_FAULTS_H

#include <array>
#include <cstddef>

#include "operations.h"

namespace patchbay {

/** Which calls are to fail: 1 for the next call, 0 for none. */
struct Faults {
  bool armed = false;
  std::array<std::size_t, operation_names.size()> countdown{};

  /** Counts a call of an operation. @return whether it is to fail. */
  bool strikes(Op op) {
    if (!armed) return false;
    std::size_t &left = countdown[static_cast<std::size_t>(op)];
    return left != 0 && --left == 0;
  }
};

}  // namespace patchbay

#endif
