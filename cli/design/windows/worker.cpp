#include "design/windows/worker.h"

#include <windows.h>

#include <fcntl.h>
#include <io.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstdlib>
#include <new>
#include <string>
#include <system_error>

#include <fmt/format.h>

#include "design/batch.h"
#include "designer/saved_design.h"
#include "layouts/document.h"
#include "os/descriptor.h"
#include "os/path.h"
#include "os/program.h"
#include "os/windows/child.h"

namespace cli {
namespace {

// Where a file of lines would be named. No file has this name: the system takes none with a star.
constexpr char from_parent[] = "*";

// What a worker writes: a result, whose first byte says how it went.
constexpr char good_mark = '+';
constexpr char bad_mark = '-';

// One end of a pipe.
class End {
 public:
  explicit End(int number) : number_(number) {}
  ~End() { shut(); }
  End(const End &) = delete;
  End &operator=(const End &) = delete;

  int number() const { return number_; }
  void shut() {
    if (number_ >= 0) _close(number_);
    number_ = -1;
  }

 private:
  int number_;
};

struct Pipe {
  std::array<int, 2> ends = made();
  End out{ends[0]};
  End in{ends[1]};

  static std::array<int, 2> made() {
    std::array<int, 2> ends{};
    if (_pipe(ends.data(), 1U << 16U, _O_BINARY | _O_NOINHERIT) != 0)
      throw std::system_error(errno, std::generic_category(), "cannot make a pipe to a worker");
    return ends;
  }
};

// Reads what ends with a newline.
class Texts {
 public:
  explicit Texts(int descriptor) : descriptor_(descriptor) {}

  // @return none at the end
  std::optional<std::string> next() {
    std::size_t end = text_.find('\n', at_);
    while (end == std::string::npos) {
      text_.erase(0, at_);
      at_ = 0;
      std::array<char, std::size_t{1} << 16U> block;
      const int count = _read(descriptor_, block.data(), static_cast<unsigned>(block.size()));
      if (count <= 0) return std::nullopt;
      const std::size_t searched = text_.size();
      text_.append(block.data(), static_cast<std::size_t>(count));
      end = text_.find('\n', searched);
    }
    std::string text = text_.substr(at_, end - at_);
    at_ = end + 1;
    return text;
  }

 private:
  int descriptor_;
  std::string text_;
  std::size_t at_ = 0;  // the beginning of the next one in it
};

// A line is sent with its number in front, and whether it was too long.
Line line_from(const std::string &text) {
  char *rest = nullptr;
  Line line;
  line.number = std::strtoull(text.c_str(), &rest, 10);
  const auto flag = static_cast<std::size_t>(rest - text.c_str()) + 1;
  line.too_long = text[flag] == '1';
  line.text = text.substr(flag + 2);
  return line;
}

[[noreturn]] void end_without_memory_for_a_line() noexcept {
  _exit(static_cast<int>(Worker::no_memory));
}

// All lines that are sent at a time; none when no more come. They are read before the first result
// is written: otherwise both sides might wait for room in a pipe.
std::vector<Line> sent_lines(Texts &texts) {
  std::vector<Line> lines;
  const auto count = texts.next();
  for (auto left = count ? std::strtoull(count->c_str(), nullptr, 10) : 0; left > 0; --left) {
    const auto text = texts.next();
    if (!text) return {};
    lines.push_back(line_from(*text));
  }
  return lines;
}

}  // namespace

struct Worker::Running {
  Pipe lines;
  Pipe results;
  Texts texts{results.out.number()};
  os::Child child;

  explicit Running(const std::filesystem::path &module)
      : child(os::program_file(),
              {"design", "--module", os::name_of(module), "--batch", from_parent},
              {lines.out.number(), results.in.number(), STDERR_FILENO}) {}
};

// Its ends are its own: a pipe is at its end once nobody else has them.
Worker::Worker(const Job &job) : running_(std::make_unique<Running>(job.module)) {
  running_->lines.out.shut();
  running_->results.in.shut();
  // One that has ended already is noticed when it gets lines.
  os::write_all(running_->lines.in.number(), layouts::settings_line(job.common) + '\n');
}

Worker::~Worker() = default;

bool Worker::send(const std::vector<Line> &lines, std::size_t first, std::size_t end) {
  std::string text = fmt::format("{}\n", end - first);
  for (std::size_t i = first; i < end; ++i)
    text += fmt::format("{} {:d} {}\n", lines[i].number, lines[i].too_long, lines[i].text);
  return os::write_all(running_->lines.in.number(), text) == 0;
}

std::optional<Result> Worker::result() {
  const auto text = running_->texts.next();
  if (!text || text->empty()) return std::nullopt;
  return Result{text->front() == good_mark ? Outcome::designed : Outcome::failed, text->substr(1)};
}

unsigned long Worker::status() const {
  constexpr unsigned long patience = 10000;  // ms, for one whose pipe has ended already
  return running_->child.wait(patience).value_or(1);
}

bool works_for_another(const std::string &given, const std::filesystem::path &module) {
  if (given != from_parent) return false;
  constexpr std::size_t enough = std::size_t{1} << 16U;
  std::set_new_handler(end_without_memory_for_a_line);
  // A design that crashes ends its worker at once, and nobody has to press a button first.
  SetErrorMode(SEM_FAILCRITICALERRORS | SEM_NOGPFAULTERRORBOX);
  designer::Designer designer(module);
  try {
    Texts texts(STDIN_FILENO);
    const auto settings = texts.next();
    if (!settings) return true;
    const auto common = designer::parse_settings(*settings, "what its parent sent");
    for (auto lines = sent_lines(texts); !lines.empty(); lines = sent_lines(texts)) {
      std::string results;
      for (const Line &line : lines) {
        const Result result = designed_line(designer, common, line);
        results += result.outcome == Outcome::designed ? good_mark : bad_mark;
        results += result.text + '\n';
        if (results.size() < enough && &line != &lines.back()) continue;
        if (os::write_all(STDOUT_FILENO, results) != 0) return true;
        results.clear();
      }
    }
  } catch (const std::bad_alloc &) {
    end_without_memory_for_a_line();
  }
  return true;
}

}  // namespace cli
