#include "lookup.h"

#include <fmt/format.h>

#include "state.h"
#include "violations.h"

namespace patchbay {

void report_given(State &s, Op op, const std::string &thing) {
  report(s, fmt::format("{} was given {}", name_of(op), thing));
}

const Ledger::Entry *find_entry(State &s, Op op, const void *address) {
  const Ledger::Entry *entry = s.ledger.find(address);
  if (entry == nullptr && address != nullptr) report_given(s, op, s.ledger.problem(address));
  return entry;
}

const Ledger::Entry *find_entry(State &s, Op op, Kind kind, const void *address) {
  const Ledger::Entry *entry = s.ledger.find(address, kind);
  if (entry == nullptr && address != nullptr) report_given(s, op, s.ledger.problem(address, kind));
  return entry;
}

bool can_take_over(State &s, Op op, Kind kind, const void *address, const char *owner) {
  const Ledger::Entry *entry = find_entry(s, op, kind, address);
  if (entry == nullptr) return false;
  if (!entry->owned_by_host) return true;
  report_given(s, op, fmt::format("{}, which {} already owns", Ledger::describe(*entry), owner));
  return false;
}

}  // namespace patchbay
