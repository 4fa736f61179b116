#include "batch.h"

#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <memory>
#include <new>
#include <thread>

#include <fmt/format.h>

#include "output.h"
#include "present.h"
#include "saved.h"

namespace cli {
namespace {

// The settings of a line, and the common ones that it does not have.
Settings combined(const Settings &common, const Line &line) {
  if (line.too_long)
    throw Refusal(fmt::format("the line is longer than {} bytes", LineReader::longest));
  Settings settings = read_settings(line.text);
  const auto has = [](const Settings &list, const std::string &name) {
    return std::any_of(list.begin(), list.end(),
                       [&](const auto &setting) { return setting.first == name; });
  };
  for (const auto &setting : common)
    if (!has(settings, setting.first)) settings.push_back(setting);
  // The same name whichever worker designs it.
  if (!has(settings, "name"))
    settings.emplace_back("name", patchbay::Values{fmt::format("u{}", line.number)});
  return settings;
}

// One line that is written over, at most five times a second.
class Progress {
 public:
  void show(std::size_t done, double fraction) {
    const auto now = Clock::now();
    if (!terminal_ || now - shown_ < std::chrono::milliseconds(200)) return;
    shown_ = now;
    const std::chrono::duration<double> took = now - start_;
    std::string text = fmt::format("\r{} lines, {:.0f} a second", done,
                                   static_cast<double>(done) / std::max(took.count(), 1e-3));
    if (fraction >= 0.0) text += fmt::format(", {:.0f} % read", fraction * 100.0);
    write_all(STDERR_FILENO, text + "  ");
    written_ = true;
  }

  ~Progress() {
    if (written_) write_all(STDERR_FILENO, "\n");
  }

 private:
  using Clock = std::chrono::steady_clock;
  bool terminal_ = isatty(STDERR_FILENO) != 0;
  bool written_ = false;
  Clock::time_point start_ = Clock::now();
  Clock::time_point shown_ = start_;
};

class BatchOutput {
 public:
  explicit BatchOutput(const std::optional<std::string> &path) {
    if (path && *path != "-") file_ = std::make_unique<OutputFile>(*path);
  }

  void add(const Result &result) {
    text_ += result.text;
    text_ += '\n';
    ++lines_;
    if (!result.good) ++errors_;
  }

  // @return false when nobody reads it any more
  bool flush() {
    const bool read = file_ != nullptr ? file_->write(text_) : print(text_);
    text_.clear();
    return read;
  }

  void finish() {
    if (file_ != nullptr) file_->finish();
  }

  std::size_t lines() const { return lines_; }
  std::size_t errors() const { return errors_; }

 private:
  std::unique_ptr<OutputFile> file_;
  std::string text_;
  std::size_t lines_ = 0;
  std::size_t errors_ = 0;
};

// Waits until there is something to read or a worker has something to say.
void wait_for(const Workers &workers, const LineReader *input, bool &input_ready) {
  std::vector<pollfd> waiting;
  workers.add_to(waiting);
  if (input != nullptr) waiting.push_back({input->descriptor(), POLLIN, 0});
  if (waiting.empty()) return;
  if (poll(waiting.data(), waiting.size(), -1) < 0 && errno != EINTR)
    throw std::runtime_error("the workers cannot be waited for");
  input_ready = input != nullptr && waiting.back().revents != 0;
}

}  // namespace

Result design_line(patchbay::Host &host, const Settings &common, const Line &line) {
  try {
    return {true, to_json_line(line.number, run_design(host, combined(common, line)))};
  } catch (const std::bad_alloc &) {
    throw;  // no fault of the line
  } catch (const std::exception &error) {
    return {false, error_json_line(line.number, shown(error.what()))};
  }
}

int run_batch(patchbay::Host &host, const Settings &common, const std::string &input,
              const std::optional<std::string> &output) {
  LineReader reader(input);
  BatchOutput out(output);
  Workers workers(
      std::thread::hardware_concurrency(),
      [&](const Line &line) { return design_line(host, common, line); },
      [](const Line &line, const std::string &how) {
        return Result{false, error_json_line(line.number, "its design ended the process: " + how)};
      });
  {
    Progress progress;
    while (!(reader.at_end() && reader.empty() && workers.idle())) {
      bool input_ready = false;
      const bool wants_input = reader.empty() && !reader.at_end() && workers.room() > 0;
      wait_for(workers, wants_input ? &reader : nullptr, input_ready);
      if (input_ready) reader.read();
      workers.collect([&](const Result &result) { out.add(result); });
      while (!reader.empty() && workers.room() > 0) workers.start(reader.take(workers.room()));
      if (!out.flush()) return 0;
      progress.show(out.lines(), reader.fraction());
    }
    out.finish();
  }
  if (out.errors() == 0) return 0;
  say(fmt::format("{} of {} lines had errors, which their results tell", out.errors(),
                  out.lines()));
  return 1;
}

}  // namespace cli
