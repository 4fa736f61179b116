// The record of everything that modules hold addresses of.
#ifndef PATCHBAY_LEDGER_H
#define PATCHBAY_LEDGER_H

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "address_map.h"
#include "operations.h"
#include "patchbay/host.h"

namespace patchbay {

enum class Kind : std::uint8_t {
  block,
  box_class,
  attribute,
  method,
  method_table,
  instance,
  dictionary,
  atom_array,
  outlet,
  task
};

/**
 * Knows each address that was handed out: what it is, which operation made it,
 * and which one released it. It owns the host's own records; they outlive their
 * release for a while, so that their addresses do not come back at once and a
 * late use is recognised. Memory goes back at once; that of blocks and instances
 * may come back under the same address as something new. Of a release that was
 * hundreds ago only the name is forgotten: the address counts as one that was
 * never handed out.
 *
 * A trusting ledger leaves blocks out, which are most of what a module asks for:
 * nobody then notices what a module does wrong with a block, or that it keeps one.
 *
 * Pointers to entries hold until the next entry is added or released. All but
 * `leaks` takes constant time.
 */
class Ledger {
 public:
  struct Entry {
    Kind kind;
    Op made_by;
    std::optional<Op> released_by;
    bool owned_by_host;  // released by the host, not by the module
    std::uint64_t serial;
    std::shared_ptr<void> record;
  };

  explicit Ledger(Checking checking);
  Ledger(const Ledger &) = delete;
  Ledger &operator=(const Ledger &) = delete;
  ~Ledger(); /**< releases what a module has leaked */

  /** @return true if blocks are entered. */
  bool watches_blocks() const { return checking_ == Checking::strict; }

  /** Makes room, so that entering one address raises nothing. Raises std::bad_alloc. */
  void make_room() { entries_.make_room(); }

  /** Enters an address. @param record  what the ledger is to own; null for none.
   *  Raises std::bad_alloc. */
  void add(const void *address, Kind kind, Op made_by, std::shared_ptr<void> record);

  /** Makes a record whose address is what modules see. */
  template <typename Record, typename... Arguments>
  Record *make(Kind kind, Op made_by, Arguments &&...arguments) {
    auto record = std::make_shared<Record>(std::forward<Arguments>(arguments)...);
    Record *address = record.get();
    add(address, kind, made_by, std::move(record));
    return address;
  }

  /** Notes that the host releases this, as part of something else. */
  void owned_by_host(const void *address);

  /** Strikes an address out; one that is not in the ledger changes nothing. */
  void release(const void *address, Op by);

  /** The same for a living thing of a kind. @return whether it was one */
  bool release(const void *address, Kind kind, Op by);

  /** The same, if it is alive, of this kind and not yet the host's: for a thing
   *  that an operation was to take over when it failed. */
  void release_unowned(const void *address, Kind kind, Op by);

  /** @return the entry of an address that is alive; null for others. */
  const Entry *find(const void *address) const;

  /** The same for one kind of thing. */
  const Entry *find(const void *address, Kind kind) const;

  /** @return why `find` returns null for an address other than null. */
  std::string problem(const void *address) const;
  std::string problem(const void *address, Kind kind) const;

  /** @return what is alive and the module's to release, oldest first. */
  std::vector<std::string> leaks() const;

  /** @return an entry's name, such as "dictionary 3 from dictionary_new". */
  static std::string describe(const Entry &entry);

 private:
  void bury(const void *address, Entry &entry, Op by);

  struct Grave {
    const void *address = nullptr;
    std::uint64_t serial = 0;
    std::shared_ptr<void> record;
  };

  Checking checking_;
  AddressMap<Entry> entries_;
  std::vector<Grave> graveyard_;  // a ring of the records that were released last
  std::size_t oldest_grave_ = 0;
  std::size_t dead_blocks_ = 0;  // entries of blocks that were released
  std::uint64_t last_serial_ = 0;
};

}  // namespace patchbay

#endif
