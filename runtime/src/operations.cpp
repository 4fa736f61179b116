// The operations of brontal/memory.h, and `gensym`, for programs without a
// host. A host brings its own.

#include <new>

#include "brontal/memory.h"
#include "brontal/symbol.h"
#include "runtime/blocks.h"
#include "runtime/symbols.h"

void *sysmem_newptr(t_long size) { return runtime::new_block(size, false); }

void *sysmem_newptrclear(t_long size) { return runtime::new_block(size, true); }

void *sysmem_resizeptrclear(void *block, t_long size) { return runtime::resize_block(block, size); }

void sysmem_freeptr(void *block) { runtime::free_block(block); }

t_symbol *gensym(const char *text) {
  try {
    return runtime::intern(text);
  } catch (const std::bad_alloc &) {
    return nullptr;
  }
}
