// A signal through a filter.
#ifndef CLI_APPLY_FILTERING_H
#define CLI_APPLY_FILTERING_H

#include <cstdint>

#include "analysis/filter.h"
#include "signals/stream.h"

namespace cli {

/** How the filter runs. */
enum class Direction { forwards, both_ways };

/** What the output does after the input's end. */
enum class Ending { with_the_input, rung_out };

/** What went through. */
struct Passage {
  std::uint64_t frames = 0; /**< read */
  double peak_in = 0.0;     /**< the largest magnitude of a sample */
  double peak_out = 0.0;
  bool tail_is_complete = true; /**< false if it was cut off after `longest_tail` */
};

/** How long a filter may ring, in seconds. */
inline constexpr double longest_tail = 600.0;

/**
 * Reads all of a signal, filters it and writes it, in memory that does not grow with it; how far it
 * is goes to standard error where that is a terminal. It stops early, without an error, when nobody
 * reads the output any more.
 * @param samplerate  in Hz
 * Raises as the source, the sink, and signals::ZeroPhase.
 */
Passage filter(signals::Source &source, signals::Sink &sink, const analysis::Sections &sections,
               double samplerate, Direction direction, Ending ending);

}  // namespace cli

#endif
