#include "apply/filtering.h"

#include <algorithm>
#include <cmath>
#include <span>
#include <vector>

#include "base/progress.h"
#include "signals/cascade.h"
#include "signals/tail.h"
#include "signals/zero_phase.h"

namespace cli {
namespace {

constexpr std::size_t block_frames = 4096;

double peak_of(std::span<const double> samples) {
  double peak = 0.0;
  for (const double sample : samples) peak = std::max(peak, std::abs(sample));
  return peak;
}

class Filtering {
 public:
  Filtering(signals::Source &source, signals::Sink &sink, const analysis::Sections &sections,
            double samplerate)
      : source_(source),
        sink_(sink),
        sections_(sections),
        samplerate_(samplerate),
        block_(block_frames * source.channels()) {}

  Passage forwards(Ending ending) {
    signals::Cascade cascade(sections_, source_.channels());
    for (std::span<double> block = next(); !block.empty(); block = next()) {
      cascade.run(block);
      if (!write(block)) return passage_;
      show(source_.fraction());
    }
    if (ending == Ending::rung_out) ring_out(cascade);
    return passage_;
  }

  Passage both_ways() {
    signals::ZeroPhase filter(sections_, source_.channels());
    // Reading is half of the work.
    for (std::span<double> block = next(); !block.empty(); block = next()) {
      filter.add(block);
      show(source_.fraction() / 2.0);
    }
    filter.turn([&](double part) { show(0.5 + part / 2.0); });
    for (std::size_t frames = filter.read(block_); frames > 0; frames = filter.read(block_))
      if (!write(std::span(block_).first(frames * source_.channels()))) break;
    return passage_;
  }

 private:
  std::span<double> next() {
    const std::size_t frames = source_.read(block_);
    const std::span<double> block = std::span(block_).first(frames * source_.channels());
    passage_.frames += frames;
    passage_.peak_in = std::max(passage_.peak_in, peak_of(block));
    return block;
  }

  bool write(std::span<const double> block) {
    passage_.peak_out = std::max(passage_.peak_out, peak_of(block));
    return sink_.write(block);
  }

  void ring_out(signals::Cascade &cascade) {
    const auto most = static_cast<std::uint64_t>(longest_tail * samplerate_);
    std::uint64_t left = signals::tail_frames(cascade, sections_, passage_.peak_out, most);
    passage_.tail_is_complete = left < most;
    while (left > 0) {
      const std::size_t frames = std::min<std::uint64_t>(left, block_frames);
      block_.assign(frames * source_.channels(), 0.0);
      cascade.run(block_);
      if (!write(block_)) return;
      left -= frames;
    }
  }

  void show(double fraction) {
    progress_.show(static_cast<double>(passage_.frames) / samplerate_, fraction);
  }

  signals::Source &source_;
  signals::Sink &sink_;
  const analysis::Sections &sections_;
  double samplerate_;
  std::vector<double> block_;
  Passage passage_;
  Progress progress_{"seconds of signal"};
};

}  // namespace

Passage filter(signals::Source &source, signals::Sink &sink, const analysis::Sections &sections,
               double samplerate, Direction direction, Ending ending) {
  Filtering filtering(source, sink, sections, samplerate);
  return direction == Direction::both_ways ? filtering.both_ways() : filtering.forwards(ending);
}

}  // namespace cli
