#include "signals/tail.h"

#include <algorithm>
#include <cmath>
#include <vector>

#include "analysis/stability.h"

namespace signals {

std::uint64_t tail_frames(Cascade cascade, const analysis::Sections &sections, double peak,
                          std::uint64_t most) {
  constexpr std::uint64_t block_frames = 1024;
  const double threshold = peak * std::pow(10.0, tail_end_db / 20.0);
  const double ringing = analysis::ringing_samples(analysis::stability(sections));
  // Of a filter without feedback the sections themselves are what is left.
  const auto wait = static_cast<std::uint64_t>(std::min(ringing, static_cast<double>(most)) +
                                               2.0 * static_cast<double>(sections.size()));
  std::uint64_t end = 0;
  std::vector<double> block;
  for (std::uint64_t at = 0; at < most && at - end <= wait; at += block_frames) {
    block.assign(block_frames * cascade.channels(), 0.0);
    cascade.run(block);
    for (std::size_t i = 0; i < block.size(); ++i)
      if (std::abs(block[i]) > threshold) end = at + i / cascade.channels() + 1;
  }
  return std::min(end, most);
}

}  // namespace signals
