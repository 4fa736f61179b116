// Sections that another program wrote.
#ifndef DESIGNER_FOREIGN_SECTIONS_H
#define DESIGNER_FOREIGN_SECTIONS_H

#include <cstddef>
#include <optional>
#include <string>

#include "analysis/filter.h"

namespace designer {

/** The most sections that are read: as many as the highest order of a band response has. */
inline constexpr std::size_t most_foreign_sections = 200;

struct ForeignSections {
  analysis::Sections sections;      /**< at least one, finite, normalised to a0 = 1 */
  std::optional<double> samplerate; /**< in Hz, where the file says it */
};

/**
 * Reads sections, a row each: b0 b1 b2 a1 a2, or b0 b1 b2 a0 a1 a2 as SciPy, Octave and MATLAB have
 * them. Feedback terms are subtracted: the denominator is a0 + a1 z^-1 + a2 z^-2.
 *
 * Understood are columns separated by commas, semicolons, tabs or blanks, with or without a line of
 * their names and a mark of the byte order; a matrix in brackets, as NumPy prints it, and as Python, Octave and MATLAB sources
 * hold it; and JSON with "sections", a list of such rows. What begins with #, % or // is a comment.
 * @param file  its text
 * @param what  what the file is called in a sentence, such as its name in quotes
 * Raises Refusal when it is none of these or several lists, a row has another number of columns, an
 * empty one, a decimal comma or something else that is not a finite number, an a0 is 0 or a coefficient overflows when it is divided by it, the names are
 * those of another order, or there are no sections or more than `most_foreign_sections`.
 */
ForeignSections parse_foreign_sections(const std::string &file, const std::string &what);

}  // namespace designer

#endif
