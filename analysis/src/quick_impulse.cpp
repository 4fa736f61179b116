#include "analysis/quick_impulse.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <span>

namespace analysis {
namespace {

// Each sample of a section waits for the one before. Sections that are one sample behind each other
// do not, and a processor computes these side by side.
constexpr std::size_t side_by_side = 4;

/** Sections in direct form II transposed, each one sample behind the one before. */
class Group {
 public:
  /** @param sections  as many as run side by side, or fewer */
  explicit Group(std::span<const Section> sections) : last_(sections.size() - 1) {
    std::copy(sections.begin(), sections.end(), sections_.begin());
  }

  void run(std::vector<double> &signal) {
    const std::size_t count = signal.size();
    for (std::size_t i = 0; i < count + last_; ++i) {
      in_[0] = i < count ? signal[i] : 0.0;
      if (i + 1 < side_by_side)
        step(i + 1);
      else
        step(side_by_side);
      if (i >= last_) signal[i - last_] = out_[last_];
      if (i % 128 == 0) flush();
    }
  }

 private:
  // Of the sections that the signal has reached.
  void step(std::size_t reached) {
    for (std::size_t k = 0; k < reached; ++k) {
      const Section &s = sections_[k];
      const double x = in_[k], y = s.b0 * x + s1_[k];
      s1_[k] = s.b1 * x - s.a1 * y + s2_[k];
      s2_[k] = s.b2 * x - s.a2 * y;
      out_[k] = y;
    }
    for (std::size_t k = 1; k < side_by_side; ++k) in_[k] = out_[k - 1];
  }

  void flush() {
    constexpr double smallest = 1e-200;
    for (auto *states : {&in_, &s1_, &s2_})
      for (double &state : *states)
        if (std::fabs(state) < smallest) state = 0.0;
  }

  std::array<Section, side_by_side> sections_{};
  std::array<double, side_by_side> in_{}, out_{}, s1_{}, s2_{};
  std::size_t last_;
};

}  // namespace

std::vector<double> quick_impulse_response(const Sections &filter, std::size_t count) {
  std::vector<double> signal(count, 0.0);
  if (count > 0) signal.front() = 1.0;
  for (std::span<const Section> rest = filter; !rest.empty();) {
    const std::size_t next = std::min(side_by_side, rest.size());
    Group(rest.first(next)).run(signal);
    rest = rest.subspan(next);
  }
  return signal;
}

}  // namespace analysis
