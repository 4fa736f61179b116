#include "qelems.h"

#include <algorithm>

#include "call_out.h"
#include "gate.h"
#include "lookup.h"
#include "state.h"

using patchbay::Kind;
using patchbay::Op;
using patchbay::State;

namespace patchbay {

std::size_t run_deferred(State &s) {
  // What a task sets, again or for the first time, waits for the next time.
  const std::uint64_t last = s.last_ticket;
  std::size_t ran = 0;
  while (!s.queue.empty() && s.queue.front()->ticket <= last) {
    const t_qelem *task = s.queue.front();
    s.queue.pop_front();
    call_out(s, "a deferred task", [&] { task->task(task->owner); });
    ++ran;
  }
  return ran;
}

}  // namespace patchbay

namespace {

t_qelem *find_task(State &s, Op op, const t_qelem *task) {
  return patchbay::find<t_qelem>(s, op, Kind::task, task);
}

}  // namespace

t_qelem *qelem_new(void *owner, t_task task) {
  constexpr Op op = Op::qelem_new;
  return operation(op, static_cast<t_qelem *>(nullptr), [&](State &s) -> t_qelem * {
    if (task == nullptr) return nullptr;
    return s.ledger.make<t_qelem>(Kind::task, op, t_qelem{owner, task});
  });
}

void qelem_set(t_qelem *task) {
  constexpr Op op = Op::qelem_set;
  operation(op, 0, [&](State &s) {
    t_qelem *found = find_task(s, op, task);
    const bool queued = std::find(s.queue.begin(), s.queue.end(), found) != s.queue.end();
    if (found != nullptr && !queued) {
      found->ticket = ++s.last_ticket;
      s.queue.push_back(found);
    }
    return 0;
  });
}

void qelem_unset(t_qelem *task) {
  constexpr Op op = Op::qelem_unset;
  operation(op, 0, [&](State &s) {
    if (const t_qelem *found = find_task(s, op, task)) std::erase(s.queue, found);
    return 0;
  });
}

void qelem_free(t_qelem *task) {
  constexpr Op op = Op::qelem_free;
  operation(op, 0, [&](State &s) {
    const t_qelem *found = find_task(s, op, task);
    if (found == nullptr) return 0;
    std::erase(s.queue, found);
    s.ledger.release(found, op);
    return 0;
  });
}
