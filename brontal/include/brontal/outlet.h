/** Outlets: where an instance sends messages to whatever is connected. */
#ifndef BRONTAL_OUTLET_H
#define BRONTAL_OUTLET_H

#include "atom.h"
#include "symbol.h"
#include "types.h"

BRONTAL_BEGIN

typedef struct t_outlet t_outlet;

/**
 * Adds an outlet to an instance, to the left of its existing ones. [main]
 * @param owner  the instance; it takes its outlets with it when it is freed
 * @param type   the one message that it sends; null for any
 * @return the outlet, owned by the host; null on failure
 */
BRONTAL_API t_outlet *outlet_new(void *owner, const char *type);

/**
 * Sends a message to everything connected, which runs before this returns and
 * may do anything, freeing the sender included. [main]
 * @param argc, argv  read during the call
 */
BRONTAL_API t_result outlet_anything(t_outlet *outlet, t_symbol *message, t_long argc,
                                     const t_atom *argv);

BRONTAL_END

#endif
