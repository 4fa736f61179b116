/** The table of interned strings: the implementation of brontal/symbol.h. */
#ifndef RUNTIME_SYMBOLS_H
#define RUNTIME_SYMBOLS_H

#include "brontal/symbol.h"

namespace runtime {

/** @return the symbol with this text (null: the empty text), which lives as
 *  long as the process. Threads may intern at the same time.
 *  Raises std::bad_alloc. */
t_symbol *intern(const char *text);

/** @return a symbol with a text that was not interned before. */
t_symbol *unique_symbol();

}  // namespace runtime

#endif
