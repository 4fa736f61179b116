/**
 * A watchdog for tests of loops that might not end: while one is alive, the
 * process has so many seconds, then it names the test and what hung, and exits
 * with status 1. One at a time.
 */
#ifndef TESTS_WATCHDOG_H
#define TESTS_WATCHDOG_H

#include <gtest/gtest.h>
#include <signal.h>
#include <unistd.h>

#include <cstddef>
#include <cstdio>
#include <cstring>

namespace tests {

class Watchdog {
 public:
  /** @param subject  what is being waited for, for the message */
  explicit Watchdog(const char *subject, unsigned seconds = 20) {
    const testing::TestInfo *test = testing::UnitTest::GetInstance()->current_test_info();
    std::snprintf(message_, sizeof message_, "watchdog: %s.%s: %s did not return within %u s\n",
                  test != nullptr ? test->test_suite_name() : "?",
                  test != nullptr ? test->name() : "?", subject, seconds);
    length_ = std::strlen(message_);
    previous_ = signal(SIGALRM, bark);
    alarm(seconds);
  }
  ~Watchdog() {
    alarm(0);
    signal(SIGALRM, previous_);
  }
  Watchdog(const Watchdog &) = delete;
  Watchdog &operator=(const Watchdog &) = delete;

 private:
  // Only what is safe inside a signal handler: the message is made beforehand.
  static void bark(int) {
    if (write(STDERR_FILENO, message_, length_) < 0) _exit(2);
    _exit(1);
  }

  static inline char message_[512];
  static inline std::size_t length_ = 0;
  void (*previous_)(int) = SIG_DFL;
};

}  // namespace tests

#endif
