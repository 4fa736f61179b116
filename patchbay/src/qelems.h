// Deferred tasks.
#ifndef PATCHBAY_QELEMS_H
#define PATCHBAY_QELEMS_H

#include <cstddef>
#include <cstdint>

#include "brontal/qelem.h"

struct t_qelem {
  void *owner;
  t_task task;
  std::uint64_t ticket = 0;  // grows with each setting
};

namespace patchbay {

struct State;

/** Runs the tasks that are set, in order, once each; those that they set wait for the next time.
 *  @return how many ran */
std::size_t run_deferred(State &s);

}  // namespace patchbay

#endif
