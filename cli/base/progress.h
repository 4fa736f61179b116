// The progress of a long piece of work, on standard error.
#ifndef CLI_BASE_PROGRESS_H
#define CLI_BASE_PROGRESS_H

#include <chrono>
#include <cstddef>

namespace cli {

/** One line that is written over, at most five times a second; nothing where standard error is not a
 *  terminal. The line ends with this object. */
class Progress {
 public:
  Progress();
  ~Progress();
  Progress(const Progress &) = delete;
  Progress &operator=(const Progress &) = delete;

  /** @param done      lines
   *  @param fraction  of the input that has been read; below 0 where its size is not known */
  void show(std::size_t done, double fraction);

 private:
  using Clock = std::chrono::steady_clock;
  bool terminal_;
  bool written_ = false;
  Clock::time_point start_ = Clock::now();
  Clock::time_point shown_ = start_;
};

}  // namespace cli

#endif
