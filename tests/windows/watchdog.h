/**
 * The watchdog of ../watchdog.h for Windows, which has no alarms: a thread waits for the time to be
 * over.
 */
#ifndef TESTS_WATCHDOG_H
#define TESTS_WATCHDOG_H

#include <gtest/gtest.h>

#include <chrono>
#include <condition_variable>
#include <cstdio>
#include <cstdlib>
#include <mutex>
#include <string>
#include <thread>

namespace tests {

class Watchdog {
 public:
  /** @param subject  what is being waited for, for the message */
  explicit Watchdog(const char *subject, unsigned seconds = 20) {
    const testing::TestInfo *test = testing::UnitTest::GetInstance()->current_test_info();
    const std::string name =
        test != nullptr ? std::string(test->test_suite_name()) + "." + test->name() : "?";
    thread_ = std::thread([this, name, subject, seconds] {
      std::unique_lock lock(mutex_);
      if (ended_.wait_for(lock, std::chrono::seconds(seconds), [this] { return gone_; })) return;
      std::fprintf(stderr, "watchdog: %s: %s did not return within %u s\n", name.c_str(), subject,
                   seconds);
      std::_Exit(1);
    });
  }
  ~Watchdog() {
    {
      const std::lock_guard lock(mutex_);
      gone_ = true;
    }
    ended_.notify_one();
    thread_.join();
  }
  Watchdog(const Watchdog &) = delete;
  Watchdog &operator=(const Watchdog &) = delete;

 private:
  std::mutex mutex_;
  std::condition_variable ended_;
  bool gone_ = false;
  std::thread thread_;
};

}  // namespace tests

#endif
