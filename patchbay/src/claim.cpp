#include "claim.h"

#include <array>
#include <atomic>

#include <fmt/format.h>

#include "operations.h"
#include "patchbay/host.h"

namespace patchbay {
namespace {

// Hosts are identified by numbers: unlike addresses, they are never reused.
std::atomic<std::uint64_t> last_number = 0;

// By operation. Written from any thread, so that nothing of a host is.
std::array<std::atomic<bool>, operation_names.size()> strays{};

}  // namespace

constinit thread_local OwnHost own PATCHBAY_NEAR;
constinit std::atomic<std::uint64_t> living = 0;

Claim::Claim(State &state) : state_(state), number_(++last_number) {
  std::uint64_t none = 0;
  if (!living.compare_exchange_strong(none, number_)) throw Error("there is already a host");
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
