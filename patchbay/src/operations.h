// The names of the operations, and the gate that each of them passes: it is
// where calls are written down, made to fail, and kept from throwing.
#ifndef PATCHBAY_OPERATIONS_H
#define PATCHBAY_OPERATIONS_H

#include <array>
#include <cstddef>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "brontal/symbol.h"
#include "brontal/types.h"
#include "patchbay/host.h"

namespace patchbay {

#define PATCHBAY_OPERATIONS(X)                                                                     \
  X(atom_getsym)                                                                                   \
  X(atom_setfloat)                                                                                 \
  X(atom_setsym)                                                                                   \
  X(atomarray_new)                                                                                 \
  X(attr_addfilter_clip)                                                                           \
  X(attr_args_process)                                                                             \
  X(attr_offset_array_new) X(attr_offset_new) X(class_addattr) X(class_addmethod)                  \
      X(class_attr_addattr_format) X(class_attr_addattr_parse) X(class_attr_get) X(class_dspinit)  \
          X(class_extra_lookup) X(class_new) X(class_register) X(common_symbols_init)              \
              X(dictionary_appendatomarray) X(dictionary_appendfloat) X(dictionary_appendsym)      \
                  X(dictionary_clear) X(dictionary_new) X(dictobj_register) X(gensym) X(gensym_tr) \
                      X(hashtab_lookup) X(object_addattr_parse) X(object_alloc)                    \
                          X(object_attach_byptr_register) X(object_attr_setdisabled)               \
                              X(object_attr_setdouble_array) X(object_attr_setsym) X(object_error) \
                                  X(object_free) X(object_method_imp) X(object_new_typed)          \
                                      X(outlet_anything) X(outlet_new) X(qelem_free) X(qelem_new)  \
                                          X(qelem_set) X(qelem_unset) X(str_tr) X(symbol_unique)   \
                                              X(sys_getsr) X(sysmem_freeptr) X(sysmem_newptr)      \
                                                  X(sysmem_newptrclear) X(sysmem_resizeptrclear)

#define PATCHBAY_ENUMERATOR(name) name,
#define PATCHBAY_NAME(name) #name,

enum class Op { PATCHBAY_OPERATIONS(PATCHBAY_ENUMERATOR) };

inline constexpr auto operation_names =
    std::to_array<std::string_view>({PATCHBAY_OPERATIONS(PATCHBAY_NAME)});

#undef PATCHBAY_NAME
#undef PATCHBAY_ENUMERATOR
#undef PATCHBAY_OPERATIONS

constexpr std::string_view name_of(Op op) { return operation_names[static_cast<std::size_t>(op)]; }

/** The record of calls, while one is kept. */
struct Trace {
  bool on = false;
  std::vector<Call> calls;
};

/** Which calls are to fail: how many calls off, 0 for none. */
struct Faults {
  bool armed = false;
  std::array<std::size_t, operation_names.size()> countdown{};

  bool strikes(Op op) {
    if (!armed) return false;
    std::size_t &left = countdown[static_cast<std::size_t>(op)];
    return left != 0 && --left == 0;
  }
};

// How arguments are written down. Addresses say nothing, so calls name things
// by their names instead.
inline std::string as_text(const char *text) { return text != nullptr ? text : "null"; }
inline std::string as_text(const t_symbol *symbol) {
  return symbol != nullptr ? symbol->name : "null";
}
std::string as_text(t_long number);
std::string as_text(double number);

/** @return the state of the host that lives and belongs to the calling thread, or null. */
State *current_state();

/** Takes down, for the host to tell, that the calling thread called an operation
 *  while another one's host lives. */
void note_stray(Op op);

Trace &trace_of(State &state);
Faults &faults_of(State &state);
void report(State &state, std::string violation);

/**
 * Carries out one operation: `body(state)`, or `refuse(state)` when a fault
 * strikes, or when what is asked cannot be done or has no memory. Without a host of
 * the calling thread it yields `failure`.
 */
template <typename Result, typename Refuse, typename Body, typename... Arguments>
Result operation_or(Op op, Result failure, Refuse &&refuse, Body &&body,
                    const Arguments &...arguments) noexcept {
  State *state = current_state();
  if (state == nullptr) {
    note_stray(op);
    return failure;
  }
  try {
    if (Trace &trace = trace_of(*state); trace.on)
      trace.calls.push_back({std::string(name_of(op)), {as_text(arguments)...}});
    if (!faults_of(*state).strikes(op)) return body(*state);
  } catch (...) {
    // What the operation cannot do, it refuses.
  }
  refuse(*state);
  return failure;
}

/** The same for an operation that has nothing to do when it is refused. */
template <typename Result, typename Body, typename... Arguments>
Result operation(Op op, Result failure, Body &&body, const Arguments &...arguments) noexcept {
  return operation_or(
      op, failure, [](State &) {}, std::forward<Body>(body), arguments...);
}

}  // namespace patchbay

#endif
