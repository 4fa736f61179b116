#include "brontal/memory.h"

#include "gate.h"
#include "lookup.h"
#include "runtime/blocks.h"
#include "state.h"

using patchbay::Kind;
using patchbay::Op;
using patchbay::State;

// Without a host the memory calls work too, unwatched, so that programs may use
// the mathematics before they make a host and after it is gone.

namespace {

// Makes a block by `make`, which yields null when there is no memory.
template <typename Make>
void *entered(State &s, Op op, Make &&make) {
  if (!s.ledger.watches_blocks()) return make();
  s.ledger.make_room();  // first: a block that cannot be entered would be lost
  void *block = make();
  if (block != nullptr) s.ledger.add(block, Kind::block, op, nullptr);
  return block;
}

// Whether a block may be resized; one that may not is reported.
bool is_block(State &s, Op op, const void *block) {
  return !s.ledger.watches_blocks() || find_entry(s, op, Kind::block, block) != nullptr;
}

// Strikes a block out. @return whether it was one; what is not is reported
bool struck_out(State &s, Op op, const void *block) {
  return !s.ledger.watches_blocks() || s.ledger.release(block, Kind::block, op) ||
         find_entry(s, op, Kind::block, block) != nullptr;
}

void *new_block(Op op, t_long size, bool clear) {
  if (patchbay::no_host_lives()) return runtime::new_block(size, clear);
  return operation(
      op, static_cast<void *>(nullptr),
      [&](State &s) { return entered(s, op, [&] { return runtime::new_block(size, clear); }); },
      size);
}

}  // namespace

void *sysmem_newptr(t_long size) { return new_block(Op::sysmem_newptr, size, false); }

void *sysmem_newptrclear(t_long size) { return new_block(Op::sysmem_newptrclear, size, true); }

void *sysmem_resizeptrclear(void *block, t_long size) {
  constexpr Op op = Op::sysmem_resizeptrclear;
  if (patchbay::no_host_lives()) return runtime::resize_block(block, size);
  return operation(
      op, static_cast<void *>(nullptr),
      [&](State &s) -> void * {
        if (block != nullptr && !is_block(s, op, block)) return nullptr;
        return entered(s, op, [&] {
          void *resized = runtime::resize_block(block, size);
          if (resized != nullptr && block != nullptr) struck_out(s, op, block);
          return resized;
        });
      },
      size);
}

void sysmem_freeptr(void *block) {
  constexpr Op op = Op::sysmem_freeptr;
  if (patchbay::no_host_lives()) {
    runtime::free_block(block);
    return;
  }
  operation(op, 0, [&](State &s) {
    if (block != nullptr && struck_out(s, op, block)) runtime::free_block(block);
    return 0;
  });
}
