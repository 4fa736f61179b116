// The progress of a long piece of work, on standard error.
#ifndef CLI_BASE_PROGRESS_H
#define CLI_BASE_PROGRESS_H

#include <chrono>
#include <string>
#include <string_view>

namespace cli {

/** One line that is written over, at most five times a second; nothing where standard error is not a
 *  terminal. The line ends with this object. */
class Progress {
 public:
  /** @param what  is counted, such as "lines" */
  explicit Progress(std::string_view what);
  ~Progress();
  Progress(const Progress &) = delete;
  Progress &operator=(const Progress &) = delete;

  /** @param done      how many of them
   *  @param fraction  of the work; below 0 where its size is not known */
  void show(double done, double fraction);

 private:
  using Clock = std::chrono::steady_clock;
  std::string what_;
  bool terminal_;
  bool written_ = false;
  Clock::time_point start_ = Clock::now();
  Clock::time_point shown_ = start_;
};

}  // namespace cli

#endif
