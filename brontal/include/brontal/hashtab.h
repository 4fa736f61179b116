/** Tables from symbols to objects, read only for a module. */
#ifndef BRONTAL_HASHTAB_H
#define BRONTAL_HASHTAB_H

#include "symbol.h"
#include "types.h"

BRONTAL_BEGIN

typedef struct t_hashtab t_hashtab;

/**
 * Looks an entry up. [main]
 * @return the object stored under the key, owned by the table; null when
 *         there is none
 */
BRONTAL_API void *hashtab_lookup(const t_hashtab *table, t_symbol *key);

BRONTAL_END

#endif
