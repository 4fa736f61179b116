// Values as atoms, and words as values.
#ifndef PATCHBAY_VALUES_H
#define PATCHBAY_VALUES_H

#include <string>
#include <vector>

#include "brontal/atom.h"
#include "patchbay/value.h"

namespace patchbay {

/** @return a word's number, or the word itself where it is not a number. */
Value parse_word(const std::string &word);

t_atom to_atom(const Value &value);
Value from_atom(const t_atom &atom);
std::vector<t_atom> to_atoms(const Values &values);

/** @return copies of the atoms; none when `argv` is null. */
Values from_atoms(t_long argc, const t_atom *argv);

}  // namespace patchbay

#endif
