// Cutoffs as they were asked for, and as the module uses them.
#ifndef DESIGNER_CUTOFFS_H
#define DESIGNER_CUTOFFS_H

#include <string>
#include <vector>

#include "designer/names.h"
#include "designer/settings.h"

namespace designer {

struct Cutoff {
  double asked = 0.0;      /**< in `units` */
  double used = 0.0;       /**< as a fraction of the Nyquist frequency */
  Units units{};           /**< hertz or normalized */
  double samplerate = 0.0; /**< in Hz */

  /** @return true if it was out of the range that the module keeps cutoffs in, by more than the
   *  rounding of a division. */
  bool is_clipped() const;

  /** @return the number asked for. */
  std::string asked_text() const;

  /** @return the number used, in the same unit: with all digits as asked for, or a limit to 12,
   *  which is not clipped again. */
  std::string used_text() const;

  /** @return the unit after a number: " Hz", or " of Nyquist". */
  const char *unit() const;
};

/** @return those used, the unit at the end: "300 and 3400 Hz". */
std::string used_text(const std::vector<Cutoff> &cutoffs);

/**
 * @param settings    complete, as a box holds them
 * @param samplerate  in Hz, the one in use
 * @return as many as the response has edges, in the order in which they were given
 * Raises Refusal if they are in radians, which the module does not convert: a box keeps the cutoffs
 * that it had. Raises std::runtime_error if a setting is missing or unknown.
 */
std::vector<Cutoff> cutoffs_in(const Settings &settings, double samplerate);

/** @return a frequency to read: "1000 Hz". @param w  as a fraction of the Nyquist frequency
 *  @param samplerate  in Hz */
std::string hz_text(double w, double samplerate);

/** Raises Refusal if cutoffs are in radians. @param settings  need not be complete */
void refuse_radians(const Settings &settings);

}  // namespace designer

#endif
