#include "runtime/symbols.h"

#include <new>

#include "gate.h"
#include "modules.h"
#include "state.h"
#include "words.h"

using patchbay::Op;
using patchbay::State;

namespace {

t_common_symbols table{};

t_symbol *const no_symbol = nullptr;

}  // namespace

const t_common_symbols *common_symbols = &table;

void common_symbols_init() {
  operation(Op::common_symbols_init, 0, [](State &s) {
    if (!patchbay::is_loading(s, Op::common_symbols_init)) return 0;
    table = {patchbay::words().box, patchbay::words().name, patchbay::words().getname,
             patchbay::words().edit, patchbay::words().attr_modified};
    return 0;
  });
}

// Symbols outlive hosts, so they can be made without one.
t_symbol *gensym(const char *text) {
  if (patchbay::no_host_lives()) {
    try {
      return runtime::intern(text);
    } catch (const std::bad_alloc &) {
      return nullptr;
    }
  }
  return operation(
      Op::gensym, no_symbol, [&](State &) { return runtime::intern(text); }, text);
}

// There is one language, so a translation is the text itself.
t_symbol *gensym_tr(const char *text) {
  return operation(
      Op::gensym_tr, no_symbol, [&](State &) { return runtime::intern(text); }, text);
}

const char *str_tr(const char *text) {
  return operation(
      Op::str_tr, static_cast<const char *>(nullptr),
      [&](State &) { return runtime::intern(text)->name; }, text);
}

t_symbol *symbol_unique() {
  return operation(Op::symbol_unique, no_symbol, [](State &) { return runtime::unique_symbol(); });
}
