/** Atom arrays: lists of atoms as objects. */
#ifndef BRONTAL_ATOMARRAY_H
#define BRONTAL_ATOMARRAY_H

#include "atom.h"
#include "types.h"

BRONTAL_BEGIN

/** An atom array: an object, see object.h for its messages. */
typedef struct t_atomarray t_atomarray;

/**
 * Makes an atom array. [main]
 * @param argc, argv  its first contents, copied; null when argc is 0
 * @return the array, owned by the caller until a dictionary takes it over,
 *         released with `object_free` if none does; null on failure
 */
BRONTAL_API t_atomarray *atomarray_new(t_long argc, const t_atom *argv);

BRONTAL_END

#endif
