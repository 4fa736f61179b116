// The names of the operations that the host provides.
#ifndef PATCHBAY_OPERATIONS_H
#define PATCHBAY_OPERATIONS_H

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>

namespace patchbay {

// clang-format off
#define PATCHBAY_OPERATIONS(X)    \
  X(atom_getsym)                  \
  X(atom_setfloat)                \
  X(atom_setsym)                  \
  X(atomarray_new)                \
  X(attr_addfilter_clip)          \
  X(attr_args_process)            \
  X(attr_offset_array_new)        \
  X(attr_offset_new)              \
  X(class_addattr)                \
  X(class_addmethod)              \
  X(class_attr_addattr_format)    \
  X(class_attr_addattr_parse)     \
  X(class_attr_get)               \
  X(class_dspinit)                \
  X(class_extra_lookup)           \
  X(class_new)                    \
  X(class_register)               \
  X(common_symbols_init)          \
  X(dictionary_appendatomarray)   \
  X(dictionary_appendfloat)       \
  X(dictionary_appendsym)         \
  X(dictionary_clear)             \
  X(dictionary_new)               \
  X(dictobj_register)             \
  X(gensym)                       \
  X(gensym_tr)                    \
  X(hashtab_lookup)               \
  X(object_addattr_parse)         \
  X(object_alloc)                 \
  X(object_attach_byptr_register) \
  X(object_attr_setdisabled)      \
  X(object_attr_setdouble_array)  \
  X(object_attr_setsym)           \
  X(object_error)                 \
  X(object_free)                  \
  X(object_method_imp)            \
  X(object_new_typed)             \
  X(outlet_anything)              \
  X(outlet_new)                   \
  X(qelem_free)                   \
  X(qelem_new)                    \
  X(qelem_set)                    \
  X(qelem_unset)                  \
  X(str_tr)                       \
  X(symbol_unique)                \
  X(sys_getsr)                    \
  X(sysmem_freeptr)               \
  X(sysmem_newptr)                \
  X(sysmem_newptrclear)           \
  X(sysmem_resizeptrclear)
// clang-format on

#define PATCHBAY_ENUMERATOR(name) name,
#define PATCHBAY_NAME(name) #name,

enum class Op : std::uint8_t { PATCHBAY_OPERATIONS(PATCHBAY_ENUMERATOR) };

inline constexpr auto operation_names =
    std::to_array<std::string_view>({PATCHBAY_OPERATIONS(PATCHBAY_NAME)});

#undef PATCHBAY_NAME
#undef PATCHBAY_ENUMERATOR
#undef PATCHBAY_OPERATIONS

constexpr std::string_view name_of(Op op) { return operation_names[static_cast<std::size_t>(op)]; }

}  // namespace patchbay

#endif
