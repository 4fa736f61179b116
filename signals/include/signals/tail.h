/** How long a filter still sounds when its input has ended. */
#ifndef SIGNALS_TAIL_H
#define SIGNALS_TAIL_H

#include <cstdint>

#include "analysis/filter.h"
#include "signals/cascade.h"

namespace signals {

/** How far below the peak the output counts as silent, in dB. */
inline constexpr double tail_end_db = -120.0;

/**
 * Lets a copy of a running filter ring.
 * @param cascade   as the signal left it
 * @param sections  those of the cascade; stable
 * @param peak      of the signal that came out, in the units of its samples
 * @param most      frames after which it stops looking
 * @return how many frames of silence at the input it takes until the output stays `tail_end_db`
 *         below the peak; at most `most`
 *
 * Cost: that of filtering so many frames, and as many more as the slowest pole takes to fall by
 * 60 dB, which shows that nothing louder follows.
 * Accuracy: poles close together can make an output that is quiet for longer and comes again; it is
 * missed.
 */
std::uint64_t tail_frames(Cascade cascade, const analysis::Sections &sections, double peak,
                          std::uint64_t most);

}  // namespace signals

#endif
