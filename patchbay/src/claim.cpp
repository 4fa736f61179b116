#include "claim.h"

#include <array>
#include <atomic>

#include <fmt/format.h>

#include "operations.h"
#include "patchbay/host.h"

namespace patchbay {
namespace {

// Hosts are told apart by numbers: unlike addresses, they do not come again.
std::atomic<std::uint64_t> last_number = 0;
std::atomic<std::uint64_t> living = 0;  // 0 when there is none

// Every operation asks whose host it acts on, and finds that out without a call this way.
// The C library keeps some room for variables of libraries that are loaded late.
#ifdef __GLIBC__
#define PATCHBAY_NEAR __attribute__((tls_model("initial-exec")))
#else
#define PATCHBAY_NEAR
#endif

// The host that the thread made or adopted last; it may be gone.
struct Own {
  std::uint64_t number = 0;
  State *state = nullptr;
};
constinit thread_local Own own PATCHBAY_NEAR;

// By operation. Written from any thread, so that nothing of a host is.
std::array<std::atomic<bool>, operation_names.size()> strays{};

}  // namespace

Claim::Claim(State &state) : state_(state), number_(++last_number) {
  std::uint64_t none = 0;
  if (!living.compare_exchange_strong(none, number_)) throw Error("there is a host already");
  for (std::atomic<bool> &stray : strays) stray = false;
  adopt();
}

Claim::~Claim() { release(); }

void Claim::adopt() { own = {number_, &state_}; }

void Claim::release() {
  std::uint64_t mine = number_;
  living.compare_exchange_strong(mine, 0);
}

bool Claim::is_own() const { return own.number == number_; }

bool no_host_lives() { return living == 0; }

State *current_state() { return own.number != 0 && own.number == living ? own.state : nullptr; }

void note_stray(Op op) {
  if (const std::uint64_t number = living; number != 0 && number != own.number)
    strays[static_cast<std::size_t>(op)] = true;
}

std::vector<std::string> take_strays() {
  std::vector<std::string> sentences;
  for (std::size_t i = 0; i < strays.size(); ++i)
    if (strays[i].exchange(false))
      sentences.push_back(fmt::format(
          "{} was called from a thread that the host does not belong to", operation_names[i]));
  return sentences;
}

}  // namespace patchbay
