// The numbers of a filter, wherever they come from.
#ifndef DESIGNER_FILTER_FORMS_H
#define DESIGNER_FILTER_FORMS_H

#include <optional>
#include <string>

#include "analysis/filter.h"

namespace designer {

/** A filter in one form or several, for a sample rate. A form that is missing is empty. */
struct FilterForms {
  double samplerate;       /**< in Hz */
  bool samplerate_assumed; /**< whether it is that of the audio, as nobody gave one */
  std::optional<analysis::Roots> roots;
  analysis::Sections sections;
  analysis::Transfer transfer; /**< either both lists are empty, or neither is */

  /** @return half the sample rate, in Hz. */
  double nyquist() const { return samplerate / 2; }

  /** @return a fraction of the Nyquist frequency in Hz, to read: "1000 Hz". */
  std::string hz_text(double w) const;
};

/** @return roots of a filter: those that it has, or those of its sections; none if it has neither. */
std::optional<analysis::Roots> roots_of(const FilterForms &filter);

}  // namespace designer

#endif
