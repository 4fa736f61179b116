#include "base/progress.h"

#include <unistd.h>

#include <algorithm>

#include <fmt/format.h>

#include "os/descriptor.h"

namespace cli {

Progress::Progress(std::string_view what) : what_(what), terminal_(isatty(STDERR_FILENO) != 0) {}

Progress::~Progress() {
  if (written_) os::write_all(STDERR_FILENO, "\n");
}

void Progress::show(double done, double fraction) {
  const auto now = Clock::now();
  if (!terminal_ || now - shown_ < std::chrono::milliseconds(200)) return;
  shown_ = now;
  const std::chrono::duration<double> took = now - start_;
  std::string text =
      fmt::format("\r{:.0f} {}, {:.0f} a second", done, what_, done / std::max(took.count(), 1e-3));
  if (fraction >= 0.0) text += fmt::format(", {:.0f} % done", fraction * 100.0);
  os::write_all(STDERR_FILENO, text + "  ");
  written_ = true;
}

}  // namespace cli
