// Which host the operations act on: the one that lives, for the thread that it
// belongs to.
#ifndef PATCHBAY_CLAIM_H
#define PATCHBAY_CLAIM_H

#include <cstdint>
#include <string>
#include <vector>

#include "operations.h"

namespace patchbay {

struct State;

/**
 * One host's hold on the process. The operations are plain functions without a
 * host among their arguments, and a module's statics are shared by all who load
 * it, so there is one host at a time, and one thread may call into it.
 */
class Claim {
 public:
  /** Claims the process for a host of the calling thread. Raises Error when there
   *  is a host already. */
  explicit Claim(State &state);
  ~Claim();
  Claim(const Claim &) = delete;
  Claim &operator=(const Claim &) = delete;

  /** Makes the calling thread the one that the host belongs to. */
  void adopt();

  /** Gives the process free. */
  void release();

  /** @return whether the host belongs to the calling thread. */
  bool is_own() const;

 private:
  State &state_;
  std::uint64_t number_;
};

/** @return whether no host lives, in any thread. */
bool no_host_lives();

/** @return the state of the host that lives and belongs to the calling thread, or null. */
State *current_state();

/** Takes down, for the host to tell, that the calling thread called an operation
 *  while another one's host lives. */
void note_stray(Op op);

/** @return a sentence for each operation that a thread has called while another
 *  one's host lived; each call is told once. */
std::vector<std::string> take_strays();

}  // namespace patchbay

#endif
