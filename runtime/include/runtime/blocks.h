/** Blocks of memory that know their size: the implementation of brontal/memory.h. */
#ifndef RUNTIME_BLOCKS_H
#define RUNTIME_BLOCKS_H

#include "brontal/types.h"

namespace runtime {

// Where memory is exhausted, the program's std::new_handler is called, as by `new`.

/** @return a block of `size` bytes, zero-filled if `clear`; null when memory
 *  is exhausted or size is negative. Released with `free_block`. */
void *new_block(t_long size, bool clear) noexcept;

/** @return the block with its new size, zero beyond the old one; null on
 *  failure, and the old block stands. A null block asks for a new one. */
void *resize_block(void *block, t_long size) noexcept;

/** Releases a block; null is accepted. */
void free_block(void *block) noexcept;

/** @return the size that the block was asked for. */
t_long block_size(const void *block) noexcept;

}  // namespace runtime

#endif
