#include "ledger.h"

#include <algorithm>

#include <fmt/format.h>

#include "runtime/blocks.h"

namespace patchbay {
namespace {

// How many releases are remembered.
constexpr std::size_t graveyard_limit = 4096;

std::string_view name_of(Kind kind) {
  switch (kind) {
    case Kind::block: return "block";
    case Kind::box_class: return "class";
    case Kind::attribute: return "attribute";
    case Kind::method: return "method";
    case Kind::method_table: return "method table";
    case Kind::instance: return "instance";
    case Kind::dictionary: return "dictionary";
    case Kind::atom_array: return "atom array";
    case Kind::outlet: return "outlet";
    case Kind::task: return "deferred task";
  }
  return "thing";
}

}  // namespace

Ledger::~Ledger() {
  for (const auto &[address, entry] : entries_) {
    const bool memory = entry.kind == Kind::block || entry.kind == Kind::instance;
    if (memory && !entry.released_by) runtime::free_block(const_cast<void *>(address));
  }
}

void Ledger::add(const void *address, Kind kind, Op made_by, std::shared_ptr<void> record) {
  entries_.insert_or_assign(
      address, Entry{kind, ++last_serial_, made_by, std::nullopt, false, std::move(record)});
}

void Ledger::owned_by_host(const void *address) {
  if (const auto found = entries_.find(address); found != entries_.end())
    found->second.owned_by_host = true;
}

void Ledger::release(const void *address, Op by) {
  const auto found = entries_.find(address);
  if (found == entries_.end()) return;
  Entry &entry = found->second;
  entry.released_by = by;
  graveyard_.push_back({address, entry.serial, std::move(entry.record)});
  if (graveyard_.size() <= graveyard_limit) return;
  const Grave oldest = std::move(graveyard_.front());
  graveyard_.pop_front();
  const auto old = entries_.find(oldest.address);
  if (old != entries_.end() && old->second.serial == oldest.serial) entries_.erase(old);
}

void Ledger::release_unowned(const void *address, Kind kind, Op by) {
  if (alive(address, kind) && !entries_.at(address).owned_by_host) release(address, by);
}

Ledger::Entry *Ledger::find(const void *address, std::string &problem) {
  if (address == nullptr) return nullptr;
  const auto found = entries_.find(address);
  if (found == entries_.end()) {
    problem = "an address that no operation has handed out";
    return nullptr;
  }
  Entry &entry = found->second;
  if (entry.released_by) {
    problem = fmt::format("{}, which {} has released", describe(entry),
                          patchbay::name_of(*entry.released_by));
    return nullptr;
  }
  return &entry;
}

Ledger::Entry *Ledger::find(const void *address, Kind kind, std::string &problem) {
  Entry *entry = find(address, problem);
  if (entry == nullptr || entry->kind == kind) return entry;
  problem = fmt::format("{}, which is no {}", describe(*entry), name_of(kind));
  return nullptr;
}

bool Ledger::alive(const void *address) const {
  const auto found = entries_.find(address);
  return found != entries_.end() && !found->second.released_by;
}

bool Ledger::alive(const void *address, Kind kind) const {
  return alive(address) && entries_.at(address).kind == kind;
}

std::vector<std::string> Ledger::leaks() const {
  std::vector<const Entry *> left;
  for (const auto &[address, entry] : entries_)
    if (!entry.released_by && !entry.owned_by_host) left.push_back(&entry);
  std::sort(left.begin(), left.end(),
            [](const Entry *a, const Entry *b) { return a->serial < b->serial; });
  std::vector<std::string> texts;
  for (const Entry *entry : left) texts.push_back(describe(*entry));
  return texts;
}

std::string Ledger::describe(const Entry &entry) {
  return fmt::format("{} {} from {}", name_of(entry.kind), entry.serial,
                     patchbay::name_of(entry.made_by));
}

}  // namespace patchbay
