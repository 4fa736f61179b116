#include "dictionaries.h"

#include <algorithm>
#include <ostream>

#include <fmt/format.h>

#include "gate.h"
#include "lookup.h"
#include "runtime/symbols.h"
#include "state.h"
#include "values.h"
#include "violations.h"

using patchbay::Kind;
using patchbay::Op;
using patchbay::State;

namespace patchbay {
namespace {

void release_stored(State &s, const t_dictionary::Stored &stored, Op by) {
  if (const auto *array = std::get_if<t_atomarray *>(&stored)) {
    // The record stays in the ledger for a while; what it holds need not.
    (*array)->atoms = {};
    s.ledger.release(*array, by);
  }
}

void clear(State &s, t_dictionary &d, Op by) {
  for (const auto &[key, stored] : d.entries) release_stored(s, stored, by);
  d.entries.clear();
}

void append(State &s, t_dictionary &d, t_symbol *key, t_dictionary::Stored stored, Op by) {
  const auto found = std::find_if(d.entries.begin(), d.entries.end(),
                                  [key](const auto &entry) { return entry.first == key; });
  if (found == d.entries.end()) {
    d.entries.emplace_back(key, stored);
  } else {
    release_stored(s, found->second, by);
    found->second = stored;
  }
}

}  // namespace

void destroy_dictionary(State &s, t_dictionary *d, Op by) {
  if (d->name != nullptr) s.dictionaries.erase(d->name);
  clear(s, *d, by);
  s.ledger.release(d, by);
}

Dictionary contents(const t_dictionary &d) {
  struct ToEntry {
    Entry operator()(t_symbol *symbol) const { return as_text(symbol); }
    Entry operator()(double number) const { return number; }
    Entry operator()(const t_atomarray *array) const {
      return from_atoms(static_cast<t_long>(array->atoms.size()), array->atoms.data());
    }
  };
  Dictionary dictionary;
  dictionary.reserve(d.entries.size());
  for (const auto &[key, stored] : d.entries)
    dictionary.emplace_back(as_text(key), std::visit(ToEntry{}, stored));
  return dictionary;
}

void print(std::ostream &out, const Dictionary &dictionary) {
  for (const auto &[key, entry] : dictionary) {
    out << key << " :";
    if (const auto *text = std::get_if<std::string>(&entry)) out << ' ' << *text;
    if (const auto *number = std::get_if<double>(&entry)) out << ' ' << to_text(*number);
    if (const auto *values = std::get_if<Values>(&entry))
      for (const Value &value : *values) out << ' ' << to_text(value);
    out << '\n';
  }
}

}  // namespace patchbay

namespace {

bool is_null(const t_symbol *value) { return value == nullptr; }
bool is_null(double /*value*/) { return false; }

template <typename Value>
t_result append(Op op, t_dictionary *d, t_symbol *key, const Value &value) {
  return operation(
      op, RESULT_FAILED,
      [&](State &s) {
        auto *found = patchbay::find<t_dictionary>(s, op, Kind::dictionary, d);
        if (found == nullptr || key == nullptr || is_null(value)) return RESULT_FAILED;
        patchbay::append(s, *found, key, value, op);
        return RESULT_OK;
      },
      key, value);
}

// The name that a dictionary gets: the wanted one, unless that is empty or
// another's.
t_symbol *free_name(const State &s, const t_dictionary *d, t_symbol *wanted) {
  if (wanted == nullptr || *wanted->name == '\0') return runtime::unique_symbol();
  const auto taken = s.dictionaries.find(wanted);
  const bool another = taken != s.dictionaries.end() && taken->second != d;
  return another ? runtime::unique_symbol() : wanted;
}

}  // namespace

t_dictionary *dictionary_new() {
  constexpr Op op = Op::dictionary_new;
  return operation(op, static_cast<t_dictionary *>(nullptr),
                   [](State &s) { return s.ledger.make<t_dictionary>(Kind::dictionary, op); });
}

t_result dictionary_clear(t_dictionary *d) {
  constexpr Op op = Op::dictionary_clear;
  return operation(op, RESULT_FAILED, [&](State &s) {
    auto *found = patchbay::find<t_dictionary>(s, op, Kind::dictionary, d);
    if (found == nullptr) return RESULT_FAILED;
    patchbay::clear(s, *found, op);
    return RESULT_OK;
  });
}

t_result dictionary_appendsym(t_dictionary *d, t_symbol *key, t_symbol *value) {
  return append(Op::dictionary_appendsym, d, key, value);
}

t_result dictionary_appendfloat(t_dictionary *d, t_symbol *key, double value) {
  return append(Op::dictionary_appendfloat, d, key, value);
}

t_result dictionary_appendatomarray(t_dictionary *d, t_symbol *key, t_atomarray *value) {
  constexpr Op op = Op::dictionary_appendatomarray;
  const auto release = [value](State &s) { s.ledger.release_unowned(value, Kind::atom_array, op); };
  return operation_or(
      op, RESULT_FAILED, release,
      [&](State &s) {
        if (!can_take_over(s, op, Kind::atom_array, value, "a dictionary")) return RESULT_FAILED;
        auto *found = patchbay::find<t_dictionary>(s, op, Kind::dictionary, d);
        if (found == nullptr || key == nullptr) {
          release(s);
          return RESULT_FAILED;
        }
        patchbay::append(s, *found, key, value, op);
        s.ledger.owned_by_host(value);
        return RESULT_OK;
      },
      key);
}

t_dictionary *dictobj_register(t_dictionary *d, t_symbol **name) {
  constexpr Op op = Op::dictobj_register;
  t_dictionary *const none = nullptr;
  const auto give_up = [d](State &s) {
    if (s.ledger.find(d, Kind::dictionary) != nullptr) destroy_dictionary(s, d, op);
  };
  const t_symbol *wanted = name != nullptr ? *name : nullptr;
  return operation_or(
      op, none, give_up,
      [&](State &s) -> t_dictionary * {
        if (name == nullptr) {
          give_up(s);
          return nullptr;
        }
        t_dictionary *found = d == nullptr
                                  ? s.ledger.make<t_dictionary>(Kind::dictionary, op)
                                  : patchbay::find<t_dictionary>(s, op, Kind::dictionary, d);
        if (found == nullptr) return nullptr;
        t_symbol *given = free_name(s, found, *name);
        if (found->name != nullptr) s.dictionaries.erase(found->name);
        s.dictionaries[given] = found;
        found->name = given;
        *name = given;
        return found;
      },
      wanted);
}
