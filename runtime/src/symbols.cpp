#include "runtime/symbols.h"

#include <deque>
#include <mutex>
#include <string>
#include <string_view>
#include <unordered_map>

namespace runtime {
namespace {

struct Entry {
  std::string text;
  t_symbol symbol;
};

class Table {
 public:
  t_symbol *intern(std::string_view text) {
    const std::lock_guard lock(mutex_);
    const auto found = by_text_.find(text);
    return found != by_text_.end() ? found->second : add(std::string(text));
  }

  t_symbol *unique() {
    const std::lock_guard lock(mutex_);
    std::string text;
    do text = "u" + std::to_string(++last_unique_);
    while (by_text_.contains(text));
    return add(std::move(text));
  }

 private:
  t_symbol *add(std::string text) {
    Entry &entry = entries_.emplace_back(Entry{std::move(text), {}});
    entry.symbol.name = entry.text.c_str();
    by_text_.emplace(entry.text, &entry.symbol);
    return &entry.symbol;
  }

  std::mutex mutex_;
  std::deque<Entry> entries_;  // its entries never move
  std::unordered_map<std::string_view, t_symbol *> by_text_;
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
