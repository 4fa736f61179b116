#include "plot/gnuplot.h"

#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cctype>
#include <cerrno>
#include <csignal>
#include <cstdio>
#include <memory>
#include <stdexcept>
#include <system_error>

#include <fmt/format.h>

#include "plot/shown.h"

extern char **environ;

namespace cli::plot {
namespace {

constexpr char missing[] =
    "gnuplot draws the pictures and is not installed; on Debian, install the package gnuplot-nox";

[[noreturn]] void fail(int error) {
  throw std::runtime_error("gnuplot cannot be run: " + std::generic_category().message(error));
}

struct Closer {
  void operator()(std::FILE *file) const { std::fclose(file); }
};
using File = std::unique_ptr<std::FILE, Closer>;

// A file without a name.
File temporary() {
  File file(std::tmpfile());
  if (!file) fail(errno);
  return file;
}

std::string contents(std::FILE *file) {
  std::string text;
  std::rewind(file);
  char block[1U << 16U];
  while (const std::size_t count = std::fread(block, 1, sizeof block, file))
    text.append(block, count);
  if (std::ferror(file) != 0) fail(EIO);
  return text;
}

// What a child is started with: its three streams, and the signals that `main` ignores.
class Start {
 public:
  Start(const File &in, const File &out, const File &err) {
    posix_spawn_file_actions_init(&actions_);
    posix_spawnattr_init(&attributes_);
    int to = 0;
    for (const File *file : {&in, &out, &err})
      posix_spawn_file_actions_adddup2(&actions_, fileno(file->get()), to++);
    sigset_t signals;
    sigemptyset(&signals);
    sigaddset(&signals, SIGPIPE);
    sigaddset(&signals, SIGXFSZ);
    posix_spawnattr_setsigdefault(&attributes_, &signals);
    posix_spawnattr_setflags(&attributes_, POSIX_SPAWN_SETSIGDEF);
  }
  ~Start() {
    posix_spawn_file_actions_destroy(&actions_);
    posix_spawnattr_destroy(&attributes_);
  }
  Start(const Start &) = delete;
  Start &operator=(const Start &) = delete;

  // @return the exit status as of waitpid
  int run() {
    char name[] = "gnuplot";
    char defaults[] = "--default-settings";
    char *words[] = {name, defaults, nullptr};
    pid_t child = 0;
    const int error = posix_spawnp(&child, name, &actions_, &attributes_, words, environ);
    if (error == ENOENT) throw std::runtime_error(missing);
    if (error != 0) fail(error);
    int status = 0;
    while (waitpid(child, &status, 0) < 0)
      if (errno != EINTR) fail(errno);
    return status;
  }

 private:
  posix_spawn_file_actions_t actions_{};
  posix_spawnattr_t attributes_{};
};

// gnuplot goes on after some errors and then ends with status 0, so that the end of the
// picture is what tells.
bool is_complete(const std::string &picture) {
  constexpr char png_end[] = "IEND\xae\x42\x60\x82";
  return picture.ends_with("</svg>\n") || picture.ends_with("</svg>\n\n") ||
         picture.ends_with(png_end);
}

// Its last line that says something.
std::string last_line(const std::string &text) {
  const std::size_t end = text.find_last_not_of(" \t\r\n");
  if (end == std::string::npos) return "it gives no reason";
  const std::size_t before = text.find_last_of('\n', end);
  const std::string line = text.substr(before + 1, end - before);
  return line.substr(std::min(line.find_first_not_of(" \t"), line.size()));
}

}  // namespace

std::string draw(const std::string &script) {
  const File in = temporary();
  const File out = temporary();
  const File err = temporary();
  if (std::fwrite(script.data(), 1, script.size(), in.get()) != script.size() ||
      std::fflush(in.get()) != 0)
    fail(errno);
  std::rewind(in.get());
  const int status = Start(in, out, err).run();
  std::string picture = contents(out.get());
  if (status != 0 || !is_complete(picture))
    throw std::runtime_error("gnuplot could not draw it: " + last_line(contents(err.get())));
  return picture;
}

std::string quoted(const std::string &text) {
  std::string out = "\"";
  for (const char c : shown(text)) {
    const auto byte = static_cast<unsigned char>(c);
    // A digit after a number would be taken for a part of it.
    const bool plain = byte < 0x80 && (std::isalpha(byte) != 0 || c == ' ');
    out += plain ? std::string(1, c) : fmt::format("\\{:03o}", byte);
  }
  return out + '"';
}

}  // namespace cli::plot
