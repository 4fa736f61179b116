/** A cascade of sections that runs over a signal, block after block. */
#ifndef SIGNALS_CASCADE_H
#define SIGNALS_CASCADE_H

#include <cstddef>
#include <span>
#include <vector>

#include "analysis/filter.h"

namespace signals {

/**
 * Sections in direct form II transposed, in doubles, with a state for each section and channel:
 *   y = b0 x + s1;  s1 = (b1 x + s2) - a1 y;  s2 = b2 x - a2 y
 * It begins at rest. Blocks of a signal give what the whole of it would, to the bit.
 *
 * A state below 1e-290 becomes 0 at the end of a block: decaying further would lead through numbers
 * that processors compute with a hundred times more slowly.
 *
 * Cost: proportional to frames times sections times channels. Four sections, or up to eight
 * channels, are computed at a time, since each one waits for its own last result.
 * Accuracy: that of the recursion in doubles, which depends on the order of the sections.
 * Source: Oppenheim & Schafer, Discrete-Time Signal Processing, 2nd ed., section 6.3.
 */
class Cascade {
 public:
  /** @param sections  in the order in which they run; none leaves the signal as it is
   *  @param channels  at least one */
  Cascade(const analysis::Sections &sections, std::size_t channels);

  std::size_t channels() const { return channels_; }

  /** Filters in place.
   *  @param frames  one sample of each channel after the other, frame by frame; whole frames */
  void run(std::span<double> frames);

  /**
   * Gives it the state in which it would be if each channel had always had the value that it has in
   * `frame`. Of no use for a filter with a pole at z = 1, whose state would be infinite.
   * Accuracy: that of 1 + a1 + a2, which cancels for poles near z = 1: 1e-16 over that sum.
   * @param frame  one sample of each channel
   */
  void settle(std::span<const double> frame);

 private:
  // Neighbouring channels that are computed together: 1, 2, 4 or 8 of them.
  struct Pack {
    std::size_t first;
    std::size_t width;
    std::size_t depth;           // how many sections are computed together
    std::vector<double> states;  // of each section and then channel: the s1 of a group, its s2
  };

  void run_pack(Pack &pack, std::span<double> frames) const;
  static void flush(std::vector<double> &states);

  std::size_t channels_;
  analysis::Sections sections_;  // filled up with such as change nothing, to full groups
  std::size_t count_;            // without those
  std::vector<Pack> packs_;
};

}  // namespace signals

#endif
