// The book of everything that modules hold addresses of.
#ifndef PATCHBAY_LEDGER_H
#define PATCHBAY_LEDGER_H

#include <cstdint>
#include <deque>
#include <memory>
#include <optional>
#include <string>
#include <unordered_map>
#include <vector>

#include "operations.h"

namespace patchbay {

enum class Kind {
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
 * may come back under the same address as something new.
 */
class Ledger {
 public:
  struct Entry {
    Kind kind;
    std::uint64_t serial;
    Op made_by;
    std::optional<Op> released_by;
    bool owned_by_host;  // released by the host, not by the module
    std::shared_ptr<void> record;
  };

  Ledger() = default;
  Ledger(const Ledger &) = delete;
  Ledger &operator=(const Ledger &) = delete;
  ~Ledger(); /**< releases what a module has leaked */

  /** Enters an address. @param record  what the ledger is to own; null for none */
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

  /** Strikes an address out. */
  void release(const void *address, Op by);

  /** The same, if it is alive, of this kind and not yet the host's: for a thing
   *  that an operation was to take over when it failed. */
  void release_unowned(const void *address, Kind kind, Op by);

  /**
   * @return the entry of an address that is alive; null for others, and then
   *         the reason is put into `problem`, unless the address is null
   */
  Entry *find(const void *address, std::string &problem);

  /** The same for one kind of thing. */
  Entry *find(const void *address, Kind kind, std::string &problem);

  bool alive(const void *address) const;
  bool alive(const void *address, Kind kind) const;

  /** @return what is alive and the module's to release, oldest first. */
  std::vector<std::string> leaks() const;

  /** @return an entry's name, such as "dictionary 3 from dictionary_new". */
  static std::string describe(const Entry &entry);

 private:
  struct Grave {
    const void *address;
    std::uint64_t serial;
    std::shared_ptr<void> record;
  };

  std::unordered_map<const void *, Entry> entries_;
  std::deque<Grave> graveyard_;
  std::uint64_t last_serial_ = 0;
};

}  // namespace patchbay

#endif
