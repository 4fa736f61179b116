#include "gnuplot/process.h"

#include <fcntl.h>
#include <poll.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <chrono>
#include <csignal>
#include <cstdint>
#include <cstdio>
#include <limits>
#include <memory>
#include <optional>
#include <stdexcept>

#include "ending.h"
#include "os/child_process.h"
#include "os/temporary.h"

namespace gnuplot {
namespace {

constexpr char missing[] =
    "gnuplot draws the pictures and is not installed; on Debian, install the package gnuplot-nox";

[[noreturn]] void fail(int error) { throw not_run(error); }

struct Closer {
  void operator()(std::FILE *file) const { std::fclose(file); }
};
using File = std::unique_ptr<std::FILE, Closer>;

File temporary() {
  const int descriptor = os::open_temporary();
  File file(descriptor < 0 ? nullptr : fdopen(descriptor, "w+"));
  if (!file) fail(errno);
  return file;
}

std::string contents(std::FILE *file) {
  std::string text;
  std::rewind(file);
  char block[4096];  // stacks may be as small as 64 kB
  while (const std::size_t count = std::fread(block, 1, sizeof block, file))
    text.append(block, count);
  if (std::ferror(file) != 0) fail(EIO);
  return text;
}

// gnuplot at work. It holds one end of a pipe until it ends; the other end shows that it has, or
// why it did not start.
class Process {
 public:
  Process(const File &in, const File &out, const File &err, const Limits &limits) {
    std::array<int, 2> ends{};
    if (pipe2(ends.data(), O_CLOEXEC) != 0) fail(errno);
    life_ = ends[0];
    const pid_t parent = getpid();
    process_ = fork();
    if (process_ == 0) {
      os::end_with(parent);
      become_gnuplot({fileno(in.get()), fileno(out.get()), fileno(err.get())}, ends[1], limits);
    }
    const int error = errno;
    close(ends[1]);
    if (process_ > 0) return;
    close(life_);
    fail(error);
  }
  ~Process() {
    if (process_ > 0) end();
    close(life_);
  }
  Process(const Process &) = delete;
  Process &operator=(const Process &) = delete;

  // @return the exit status as of waitpid; none after the time is over
  std::optional<int> wait(int seconds) {
    using Clock = std::chrono::steady_clock;
    const auto over = Clock::now() + std::chrono::seconds(seconds);
    pollfd life{life_, POLLIN, 0};
    for (;;) {
      const auto left = std::chrono::ceil<std::chrono::milliseconds>(over - Clock::now());
      const int ready = poll(&life, 1,
                             static_cast<int>(std::clamp<std::int64_t>(
                                 left.count(), 0, std::numeric_limits<int>::max())));
      if (ready > 0) break;
      if (ready == 0) return std::nullopt;
      if (errno != EINTR) fail(errno);
    }
    int error = 0;
    if (read(life_, &error, sizeof error) == sizeof error) {
      if (error == ENOENT) throw std::runtime_error(missing);
      fail(error);
    }
    return end();
  }

 private:
  // Between fork and exec: system calls only.
  [[noreturn]] static void become_gnuplot(std::array<int, 3> streams, int life,
                                          const Limits &limits) {
    // An interrupt at the terminal is for this program, which then takes gnuplot with it.
    setpgid(0, 0);
    for (const int ignored : {SIGPIPE, SIGXFSZ}) signal(ignored, SIG_DFL);
    // Where this program was started without some of its streams, these have their numbers.
    for (int &stream : streams) stream = fcntl(stream, F_DUPFD_CLOEXEC, STDERR_FILENO + 1);
    // Not closed by exec: it stays open as long as gnuplot runs.
    const int held = fcntl(life, F_DUPFD, STDERR_FILENO + 1);
    int to = 0;
    for (const int stream : streams) dup2(stream, to++);
    const auto limit = [](auto what, rlim_t most) {
      rlimit value{};
      getrlimit(what, &value);
      // One more before it is killed: the signal that comes first gives the reason.
      value.rlim_max = std::min(value.rlim_max, most + 1);
      value.rlim_cur = std::min(value.rlim_cur, most);
      setrlimit(what, &value);
    };
    limit(RLIMIT_CPU, static_cast<rlim_t>(limits.seconds));
    limit(RLIMIT_AS, limits.memory);
    limit(RLIMIT_FSIZE, limits.output);
    limit(RLIMIT_CORE, 0);
    execlp("gnuplot", "gnuplot", "--default-settings", static_cast<char *>(nullptr));
    const int error = errno;
    if (write(held, &error, sizeof error) < 0) _exit(2);
    _exit(1);
  }

  // Ends it and all that it has started. Before its group exists there is only itself.
  int end() {
    kill(-process_, SIGKILL);
    kill(process_, SIGKILL);
    int status = 0;
    while (waitpid(process_, &status, 0) < 0)
      if (errno != EINTR) break;
    process_ = -1;
    return status;
  }

  pid_t process_ = -1;
  int life_ = -1;
};

}  // namespace

std::string run(const std::string &script, const Limits &limits) {
  const File in = temporary();
  const File out = temporary();
  const File err = temporary();
  if (std::fwrite(script.data(), 1, script.size(), in.get()) != script.size() ||
      std::fflush(in.get()) != 0)
    fail(errno);
  std::rewind(in.get());
  const auto ended = Process(in, out, err, limits).wait(limits.seconds);
  const int status = ended.value_or(SIGXCPU);
  if (WIFSIGNALED(status) && WTERMSIG(status) == SIGXCPU) throw too_slow(limits);
  if (WIFSIGNALED(status) && WTERMSIG(status) == SIGXFSZ) throw too_large(limits);
  return drawn(contents(out.get()), status == 0 ? Ended::well : Ended::badly, contents(err.get()));
}

}  // namespace gnuplot
