#include "os/leftovers.h"

#include <unistd.h>

#include <algorithm>
#include <array>
#include <atomic>
#include <utility>

namespace os {
namespace {

constexpr std::array<int, 3> ending_signals{SIGINT, SIGTERM, SIGHUP};

// A handler may only read what is here: names that stay where they are.
std::array<std::atomic<const char *>, 4> names;
std::atomic<pid_t> owner;
static_assert(std::atomic<const char *>::is_always_lock_free &&
              std::atomic<pid_t>::is_always_lock_free);

// The disposition is the default again, and the signal that is raised waits until the handler
// returns.
void remove_and_end(int signal) {
  remove_leftovers();
  raise(signal);
}

void watch_signals() {
  static bool watched = false;
  if (watched) return;
  watched = true;
  for (const int signal : ending_signals) {
    struct sigaction action {};
    sigaction(signal, nullptr, &action);
    if (action.sa_handler != SIG_DFL) continue;
    action.sa_handler = remove_and_end;
    action.sa_flags = static_cast<int>(SA_RESETHAND);
    sigaction(signal, &action, nullptr);
  }
}

void replace_name(const char *old, const char *with) {
  const auto place = std::find(names.begin(), names.end(), old);
  if (place != names.end()) *place = with;
}

}  // namespace

SignalsHeld::SignalsHeld() {
  sigset_t held;
  sigemptyset(&held);
  for (const int signal : ending_signals) sigaddset(&held, signal);
  sigprocmask(SIG_BLOCK, &held, &before_);
}

SignalsHeld::~SignalsHeld() { sigprocmask(SIG_SETMASK, &before_, nullptr); }

void remove_leftovers() noexcept {
  if (owner != getpid()) return;
  for (const auto &name : names)
    if (const char *file = name) unlink(file);
}

void Leftover::take(std::string &&name) noexcept {
  name_ = std::move(name);
  owner = getpid();
  watch_signals();
  replace_name(nullptr, name_.c_str());
}

void Leftover::remove() {
  if (!name_.empty()) unlink(name_.c_str());
  release();
}

void Leftover::release() {
  if (name_.empty()) return;
  replace_name(name_.c_str(), nullptr);
  name_.clear();
}

}  // namespace os
