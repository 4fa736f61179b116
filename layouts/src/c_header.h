// What headers for C and C++ have in common: the names of macros, and blanks that are filled in.
#ifndef LAYOUTS_C_HEADER_H
#define LAYOUTS_C_HEADER_H

#include <string>

#include "layouts/exported_filter.h"

namespace layouts {

/** @return an identifier with its ASCII letters in upper case. */
std::string macro_name(std::string identifier);

/**
 * Writes a header: the comment, and the text with its blanks filled in.
 * @param blank  with @ROWS@ (the coefficients of each section in braces), @COUNT@ (of sections),
 *               @RATE@ (of the samples), @TYPE@, @GUARD@ (the name of macros) and @NAME@
 * @param use    the comment's last line of usage
 */
std::string c_header(const ExportedFilter &filter, Arithmetic arithmetic, std::string blank,
                     const std::string &use);

}  // namespace layouts

#endif
