// Finding what an address that a module hands in stands for.
#ifndef PATCHBAY_LOOKUP_H
#define PATCHBAY_LOOKUP_H

#include <string>

#include "ledger.h"
#include "operations.h"
#include "state.h"
#include "violations.h"

namespace patchbay {

/** @return the record of a kind whose address `op` was given; null for null, and for any other
 *  address, which is reported. */
template <typename Record>
Record *find(State &state, Op op, Kind kind, const void *address) {
  std::string problem;
  const Ledger::Entry *entry = state.ledger.find(address, kind, problem);
  if (!problem.empty()) report(state, std::string(name_of(op)) + " was given " + problem);
  return entry == nullptr ? nullptr : static_cast<Record *>(entry->record.get());
}

}  // namespace patchbay

#endif
