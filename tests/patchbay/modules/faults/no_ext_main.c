/* A library that is not a module: it has no start function. */

#include "brontal/brontal.h"

BRONTAL_EXPORT void another_main(void);

BRONTAL_EXPORT void another_main(void) { common_symbols_init(); }
