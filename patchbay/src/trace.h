// The record of calls, and how their arguments are written down.
#ifndef PATCHBAY_TRACE_H
#define PATCHBAY_TRACE_H

#include <string>
#include <vector>

#include "brontal/symbol.h"
#include "brontal/types.h"
#include "patchbay/inspector.h"

namespace patchbay {

/** The calls since the trace was started. */
struct Trace {
  bool on = false;
  std::vector<Call> calls;
};

// Addresses say nothing, so calls name things by their names instead.
inline std::string as_text(const char *text) { return text != nullptr ? text : "null"; }
inline std::string as_text(const t_symbol *symbol) {
  return symbol != nullptr ? symbol->name : "null";
}
std::string as_text(t_long number);
std::string as_text(double number);

}  // namespace patchbay

#endif
