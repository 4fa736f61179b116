// The host keeps its state in its process. A thread for each worker sends it some lines and takes
// its results.
#include "design/all_lines.h"

#include <algorithm>
#include <chrono>
#include <condition_variable>
#include <deque>
#include <exception>
#include <memory>
#include <mutex>
#include <new>
#include <thread>
#include <vector>

#include <fmt/format.h>

#include "design/windows/worker.h"
#include "os/windows/arrival.h"

namespace cli {
namespace {

using Clock = std::chrono::steady_clock;

constexpr std::size_t most_lines = 4096;
constexpr double seconds_of_work = 0.1;
constexpr std::size_t most_batches = 4;  // that wait for the first one, for each worker

struct Batch {
  std::vector<Line> lines;
  std::vector<Result> results;
  bool done = false;
};

// All workers, and the batches that they are at.
class Pool {
 public:
  Pool(LineReader &reader, const Job &job, const Loss &loss)
      : reader_(reader),
        job_(job),
        loss_(loss),
        count_(std::max<std::size_t>(std::thread::hardware_concurrency(), 1)) {}
  ~Pool();
  Pool(const Pool &) = delete;
  Pool &operator=(const Pool &) = delete;

  void take_all(const Taker &taker);

 private:
  using Shared = std::shared_ptr<Batch>;

  void start();
  template <typename Action>
  void guarded(Action action);
  void read();
  bool wait_for_input();
  void work();
  Shared next();
  void finish(std::unique_ptr<Worker> &worker, Batch &batch) const;

  LineReader &reader_;
  const Job &job_;
  const Loss &loss_;
  const std::size_t count_;
  std::mutex mutex_;  // for all that follows
  std::condition_variable changed_;
  std::deque<Shared> waiting_;  // for a worker
  std::deque<Shared> all_;      // in order; the first is the next to be taken
  std::exception_ptr failure_;
  bool at_end_ = false;
  bool stopped_ = false;
  std::size_t size_ = 16;  // lines for the next batch
  std::vector<std::thread> threads_;
};

Pool::~Pool() {
  {
    const std::lock_guard lock(mutex_);
    stopped_ = true;
  }
  changed_.notify_all();
  for (std::thread &thread : threads_) thread.join();
}

// Not as the pool is made: what goes wrong here needs its destructor.
void Pool::start() {
  threads_.emplace_back([this] { guarded([this] { read(); }); });
  for (std::size_t i = 0; i < count_; ++i)
    threads_.emplace_back([this] { guarded([this] { work(); }); });
}

// What goes wrong in a thread is raised where the results are taken.
template <typename Action>
void Pool::guarded(Action action) {
  try {
    action();
  } catch (...) {
    const std::lock_guard lock(mutex_);
    if (!failure_) failure_ = std::current_exception();
  }
  changed_.notify_all();
}

void Pool::read() {
  while (!reader_.at_end() || !reader_.empty()) {
    if (reader_.empty()) {
      if (!wait_for_input()) return;
      reader_.read();
    }
    std::unique_lock lock(mutex_);
    changed_.wait(lock, [this] { return stopped_ || all_.size() < count_ * most_batches; });
    if (stopped_) return;
    auto batch = std::make_shared<Batch>();
    batch->lines = reader_.take(size_);
    if (batch->lines.empty()) continue;
    all_.push_back(batch);
    waiting_.push_back(std::move(batch));
    changed_.notify_all();
  }
  const std::lock_guard lock(mutex_);
  at_end_ = true;
}

// A line may never come, and nobody want it any more. @return false when nobody does
bool Pool::wait_for_input() {
  std::unique_lock lock(mutex_);
  while (!stopped_ && !os::has_arrived(reader_.descriptor()))
    changed_.wait_for(lock, std::chrono::milliseconds(5));
  return !stopped_;
}

// @return none when there will be no more
Pool::Shared Pool::next() {
  std::unique_lock lock(mutex_);
  changed_.wait(lock, [this] {
    return stopped_ || failure_ || !waiting_.empty() || (at_end_ && waiting_.empty());
  });
  if (stopped_ || failure_ || waiting_.empty()) return nullptr;
  Shared batch = waiting_.front();
  waiting_.pop_front();
  return batch;
}

void Pool::work() {
  std::unique_ptr<Worker> worker;
  while (const Shared batch = next()) {
    if (!worker) worker = std::make_unique<Worker>(job_);
    const auto start = Clock::now();
    finish(worker, *batch);
    const std::chrono::duration<double> took = Clock::now() - start;
    const double each = std::max(took.count() / static_cast<double>(batch->lines.size()), 1e-6);
    const double wanted = std::min(seconds_of_work / each, static_cast<double>(most_lines));
    const std::lock_guard lock(mutex_);
    // By no more than a factor of four at a time: the next lines may be slower.
    size_ = std::clamp<std::size_t>(static_cast<std::size_t>(wanted), 1, size_ * 4);
    batch->done = true;
    changed_.notify_all();
  }
}

// A worker that ends had perhaps not written all its results: the rest is sent to another line by
// line, which shows the one that ended it.
void Pool::finish(std::unique_ptr<Worker> &worker, Batch &batch) const {
  bool careful = false;
  while (batch.results.size() < batch.lines.size()) {
    const std::size_t first = batch.results.size();
    const std::size_t end = careful ? first + 1 : batch.lines.size();
    bool lives = worker->send(batch.lines, first, end);
    while (lives && batch.results.size() < end) {
      auto result = worker->result();
      lives = result.has_value();
      if (lives) batch.results.push_back(std::move(*result));
    }
    if (lives) continue;
    const unsigned long status = worker->status();
    worker = std::make_unique<Worker>(job_);
    if (status == Worker::no_memory) throw std::bad_alloc();
    if (careful)
      batch.results.push_back(loss_(batch.lines[first], fmt::format("status {:#x}", status)));
    careful = true;
  }
}

void Pool::take_all(const Taker &taker) {
  start();
  for (;;) {
    Shared batch;
    {
      std::unique_lock lock(mutex_);
      changed_.wait(lock, [this] {
        return failure_ || (!all_.empty() && all_.front()->done) || (at_end_ && all_.empty());
      });
      if (failure_) std::rethrow_exception(failure_);
      if (all_.empty()) return;
      batch = all_.front();
      all_.pop_front();
      changed_.notify_all();
    }
    for (const Result &result : batch->results) taker.take(result);
    if (!taker.rest()) return;
  }
}

}  // namespace

void work_on_all_lines(LineReader &reader, const Job &job, const Loss &loss, const Taker &taker) {
  Pool(reader, job, loss).take_all(taker);
}

}  // namespace cli
