#include "brontal/memory.h"

#include "gate.h"
#include "runtime/blocks.h"
#include "state.h"
#include "violations.h"

using patchbay::Kind;
using patchbay::Op;
using patchbay::State;

// Without a host the memory calls work too, unwatched, so that programs may use
// the mathematics before they make a host and after it is gone.

namespace {

void *watched(State &s, Op op, void *block) {
  if (block != nullptr) s.ledger.add(block, Kind::block, op, nullptr);
  return block;
}

// A block, null, or (reported) anything else.
bool is_block(State &s, Op op, const void *block) {
  std::string problem;
  const bool found = s.ledger.find(block, Kind::block, problem) != nullptr;
  if (!problem.empty()) report(s, std::string(name_of(op)) + " was given " + problem);
  return found;
}

void *new_block(Op op, t_long size, bool clear) {
  if (patchbay::no_host_lives()) return runtime::new_block(size, clear);
  return operation(
      op, static_cast<void *>(nullptr),
      [&](State &s) { return watched(s, op, runtime::new_block(size, clear)); }, size);
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
        void *resized = runtime::resize_block(block, size);
        if (resized == nullptr) return nullptr;
        if (block != nullptr) s.ledger.release(block, op);
        return watched(s, op, resized);
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
    if (block == nullptr || !is_block(s, op, block)) return 0;
    s.ledger.release(block, op);
    runtime::free_block(block);
    return 0;
  });
}
