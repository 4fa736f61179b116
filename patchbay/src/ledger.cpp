#include "ledger.h"

#include <algorithm>

#include <fmt/format.h>

#include "runtime/blocks.h"

namespace patchbay {
namespace {

// How many releases are remembered, of blocks and of records each: enough for some dozen boxes,
// and few enough that the book of a busy host stays in the processor's cache.
constexpr std::size_t graveyard_limit = 512;

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

bool is_dead_block(const Ledger::Entry &entry) {
  return entry.kind == Kind::block && entry.released_by.has_value();
}

}  // namespace

Ledger::Ledger(Checking checking) : checking_(checking), graveyard_(graveyard_limit) {}

Ledger::~Ledger() {
  entries_.for_each([](const void *address, const Entry &entry) {
    const bool memory = entry.kind == Kind::block || entry.kind == Kind::instance;
    if (memory && !entry.released_by) runtime::free_block(const_cast<void *>(address));
  });
}

void Ledger::add(const void *address, Kind kind, Op made_by, std::shared_ptr<void> record) {
  Entry &entry = entries_[address];
  if (is_dead_block(entry)) --dead_blocks_;
  entry = {kind, made_by, std::nullopt, false, ++last_serial_, std::move(record)};
}

void Ledger::owned_by_host(const void *address) {
  if (Entry *entry = entries_.find(address)) entry->owned_by_host = true;
}

void Ledger::release(const void *address, Op by) {
  if (Entry *entry = entries_.find(address)) bury(address, *entry, by);
}

bool Ledger::release(const void *address, Kind kind, Op by) {
  Entry *entry = entries_.find(address);
  if (entry == nullptr || entry->kind != kind || entry->released_by) return false;
  bury(address, *entry, by);
  return true;
}

void Ledger::bury(const void *address, Entry &entry, Op by) {
  entry.released_by = by;
  if (entry.kind == Kind::block) {
    if (++dead_blocks_ <= graveyard_limit) return;
    entries_.erase_if(is_dead_block);
    dead_blocks_ = 0;
    return;
  }
  // The oldest record is destroyed last of all, as that may run code of others.
  const Grave oldest =
      std::exchange(graveyard_[oldest_grave_], {address, entry.serial, std::move(entry.record)});
  oldest_grave_ = (oldest_grave_ + 1) % graveyard_limit;
  const Entry *old = entries_.find(oldest.address);
  if (old != nullptr && old->serial == oldest.serial) entries_.erase(oldest.address);
}

void Ledger::release_unowned(const void *address, Kind kind, Op by) {
  if (const Entry *entry = find(address, kind); entry != nullptr && !entry->owned_by_host)
    release(address, by);
}

const Ledger::Entry *Ledger::find(const void *address) const {
  const Entry *entry = entries_.find(address);
  return entry != nullptr && !entry->released_by ? entry : nullptr;
}

const Ledger::Entry *Ledger::find(const void *address, Kind kind) const {
  const Entry *entry = find(address);
  return entry != nullptr && entry->kind == kind ? entry : nullptr;
}

std::string Ledger::problem(const void *address) const {
  const Entry *entry = entries_.find(address);
  if (entry == nullptr) return "an address that no operation has handed out";
  return fmt::format("{}, which {} has released", describe(*entry),
                     patchbay::name_of(*entry->released_by));
}

std::string Ledger::problem(const void *address, Kind kind) const {
  const Entry *entry = find(address);
  if (entry == nullptr) return problem(address);
  return fmt::format("{}, which is not the expected {}", describe(*entry), name_of(kind));
}

std::vector<std::string> Ledger::leaks() const {
  std::vector<const Entry *> left;
  entries_.for_each([&left](const void *, const Entry &entry) {
    if (!entry.released_by && !entry.owned_by_host) left.push_back(&entry);
  });
  std::sort(left.begin(), left.end(),
            [](const Entry *a, const Entry *b) { return a->serial < b->serial; });
  std::vector<std::string> texts;
  texts.reserve(left.size());
  for (const Entry *entry : left) texts.push_back(describe(*entry));
  return texts;
}

std::string Ledger::describe(const Entry &entry) {
  return fmt::format("{} {} from {}", name_of(entry.kind), entry.serial,
                     patchbay::name_of(entry.made_by));
}

}  // namespace patchbay
