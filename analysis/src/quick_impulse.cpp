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
struct Group {
  std::array<Section, side_by_side> sections{};
  std::array<double, side_by_side> in{}, out{}, s1{}, s2{};

  /** One sample of the section at each place. */
  void step(std::size_t k) {
    const Section &s = sections[k];
    const double x = in[k], y = s.b0 * x + s1[k];
    s1[k] = s.b1 * x - s.a1 * y + s2[k];
    s2[k] = s.b2 * x - s.a2 * y;
    out[k] = y;
  }

  void hand_on() {
    for (std::size_t k = 1; k < side_by_side; ++k) in[k] = out[k - 1];
  }

  void flush() {
    constexpr double smallest = 1e-200;
    for (auto *states : {&in, &s1, &s2})
      for (double &state : *states)
        if (std::fabs(state) < smallest) state = 0.0;
  }
};

// As many steps as samples are given. By value: its numbers stay in registers.
Group run(Group group, std::span<double> samples) {
  for (double &sample : samples) {
    group.in[0] = sample;
    group.step(0);
    group.step(1);
    group.step(2);
    group.step(3);
    sample = group.out[side_by_side - 1];
    group.hand_on();
  }
  return group;
}

// As many sections as run side by side; those that are missing hand on what they are given.
void run(std::span<const Section> sections, std::vector<double> &signal) {
  constexpr std::size_t behind = side_by_side - 1, block = 128;
  Group group;
  group.sections.fill({1.0, 0.0, 0.0, 0.0, 0.0});
  std::copy(sections.begin(), sections.end(), group.sections.begin());
  signal.resize(signal.size() + behind, 0.0);
  for (std::size_t i = 0; i < signal.size(); i += block) {
    group = run(group, std::span(signal).subspan(i, std::min(block, signal.size() - i)));
    group.flush();
  }
  signal.erase(signal.begin(), signal.begin() + behind);
}

}  // namespace

std::vector<double> quick_impulse_response(const Sections &filter, std::size_t count) {
  std::vector<double> signal(count, 0.0);
  if (count > 0) signal.front() = 1.0;
  for (std::span<const Section> rest = filter; !rest.empty();) {
    const std::size_t next = std::min(side_by_side, rest.size());
    run(rest.first(next), signal);
    rest = rest.subspan(next);
  }
  return signal;
}

}  // namespace analysis
