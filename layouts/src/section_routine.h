// What C and C++ compute in each section, in any structure.
#ifndef LAYOUTS_SECTION_ROUTINE_H
#define LAYOUTS_SECTION_ROUTINE_H

#include <string>
#include <vector>

#include "layouts/exported_filter.h"

namespace layouts {

/** The text of a routine. */
struct SectionRoutine {
  std::vector<std::string> coefficients; /**< their names, in the order of the columns of c */
  std::vector<std::string> state;        /**< names of the numbers that it remembers */
  std::vector<std::string> statements;   /**< which make the next x of x, with the coefficients in
                                              c[...], numbers of @TYPE@, and @NAME@ for a number of
                                              the state */
  std::vector<std::string> equation;     /**< the lines of the comment that say what it computes */
};

SectionRoutine section_routine(analysis::Structure structure);

/** @return the coefficients of each section, in the order of the routine of its structure. */
std::vector<std::vector<double>> coefficient_rows(const ExportedFilter &filter);

}  // namespace layouts

#endif
