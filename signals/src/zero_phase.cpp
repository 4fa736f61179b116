#include "signals/zero_phase.h"

#include <algorithm>

#include <fmt/format.h>

#include "designer/refusal.h"
#include "frame_store.h"

namespace signals {
namespace {

constexpr std::size_t block_frames = 4096;

// Frames as a list of numbers, in the reverse order of the frames.
void reverse_frames(std::span<double> samples, std::size_t channels) {
  const std::size_t frames = samples.size() / channels;
  for (std::size_t i = 0; i < frames / 2; ++i)
    std::swap_ranges(samples.begin() + static_cast<std::ptrdiff_t>(i * channels),
                     samples.begin() + static_cast<std::ptrdiff_t>((i + 1) * channels),
                     samples.begin() + static_cast<std::ptrdiff_t>((frames - 1 - i) * channels));
}

// The frames beside one of a signal, reflected in it: 2 c - x.
std::vector<double> reflected(std::span<const double> frames, std::span<const double> centre) {
  std::vector<double> result(frames.begin(), frames.end());
  reverse_frames(result, centre.size());
  for (std::size_t i = 0; i < result.size(); ++i)
    result[i] = 2.0 * centre[i % centre.size()] - result[i];
  return result;
}

}  // namespace

std::size_t edge_frames(const analysis::Sections &sections) {
  const auto without_b2 = std::count_if(sections.begin(), sections.end(),
                                        [](const analysis::Section &s) { return s.b2 == 0.0; });
  const auto without_a2 = std::count_if(sections.begin(), sections.end(),
                                        [](const analysis::Section &s) { return s.a2 == 0.0; });
  return 3 * (2 * sections.size() + 1 - static_cast<std::size_t>(std::min(without_b2, without_a2)));
}

ZeroPhase::ZeroPhase(const analysis::Sections &sections, std::size_t channels)
    : channels_(channels),
      edge_(edge_frames(sections)),
      cascade_(sections, channels),
      store_(std::make_unique<FrameStore>(channels)) {}

ZeroPhase::~ZeroPhase() = default;

void ZeroPhase::add(std::span<const double> frames) {
  frames_ += frames.size() / channels_;
  last_.insert(last_.end(), frames.begin(), frames.end());
  if (!begun_) {
    if (frames_ <= edge_) return;
    begin();
    forwards(last_);
  } else {
    forwards({frames.begin(), frames.end()});
  }
  const std::size_t kept = (edge_ + 1) * channels_;
  if (last_.size() > kept)
    last_.erase(last_.begin(), last_.end() - static_cast<std::ptrdiff_t>(kept));
}

// Its frames are all in `last_`.
void ZeroPhase::begin() {
  begun_ = true;
  const std::span<const double> signal(last_);
  std::vector<double> edge =
      reflected(signal.subspan(channels_, edge_ * channels_), signal.first(channels_));
  cascade_.settle(std::span(edge).first(channels_));
  forwards(std::move(edge));
}

void ZeroPhase::forwards(std::vector<double> frames) {
  cascade_.run(frames);
  store_->append(frames);
}

void ZeroPhase::turn(const std::function<void(double)> &progress) {
  if (!begun_)
    throw designer::Refusal(
        fmt::format("a signal of {} {} is too short to be filtered in both directions: this "
                    "filter takes at least {}",
                    frames_, frames_ == 1 ? "sample" : "samples", edge_ + 1));
  const std::span<const double> signal(last_);
  forwards(reflected(signal.first(edge_ * channels_), signal.last(channels_)));
  std::vector<double> block;
  for (std::uint64_t end = store_->size(); end > 0;) {
    const std::uint64_t first = end - std::min<std::uint64_t>(end, block_frames);
    block.resize((end - first) * channels_);
    store_->read(first, block);
    reverse_frames(block, channels_);
    if (end == store_->size()) cascade_.settle(std::span(block).first(channels_));
    cascade_.run(block);
    reverse_frames(block, channels_);
    store_->write(first, block);
    end = first;
    progress(1.0 - static_cast<double>(end) / static_cast<double>(store_->size()));
  }
}

std::size_t ZeroPhase::read(std::span<double> frames) {
  const std::size_t count = std::min<std::uint64_t>(frames.size() / channels_, frames_ - at_);
  if (count > 0) store_->read(edge_ + at_, frames.first(count * channels_));
  at_ += count;
  return count;
}

}  // namespace signals
