// The gate that every operation passes: it is where calls are written down, made to
// fail, and kept from throwing.
#ifndef PATCHBAY_GATE_H
#define PATCHBAY_GATE_H

#include <utility>

#include "claim.h"
#include "operations.h"
#include "state.h"

namespace patchbay {

/**
 * Carries out one operation: `body(state)`, or `refuse(state)` when a fault
 * strikes, or when what is asked cannot be done or has no memory. Without a host of
 * the calling thread it yields `failure`.
 */
template <typename Result, typename Refuse, typename Body, typename... Arguments>
Result operation_or(Op op, Result failure, Refuse &&refuse, Body &&body,
                    const Arguments &...arguments) noexcept {
  State *state = current_state();
  if (state == nullptr) {
    note_stray(op);
    return failure;
  }
  try {
    if (Trace &trace = state->trace; trace.on)
      trace.calls.push_back({std::string(name_of(op)), {as_text(arguments)...}});
    if (!state->faults.strikes(op)) return body(*state);
  } catch (...) {
    // What the operation cannot do, it refuses.
  }
  refuse(*state);
  return failure;
}

/** The same for an operation that has nothing to do when it is refused. */
template <typename Result, typename Body, typename... Arguments>
Result operation(Op op, Result failure, Body &&body, const Arguments &...arguments) noexcept {
  return operation_or(
      op, failure, [](State &) {}, std::forward<Body>(body), arguments...);
}

}  // namespace patchbay

#endif
