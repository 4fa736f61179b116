/* Asks for an operation that no host has. */

#include "brontal/brontal.h"

void operation_that_no_host_has(void);

BRONTAL_EXPORT void ext_main(void) { operation_that_no_host_has(); }
