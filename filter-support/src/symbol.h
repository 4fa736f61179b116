// Symbols of the host, which may run out of memory.
#ifndef FILTERMATH_SRC_SYMBOL_H
#define FILTERMATH_SRC_SYMBOL_H

#include <new>

#include "brontal/symbol.h"

namespace filtermath {

/**
 * @return the symbol with this text; raises std::bad_alloc. A null symbol would
 * make one comparison of a design fail and the next one not.
 */
inline t_symbol *symbol(const char *text) {
  t_symbol *interned = gensym(text);
  if (interned == nullptr) throw std::bad_alloc();
  return interned;
}

}  // namespace filtermath

#endif
