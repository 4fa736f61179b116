/**
 * The host's memory calls. A block from one of them is released by
 * `sysmem_freeptr` and by nothing else.
 */
#ifndef BRONTAL_MEMORY_H
#define BRONTAL_MEMORY_H

#include "types.h"

BRONTAL_BEGIN

/**
 * Allocates a block. [main]
 * @param size  in bytes; 0 yields null, or a block that holds nothing and must
 *              be freed all the same: hosts differ
 * @return the block, aligned for any type, its contents undefined; null when
 *         memory is exhausted or size is negative, and maybe when it is 0
 */
BRONTAL_API void *sysmem_newptr(t_long size);

/** Like `sysmem_newptr`, with every byte zero. [main] */
BRONTAL_API void *sysmem_newptrclear(t_long size);

/**
 * Changes the size of a block; it may move. [main]
 * @param block  from one of these calls; null asks for a new, cleared block
 * @param size   in bytes, more than 0: hosts differ in what 0 does to the block
 * @return the block at its new place: what it held stays, up to the smaller
 *         of both sizes, and every byte beyond the old size is zero. Null on
 *         failure: then the old block is as it was and still the caller's
 */
BRONTAL_API void *sysmem_resizeptrclear(void *block, t_long size);

/** Releases a block; null is accepted. [main] */
BRONTAL_API void sysmem_freeptr(void *block);

BRONTAL_END

#endif
