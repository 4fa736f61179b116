#include "base/progress.h"

#include <unistd.h>

#include <algorithm>

#include <fmt/format.h>

#include "os/descriptor.h"

namespace cli {

Progress::Progress() : terminal_(isatty(STDERR_FILENO) != 0) {}

Progress::~Progress() {
  if (written_) os::write_all(STDERR_FILENO, "\n");
}

void Progress::show(std::size_t done, double fraction) {
  const auto now = Clock::now();
  if (!terminal_ || now - shown_ < std::chrono::milliseconds(200)) return;
  shown_ = now;
  const std::chrono::duration<double> took = now - start_;
  std::string text = fmt::format("\r{} lines, {:.0f} a second", done,
                                 static_cast<double>(done) / std::max(took.count(), 1e-3));
  if (fraction >= 0.0) text += fmt::format(", {:.0f} % read", fraction * 100.0);
  os::write_all(STDERR_FILENO, text + "  ");
  written_ = true;
}

}  // namespace cli
