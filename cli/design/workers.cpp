#include "design/workers.h"

#include <fcntl.h>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstring>
#include <new>
#include <system_error>

#include <fmt/format.h>

#include "os/child_process.h"
#include "os/descriptor.h"

namespace cli {
namespace {

constexpr std::size_t most_lines = 4096;
constexpr double seconds_of_work = 0.1;

// Results of one process that wait for those before them, in bytes. It then has
// to wait as well.
constexpr std::size_t most_waiting = std::size_t{4} << 20U;

// Batches that wait for the first one to be done, for each process.
constexpr std::size_t most_batches = 4;

// What a worker writes: a result, whose first byte says how it went.
constexpr char good_mark = '+';
constexpr char bad_mark = '-';

// What a worker without memory ends with: its parent says so.
constexpr int no_memory_status = 3;

[[noreturn]] void end_worker_without_memory() noexcept { _exit(no_memory_status); }

bool had_no_memory(int status) {
  return WIFEXITED(status) && WEXITSTATUS(status) == no_memory_status;
}

std::runtime_error failure(const char *what) {
  return std::runtime_error(fmt::format("{}: {}", what, std::generic_category().message(errno)));
}

std::string ending(int status) {
  if (WIFSIGNALED(status))
    return fmt::format("signal {}, {}", WTERMSIG(status), strsignal(WTERMSIG(status)));
  return fmt::format("status {}", WEXITSTATUS(status));
}

}  // namespace

Workers::Workers(std::size_t count, Work work, Loss loss)
    : count_(std::max<std::size_t>(count, 1)), work_(std::move(work)), loss_(std::move(loss)) {}

Workers::~Workers() {
  for (Batch &batch : batches_) {
    if (batch.pipe < 0) continue;
    kill(batch.process, SIGKILL);
    end(batch);
  }
}

std::size_t Workers::at_work() const {
  return static_cast<std::size_t>(
      std::count_if(batches_.begin(), batches_.end(), [](const Batch &b) { return b.pipe >= 0; }));
}

std::size_t Workers::room() const {
  return at_work() < count_ && batches_.size() < count_ * most_batches ? size_ : 0;
}

void Workers::start(std::vector<Line> lines) {
  if (lines.empty()) return;
  Batch batch;
  batch.lines = std::move(lines);
  launch(batch);
  batches_.push_back(std::move(batch));
}

void Workers::launch(Batch &batch) {
  std::array<int, 2> ends{};
  if (pipe2(ends.data(), O_CLOEXEC) != 0) throw failure("cannot make a pipe to a worker");
  const pid_t parent = getpid();
  batch.process = fork();
  if (batch.process < 0) {
    const auto error = failure("cannot start a worker");
    close(ends[0]);
    close(ends[1]);
    throw error;
  }
  if (batch.process == 0) {
    os::end_with(parent);
    close(ends[0]);
    for (const Batch &other : batches_)
      if (other.pipe >= 0) close(other.pipe);
    work_through(batch, ends[1]);
  }
  close(ends[1]);
  batch.pipe = ends[0];
  batch.started = Clock::now();
}

void Workers::work_through(const Batch &batch, int pipe) const {
  constexpr std::size_t enough = std::size_t{1} << 16U;
  std::set_new_handler(end_worker_without_memory);
  int status = 0;
  try {
    std::string text;
    const auto flush = [&] {
      if (os::write_all(pipe, text) != 0) _exit(1);
      text.clear();
    };
    for (std::size_t i = batch.done; i < batch.lines.size(); ++i) {
      const Result result = work_(batch.lines[i]);
      text += result.outcome == Outcome::designed ? good_mark : bad_mark;
      text += result.text;
      text += '\n';
      if (batch.careful || text.size() >= enough) flush();
    }
    flush();
  } catch (const std::bad_alloc &) {
    status = no_memory_status;
  } catch (...) {
    status = 1;
  }
  _exit(status);  // what this process was copied from cleans up
}

std::vector<pollfd> Workers::waiting() const {
  std::vector<pollfd> waiting;
  for (const Batch &batch : batches_)
    if (batch.pipe >= 0 && (&batch == &batches_.front() || batch.arrived.size() < most_waiting))
      waiting.push_back({batch.pipe, POLLIN, 0});
  return waiting;
}

void Workers::read_from(Batch &batch) {
  std::array<char, std::size_t{1} << 16U> block;
  ssize_t count = -1;
  do count = read(batch.pipe, block.data(), block.size());
  while (count < 0 && errno == EINTR);
  if (count < 0) throw failure("cannot read from a worker");
  if (count > 0)
    batch.arrived.append(block.data(), static_cast<std::size_t>(count));
  else
    end(batch);
}

void Workers::end(Batch &batch) {
  close(batch.pipe);
  batch.pipe = -1;
  while (waitpid(batch.process, &batch.status, 0) < 0 && errno == EINTR) {
  }
  const std::chrono::duration<double> took = Clock::now() - batch.started;
  const double each = std::max(took.count() / static_cast<double>(batch.lines.size()), 1e-6);
  const double wanted = std::min(seconds_of_work / each, static_cast<double>(most_lines));
  // By no more than a factor of four at a time: the next lines may be slower.
  size_ = std::clamp<std::size_t>(static_cast<std::size_t>(wanted), 1, size_ * 4);
}

void Workers::use_arrived(Batch &batch, const std::function<void(const Result &)> &use) const {
  std::size_t at = 0;
  Result result;
  for (std::size_t end = batch.arrived.find('\n'); end != std::string::npos;
       end = batch.arrived.find('\n', at)) {
    result.outcome = batch.arrived[at] == good_mark ? Outcome::designed : Outcome::failed;
    result.text.assign(batch.arrived, at + 1, end - at - 1);
    use(result);
    ++batch.done;
    at = end + 1;
  }
  batch.arrived.erase(0, at);
}

void Workers::collect(const std::function<void(const Result &)> &use) {
  std::vector<pollfd> ready = waiting();
  if (!ready.empty() && poll(ready.data(), ready.size(), 0) < 0 && errno != EINTR)
    throw failure("cannot wait for workers");
  for (const pollfd &one : ready)
    if (one.revents != 0)
      read_from(*std::find_if(batches_.begin(), batches_.end(),
                              [&](const Batch &batch) { return batch.pipe == one.fd; }));
  while (!batches_.empty()) {
    Batch &first = batches_.front();
    use_arrived(first, use);
    if (first.pipe >= 0) return;
    if (first.done < first.lines.size()) {
      if (had_no_memory(first.status)) throw std::bad_alloc();
      // The process may have had results that it had not written yet: only one that writes each at
      // once shows which line ended it.
      if (first.careful) use(loss_(first.lines[first.done++], ending(first.status)));
      first.careful = true;
      first.arrived.clear();
    }
    if (first.done == first.lines.size())
      batches_.pop_front();
    else
      launch(first);
  }
}

}  // namespace cli
