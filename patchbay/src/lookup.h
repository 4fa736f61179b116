// Finding what an address passed in by a module refers to.
#ifndef PATCHBAY_LOOKUP_H
#define PATCHBAY_LOOKUP_H

#include <string>

#include "ledger.h"
#include "operations.h"

namespace patchbay {

struct State;

/** Reports that an operation was given what it cannot use. */
void report_given(State &s, Op op, const std::string &thing);

/** @return the ledger's entry of an address that `op` was given; null for null, and for any other
 *  address that is not a living thing of the kind, which is reported. */
const Ledger::Entry *find_entry(State &s, Op op, const void *address);
const Ledger::Entry *find_entry(State &s, Op op, Kind kind, const void *address);

/** @return the record of such an entry. */
template <typename Record>
Record *find(State &s, Op op, Kind kind, const void *address) {
  const Ledger::Entry *entry = find_entry(s, op, kind, address);
  return entry == nullptr ? nullptr : static_cast<Record *>(entry->record.get());
}

/** @return whether an operation may take over the thing at an address; false for null, and for any
 *  other address that is not a living thing of the kind, or one that the host owns already, which
 *  is reported. @param owner  who owns it then, such as "a class" */
bool can_take_over(State &s, Op op, Kind kind, const void *address, const char *owner);

}  // namespace patchbay

#endif
