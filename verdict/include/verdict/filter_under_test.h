// A filter that is to be checked, with what it was asked to be.
#ifndef VERDICT_FILTER_UNDER_TEST_H
#define VERDICT_FILTER_UNDER_TEST_H

#include <set>
#include <string>

#include "analysis/filter.h"
#include "designer/designer.h"
#include "designer/published_filter.h"
#include "designer/saved_design.h"

namespace verdict {

/** Where coefficients come from: a design made for the check, a saved one, or another program, which
 *  left no settings. */
enum class Origin { designed, saved, foreign };

/** A filter in all forms. */
struct Forms {
  analysis::Roots roots;
  analysis::Sections sections; /**< at least one */
  analysis::Transfer transfer; /**< both lists of one length, at least 1 */
};

struct FilterUnderTest {
  std::string title;                   /**< the filter in one line */
  designer::PublishedFilter published; /**< with the forms that are there; of a foreign one only
                                            what FilterForms has is known */
  Forms forms;                         /**< the same; those that are missing are those of a design
                                            with the same settings that publishes all; of a foreign
                                            one the transfer function is empty */
  designer::Settings requested;        /**< what was asked for */
  designer::Settings used;             /**< all settings, as the box holds them */
  std::set<std::string> typed;         /**< names of those of the requested settings that a user
                                            gave by name, not a saved design */
  Origin origin;

  /** @return true if numerator and denominator are published. */
  bool publishes_transfer() const;
};

/**
 * Designs a filter, and a second time with all forms.
 * @param requested  as for Designer::design
 * @param typed      as in FilterUnderTest
 * Raises as Designer::design does.
 */
FilterUnderTest new_filter(designer::Designer &designer, const designer::Settings &requested,
                           const std::set<std::string> &typed);

/**
 * Takes the coefficients of a saved design as they are, finite or not, and designs those forms
 * that it does not have.
 * @param saved  with a dictionary
 * @param what   what it is called in a sentence, such as its name in quotes
 * Raises Refusal if it has no dictionary, or one that cannot be read as that of a filter with its
 * settings; otherwise as Designer::design does.
 */
FilterUnderTest saved_filter(designer::Designer &designer, const designer::SavedDesign &saved,
                             const std::string &what);

/**
 * A filter of which nothing is known but its sections.
 * @param title     the filter in one line
 * @param sections  at least one
 */
FilterUnderTest foreign_filter(const std::string &title, const designer::FilterForms &sections);

}  // namespace verdict

#endif
