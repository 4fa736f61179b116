// Dictionaries: values under keys.
#ifndef PATCHBAY_DICTIONARIES_H
#define PATCHBAY_DICTIONARIES_H

#include <iosfwd>
#include <utility>
#include <variant>
#include <vector>

#include "atomarrays.h"
#include "brontal/dictionary.h"
#include "operations.h"
#include "patchbay/value.h"

struct t_dictionary {
  using Stored = std::variant<t_symbol *, double, t_atomarray *>;
  t_symbol *name = nullptr;  // under which it is registered
  std::vector<std::pair<t_symbol *, Stored>> entries;
};

namespace patchbay {

struct State;

/** Releases a dictionary with its atom arrays; it is no longer found by its name. */
void destroy_dictionary(State &s, t_dictionary *d, Op by);

/** @return a copy of what it holds. */
Dictionary contents(const t_dictionary &d);

/** Prints a line for each key. */
void print(std::ostream &out, const Dictionary &dictionary);

}  // namespace patchbay

#endif
