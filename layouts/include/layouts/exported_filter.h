// A filter as it goes into a file: scaled as asked, and fit for what the target computes with.
#ifndef LAYOUTS_EXPORTED_FILTER_H
#define LAYOUTS_EXPORTED_FILTER_H

#include <string>
#include <vector>

#include "analysis/filter.h"
#include "analysis/structure.h"
#include "designer/designer.h"
#include "designer/filter_forms.h"
#include "layouts/request.h"
#include "layouts/target.h"

namespace layouts {

/** What goes into the file. */
struct ExportedFilter {
  std::string title;                /**< the settings on one line */
  double samplerate = 0.0;          /**< in Hz */
  std::string identifier;           /**< as in Request */
  std::vector<std::string> command; /**< as in Request */
  std::vector<std::string> scaling; /**< sentences that say what level it has, how its sections are
                                         arranged and run and what noise they make, each with its
                                         full stop */
  std::vector<std::string>
      remarks;                 /**< what a user of the file needs to know, without full stops */
  analysis::Sections sections; /**< finite, at least one, none silent; for a target with floats
                                         each coefficient is a float's value, or that of `forms` is,
                                         and in fixed point a multiple of the unit that one postshift
                                         has for all */
  analysis::Structure structure =
      analysis::Structure::direct_2_transposed; /**< in which they are run */
  std::vector<analysis::StateVariable> forms;   /**< of each section, if that is state variable,
                                                     rounded as the sections; otherwise empty */
  int shift = 0; /**< the output is 2^-shift times the filter's; above
                                                     0 only in fixed point */
};

/**
 * Makes a filter ready for a target: takes the published sections, scales and arranges them as
 * asked, and rounds them if the target holds floats.
 * @param design  with its sections; see `with_sections`
 * Raises designer::Refusal when the target cannot do what is asked or cannot hold this filter, and
 * std::runtime_error when the design is not as the module publishes one.
 */
ExportedFilter exported_filter(const designer::Design &design, const Target &target,
                               const Request &request);

/**
 * The same for sections of which nothing else is known.
 * @param title    the filter on one line
 * @param request  with `Source::elsewhere`
 */
ExportedFilter exported_filter(const std::string &title, const designer::FilterForms &filter,
                               const Target &target, const Request &request);

}  // namespace layouts

#endif
