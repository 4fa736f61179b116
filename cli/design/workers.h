// Work on lines in several processes, with its results in the order of the lines.
//
// The host keeps its state in its process, so two hosts cannot run side by side in threads. A
// worker is a copy of this process, made with its lines already in memory; it writes its results
// into a pipe and ends. Whatever it has used goes with it, and a line that ends its process costs
// that line only.
#ifndef CLI_DESIGN_WORKERS_H
#define CLI_DESIGN_WORKERS_H

#include <poll.h>
#include <sys/types.h>

#include <chrono>
#include <deque>
#include <functional>
#include <string>
#include <vector>

#include "base/line_reader.h"
#include "design/result.h"

namespace cli {

class Workers {
 public:
  using Work = cli::Work;
  using Loss = cli::Loss;

  /** @param count  how many processes may work at a time, at least one */
  Workers(std::size_t count, Work work, Loss loss);
  ~Workers(); /**< ends those at work */
  Workers(const Workers &) = delete;
  Workers &operator=(const Workers &) = delete;

  /** @return how many more lines can be given to a process of their own; as many as
   *  keep it at work for about 100 ms, and none while all are at work. */
  std::size_t room() const;

  /** @return true if no more results will come. */
  bool idle() const { return batches_.empty(); }

  /** Starts a process for these lines. Raises std::runtime_error. */
  void start(std::vector<Line> lines);

  /** @return what to wait for until `collect` has something to do. */
  std::vector<pollfd> waiting() const;

  /** Calls `use` for each result that has arrived, in the order of the lines.
   *  Raises std::runtime_error, std::bad_alloc when a worker had no memory, and what
   *  `use` raises. */
  void collect(const std::function<void(const Result &)> &use);

 private:
  using Clock = std::chrono::steady_clock;

  struct Batch {
    std::vector<Line> lines;
    std::size_t done = 0;  // results that have been used
    bool careful = false;  // whether each result is written at once
    pid_t process = -1;
    int pipe = -1;  // closed once the process has ended
    std::string arrived = {};
    Clock::time_point started = {};
    int status = 0;
  };

  void launch(Batch &batch);
  [[noreturn]] void work_through(const Batch &batch, int pipe) const;
  void read_from(Batch &batch);
  void end(Batch &batch);
  void use_arrived(Batch &batch, const std::function<void(const Result &)> &use) const;
  std::size_t at_work() const;

  std::size_t count_;
  Work work_;
  Loss loss_;
  std::size_t size_ = 16;  // lines for the next process
  std::deque<Batch> batches_;
};

}  // namespace cli

#endif
