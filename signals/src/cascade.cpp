#include "signals/cascade.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstring>

namespace signals {
namespace {

// Both are far above the doubles without all their digits, and far below any signal.
constexpr double silence = 1e-290;

// What fits into the nearest cache beside the states.
constexpr std::size_t block_samples = 2048;

constexpr std::size_t most_depth = 4;

constexpr analysis::Section unchanged{1.0, 0.0, 0.0, 0.0, 0.0};

// Two doubles, the registers that all 64-bit x86 and ARM processors have.
using Pair [[gnu::vector_size(16)]] = double;

// A lane is one section for one channel. `Depth` sections run as a pipeline: while the first has
// frame t, the second has frame t - 1, and so on. None waits for another within a step, so that
// all lanes are computed at once; lane l takes what lane l - Width had put out in the last step.
template <std::size_t Width, std::size_t Depth>
class Group {
 public:
  Group(const analysis::Section *sections, double *states) : states_(states) {
    for (std::size_t l = 0; l < lanes; ++l) {
      const analysis::Section &s = sections[l / Width];
      b0_[l / 2][l % 2] = s.b0;
      b1_[l / 2][l % 2] = s.b1;
      b2_[l / 2][l % 2] = s.b2;
      a1_[l / 2][l % 2] = s.a1;
      a2_[l / 2][l % 2] = s.a2;
    }
    std::memcpy(s1_.data(), states_, sizeof s1_);
    std::memcpy(s2_.data(), states_ + lanes, sizeof s2_);
  }

  // @param at      the first channel's first sample
  // @param stride  from one frame to the next
  void run(double *at, std::size_t frames, std::size_t stride) {
    const std::size_t filling = std::min(Depth - 1, frames);
    for (std::size_t t = 0; t < filling; ++t) step_some(0, t + 1, at + t * stride, nullptr);
    double *out = at;
    if (frames >= Depth) {
      for (std::size_t t = Depth - 1; t < frames; ++t, out += stride) step(at + t * stride, out);
    }
    // What is still inside, and, of a signal shorter than the pipeline, what has not come out.
    for (std::size_t t = filling < Depth - 1 ? filling : frames; t < frames + Depth - 1; ++t) {
      const std::size_t first = t + 1 > frames ? t + 1 - frames : 0;
      const std::size_t last = std::min(Depth, t + 1);
      const bool comes_out = last == Depth;
      step_some(first, last, at + t * stride, comes_out ? out : nullptr);
      if (comes_out) out += stride;
    }
    std::memcpy(states_, s1_.data(), sizeof s1_);
    std::memcpy(states_ + lanes, s2_.data(), sizeof s2_);
  }

 private:
  static constexpr std::size_t lanes = Width * Depth;
  static constexpr std::size_t pairs = lanes / 2;
  using Lanes = std::array<Pair, pairs>;

  // All sections, in the middle of the signal.
  void step(const double *in, double *out) {
    Lanes x;
    if constexpr (Width == 1) {
      x[0] = __builtin_shufflevector(Pair{*in, 0.0}, y_[0], 0, 2);
      for (std::size_t p = 1; p < pairs; ++p)
        x[p] = __builtin_shufflevector(y_[p - 1], y_[p], 1, 2);
    } else {
      std::memcpy(x.data(), in, Width * sizeof(double));
      for (std::size_t p = Width / 2; p < pairs; ++p) x[p] = y_[p - Width / 2];
    }
    for (std::size_t p = 0; p < pairs; ++p) {
      const Pair y = b0_[p] * x[p] + s1_[p];
      s1_[p] = (b1_[p] * x[p] + s2_[p]) - a1_[p] * y;
      s2_[p] = b2_[p] * x[p] - a2_[p] * y;
      y_[p] = y;
    }
    if constexpr (Width == 1)
      *out = y_[pairs - 1][1];
    else
      std::memcpy(out, y_.data() + pairs - Width / 2, Width * sizeof(double));
  }

