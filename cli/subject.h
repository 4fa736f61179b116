// The filter that `veltane check` looks at.
#ifndef VELTANE_CLI_SUBJECT_H
#define VELTANE_CLI_SUBJECT_H

#include <set>
#include <string>

#include "analysis/filter.h"
#include "design.h"
#include "published.h"
#include "verdict.h"

namespace cli {

struct Subject {
  Design design;               /**< what is checked, with all its settings */
  Published published;         /**< its forms, those that are there */
  Published whole;             /**< the same; the forms that are missing are those of a design with
                                    the same settings that publishes all */
  Settings requested;          /**< what was asked for, before it was clipped */
  std::set<std::string> typed; /**< names of the settings that were typed, not saved */
  bool saved = false;          /**< whether these are the coefficients of a file */

  analysis::Band band = analysis::Band::lowpass;
  analysis::Sections sections; /**< of `whole` */
  analysis::Roots roots;       /**< of `whole` */
  analysis::Transfer transfer; /**< of `whole` */

  /** @return the single number or word that a setting holds, as a text. */
  std::string setting(const std::string &name) const;
  /** @return the numbers that a setting holds. */
  std::vector<double> numbers(const std::string &name) const;
  /** @return a fraction of the Nyquist frequency in Hz, to read: "1000 Hz". */
  std::string hz(double w) const;
  /** @return whether numerator and denominator are published. */
  bool publishes_transfer() const;
  /** @return whether two cutoffs are used. */
  bool has_two_cutoffs() const;
  /** @return whether two cutoffs are used and do not ascend, so that there is no band. */
  bool has_no_band() const;
};

/** @return the analysis' word for a response. */
analysis::Band band_of(const std::string &response);

/** @return sections and roots of a published filter as the analysis reads them. */
analysis::Sections sections_of(const Published &published);
analysis::Roots roots_of(const Published &published);

/** Takes the settings as they were asked for and as they were used. */
void check_settings(const Subject &subject, Verdict &verdict);

/**
 * Whether the filter works at all: finite, stable, not silent; and how long it rings.
 * @return whether it does, so that its levels mean something
 */
bool check_health(const Subject &subject, Verdict &verdict);

/** The levels reached against those asked for. */
void check_levels(const Subject &subject, Verdict &verdict);

/** Whether the forms are the same filter, whether they are published or not. */
void check_forms(const Subject &subject, Verdict &verdict);

/** Whether the sections bear a filter with fewer digits. */
void check_rounding(const Subject &subject, Verdict &verdict);

}  // namespace cli

#endif
