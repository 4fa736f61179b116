#include "atomarrays.h"

#include "gate.h"
#include "state.h"

using patchbay::Kind;
using patchbay::Op;
using patchbay::State;

t_atomarray *atomarray_new(t_long argc, const t_atom *argv) {
  constexpr Op op = Op::atomarray_new;
  return operation(
      op, static_cast<t_atomarray *>(nullptr),
      [&](State &s) -> t_atomarray * {
        if (argc < 0 || (argc > 0 && argv == nullptr)) return nullptr;
        return s.ledger.make<t_atomarray>(Kind::atom_array, op,
                                          t_atomarray{std::vector<t_atom>(argv, argv + argc)});
      },
      argc);
}
