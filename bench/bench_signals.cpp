// Times the cascade that runs over signals.
//
//   bench-signals CHANNELS FRAMES ROUNDS <sections
//
// reads a line "b0 b1 b2 a1 a2" a section, and prints the least time of a frame in nanoseconds and
// the last frame of the output of the first round.

#include <chrono>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <iostream>
#include <limits>
#include <vector>

#include "signals/cascade.h"

namespace {

// The same signal as in bench/signals.py: between -1 and 1, with no period that matters.
double sample(std::uint64_t i) {
  return static_cast<double>((i * 2654435761U) & 0xFFFFFFFFU) / 2147483648.0 - 1.0;
}

}  // namespace

int main(int argc, char **argv) {
  if (argc != 4) return 2;
  const std::size_t channels = std::strtoul(argv[1], nullptr, 10);
  const std::size_t frames = std::strtoul(argv[2], nullptr, 10);
  const int rounds = std::atoi(argv[3]);
  analysis::Sections sections;
  for (analysis::Section s{}; std::cin >> s.b0 >> s.b1 >> s.b2 >> s.a1 >> s.a2;)
    sections.push_back(s);
  std::vector<double> input(frames * channels), output;
  for (std::size_t i = 0; i < input.size(); ++i) input[i] = sample(i);
  std::vector<double> last;
  double least = std::numeric_limits<double>::infinity();
  for (int round = 0; round < rounds; ++round) {
    output = input;
    signals::Cascade cascade(sections, channels);
    const auto begin = std::chrono::steady_clock::now();
    cascade.run(output);
    const std::chrono::duration<double, std::nano> took = std::chrono::steady_clock::now() - begin;
    least = std::min(least, took.count() / static_cast<double>(frames));
    if (round == 0) last.assign(output.end() - static_cast<std::ptrdiff_t>(channels), output.end());
  }
  std::printf("%.17g\n", least);
  for (const double value : last) std::printf("%.17g\n", value);
  return 0;
}