  // Sections `first` to before `last` only, as at both ends of a signal. The later ones come first:
  // they take what the earlier ones put out in the last step.
  void step_some(std::size_t first, std::size_t last, const double *in, double *out) {
    for (std::size_t l = last * Width; l-- > first * Width;) {
      const std::size_t p = l / 2, k = l % 2;
      const double x = l < Width ? in[l] : y_[(l - Width) / 2][(l - Width) % 2];
      const double y = b0_[p][k] * x + s1_[p][k];
      s1_[p][k] = (b1_[p][k] * x + s2_[p][k]) - a1_[p][k] * y;
      s2_[p][k] = b2_[p][k] * x - a2_[p][k] * y;
      y_[p][k] = y;
      if (out != nullptr && l >= lanes - Width) out[l - (lanes - Width)] = y;
    }
  }

  double *states_;
  Lanes b0_, b1_, b2_, a1_, a2_, s1_, s2_, y_{};
};

template <std::size_t Width, std::size_t Depth>
void run_groups(const analysis::Sections &sections, std::size_t count, std::vector<double> &states,
                double *at, std::size_t frames, std::size_t stride) {
  for (std::size_t i = 0; i < count; i += Depth)
    Group<Width, Depth>(&sections[i], &states[i * Width * 2]).run(at, frames, stride);
}

std::size_t depth_for(std::size_t width) { return width == 1 ? 4 : width == 2 ? 2 : 1; }

}  // namespace

Cascade::Cascade(const analysis::Sections &sections, std::size_t channels)
    : channels_(channels), sections_(sections), count_(sections.size()) {
  sections_.resize((count_ + most_depth - 1) / most_depth * most_depth, unchanged);
  for (std::size_t first = 0; first < channels;) {
    std::size_t width = 8;
    while (width > channels - first) width /= 2;
    packs_.push_back(
        {first, width, depth_for(width), std::vector<double>(sections_.size() * width * 2)});
    first += width;
  }
}

void Cascade::run(std::span<double> frames) {
  const std::size_t block = std::max<std::size_t>(block_samples / channels_, 64) * channels_;
  for (std::size_t at = 0; at < frames.size(); at += block) {
    const std::span<double> part = frames.subspan(at, std::min(block, frames.size() - at));
    for (Pack &pack : packs_) run_pack(pack, part);
  }
  for (Pack &pack : packs_) flush(pack.states);
}

void Cascade::run_pack(Pack &pack, std::span<double> frames) const {
  double *const at = frames.data() + pack.first;
  const std::size_t frame_count = frames.size() / channels_;
  switch (pack.width) {
    case 1: return run_groups<1, 4>(sections_, count_, pack.states, at, frame_count, channels_);
    case 2: return run_groups<2, 2>(sections_, count_, pack.states, at, frame_count, channels_);
    case 4: return run_groups<4, 1>(sections_, count_, pack.states, at, frame_count, channels_);
    default: return run_groups<8, 1>(sections_, count_, pack.states, at, frame_count, channels_);
  }
}

void Cascade::flush(std::vector<double> &states) {
  for (double &state : states)
    if (std::abs(state) < silence) state = 0.0;
}

void Cascade::settle(std::span<const double> frame) {
  for (Pack &pack : packs_)
    for (std::size_t c = 0; c < pack.width; ++c) {
      double x = frame[pack.first + c];
      for (std::size_t i = 0; i < count_; ++i) {
        const analysis::Section &s = sections_[i];
        const double s1 = ((s.b1 - s.a1 * s.b0) + (s.b2 - s.a2 * s.b0)) / (1.0 + s.a1 + s.a2);
        const double gain = s.b0 + s1;
        double *const group = &pack.states[i / pack.depth * pack.depth * pack.width * 2];
        const std::size_t lane = i % pack.depth * pack.width + c;
        group[lane] = s1 * x;
        group[pack.depth * pack.width + lane] = (s.b2 - s.a2 * gain) * x;
        x *= gain;
      }
    }
}

}  // namespace signals
