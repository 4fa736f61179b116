// Calling what is not the host's own: a module's functions, and listeners.
#ifndef PATCHBAY_CALL_OUT_H
#define PATCHBAY_CALL_OUT_H

#include <string>
#include <utility>

#include "brontal/symbol.h"
#include "violations.h"

namespace patchbay {

/**
 * Calls what is not the host's own. An exception that comes out of it is a
 * violation.
 * @return whether none did
 */
template <typename Function>
bool call_out(State &state, const char *what, Function &&function) {
  try {
    function();
    return true;
  } catch (...) {
    report(state, std::string("an exception came out of '") + what + "'");
    return false;
  }
}

/** The same for a message to a module. */
template <typename Function>
bool call_module(State &state, const t_symbol *message, Function &&function) {
  return call_out(state, message != nullptr ? message->name : "null",
                  std::forward<Function>(function));
}

}  // namespace patchbay

#endif
