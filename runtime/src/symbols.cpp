#include "runtime/symbols.h"

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <deque>
#include <memory>
#include <mutex>
#include <string>
#include <utility>
#include <vector>

namespace runtime {
namespace {

struct Entry {
  std::uint64_t hash;
  std::string text;
  t_symbol symbol;
};

// FNV-1a: texts are short, and their length is not known beforehand.
std::uint64_t hash_of(const char *text) {
  std::uint64_t hash = 0xCBF29CE484222325U;
  for (; *text != '\0'; ++text) hash = (hash ^ static_cast<unsigned char>(*text)) * 0x100000001B3U;
  return hash;
}

/**
 * A hash table that only grows. Looking up takes no lock: a slot changes once, from
 * null to an entry that is whole by then, and a table that has become too small is
 * replaced by a larger one and kept, as someone may still be reading it.
 */
class Table {
 public:
  t_symbol *intern(const char *text) {
    const std::uint64_t hash = hash_of(text);
    if (Entry *found = place_of(hash, text)->load(std::memory_order_acquire)) return &found->symbol;
    const std::lock_guard lock(mutex_);
    return added(hash, text);
  }

  t_symbol *unique() {
    const std::lock_guard lock(mutex_);
    std::string text;
    std::uint64_t hash = 0;
    do {
      text = "u";
      text += std::to_string(++last_unique_);
      hash = hash_of(text.c_str());
    } while (place_of(hash, text.c_str())->load(std::memory_order_relaxed) != nullptr);
    return added(hash, text.c_str());
  }

 private:
  using Slot = std::atomic<Entry *>;
  struct Slots {
    explicit Slots(std::size_t count_) : count(count_), first(new Slot[count_]()) {}
    std::size_t count;  // a power of two
    std::unique_ptr<Slot[]> first;
  };

  // Where a text is, or the empty slot where it belongs.
  Slot *place_of(std::uint64_t hash, const char *text) const {
    const Slots &slots = *slots_.load(std::memory_order_acquire);
    for (auto place = static_cast<std::size_t>(hash);; ++place) {
      Slot &slot = slots.first[place & (slots.count - 1)];
      const Entry *entry = slot.load(std::memory_order_acquire);
      if (entry == nullptr || (entry->hash == hash && entry->text == text)) return &slot;
    }
  }

  // Of the one thread that holds the lock; another may have added the text before.
  t_symbol *added(std::uint64_t hash, const char *text) {
    if (Entry *found = place_of(hash, text)->load(std::memory_order_relaxed)) return &found->symbol;
    if (2 * (entries_.size() + 1) > slots_.load(std::memory_order_relaxed)->count) grow();
    Entry &entry = entries_.emplace_back(Entry{hash, text, {}});
    entry.symbol.name = entry.text.c_str();
    place_of(hash, text)->store(&entry, std::memory_order_release);
    return &entry.symbol;
  }

  void grow() {
    auto larger = std::make_unique<Slots>(2 * slots_.load(std::memory_order_relaxed)->count);
    for (Entry &entry : entries_) {
      auto place = static_cast<std::size_t>(entry.hash);
      while (larger->first[place & (larger->count - 1)].load(std::memory_order_relaxed) != nullptr)
        ++place;
      larger->first[place & (larger->count - 1)].store(&entry, std::memory_order_relaxed);
    }
    tables_.push_back(std::move(larger));
    slots_.store(tables_.back().get(), std::memory_order_release);
  }

  std::mutex mutex_;                            // of those who add
  std::deque<Entry> entries_;                   // never move
  std::vector<std::unique_ptr<Slots>> tables_;  // the last is in use
  std::atomic<Slots *> slots_ = tables_.emplace_back(std::make_unique<Slots>(256)).get();
  std::size_t last_unique_ = 0;
};

// Never destroyed: whoever runs last may still hold a symbol.
Table &table() {
  static Table &instance = *new Table;
  return instance;
}

}  // namespace

t_symbol *intern(const char *text) { return table().intern(text != nullptr ? text : ""); }

t_symbol *unique_symbol() { return table().unique(); }

}  // namespace runtime
