#include <algorithm>

#include "state.h"

using patchbay::Kind;
using patchbay::Op;
using patchbay::State;

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
