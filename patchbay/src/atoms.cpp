#include "brontal/atom.h"
#include "gate.h"
#include "words.h"

using patchbay::Op;
using patchbay::State;

namespace {

template <typename Value>
t_result store(Op op, t_atom *atom, const t_atom &value, const Value &traced) {
  return operation(
      op, RESULT_FAILED,
      [&](State &) {
        const bool holds_nothing = value.type == ATOM_SYMBOL && value.value.symbol == nullptr;
        if (atom == nullptr || holds_nothing) return RESULT_FAILED;
        *atom = value;
        return RESULT_OK;
      },
      traced);
}

}  // namespace

t_result atom_setfloat(t_atom *atom, double value) {
  t_atom made{};
  made.type = ATOM_FLOAT;
  made.value.number = value;
  return store(Op::atom_setfloat, atom, made, value);
}

t_result atom_setsym(t_atom *atom, t_symbol *value) {
  t_atom made{};
  made.type = ATOM_SYMBOL;
  made.value.symbol = value;
  return store(Op::atom_setsym, atom, made, value);
}

t_symbol *atom_getsym(const t_atom *atom) {
  return operation(Op::atom_getsym, patchbay::words().empty, [&](State &) {
    const bool holds = atom != nullptr && atom->type == ATOM_SYMBOL;
    return holds ? atom->value.symbol : patchbay::words().empty;
  });
}
