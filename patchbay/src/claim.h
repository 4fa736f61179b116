// Which host the operations act on: the one that lives, for the thread that it
// belongs to.
#ifndef PATCHBAY_CLAIM_H
#define PATCHBAY_CLAIM_H

#include <atomic>
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

  /** Releases the process. */
  void release();

  /** @return whether the host belongs to the calling thread. */
  bool is_own() const;

 private:
  State &state_;
  std::uint64_t number_;
};

// Every operation asks whose host it acts on; below, it finds that out without a call. The
// C library keeps some room for near variables of libraries that are loaded late.
#ifdef __GLIBC__
#define PATCHBAY_NEAR __attribute__((tls_model("initial-exec")))
#else
#define PATCHBAY_NEAR
#endif

/** The host that a thread made or adopted last; it may be gone. */
struct OwnHost {
  std::uint64_t number = 0;
  State *state = nullptr;
};
extern constinit thread_local OwnHost own PATCHBAY_NEAR;

/** The number of the living host, or 0. */
extern constinit std::atomic<std::uint64_t> living;

/** @return whether no host lives, in any thread. */
inline bool no_host_lives() { return living == 0; }

/** @return the state of the host that lives and belongs to the calling thread, or null. */
inline State *current_state() {
  return own.number != 0 && own.number == living ? own.state : nullptr;
}

/** Notes, for the host to report, that the calling thread called an operation while another
 *  thread's host is alive. */
void note_stray(Op op);

/** @return a sentence for each operation that a thread called while another thread's host was
 *          alive; each call is reported once. */
std::vector<std::string> take_strays();

}  // namespace patchbay

#endif
