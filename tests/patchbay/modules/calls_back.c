/* Its start is written in each test: the test program defines `during_load`. */

#include "brontal/brontal.h"

void during_load(void);

BRONTAL_EXPORT void ext_main(void) {
  common_symbols_init();
  during_load();
}
