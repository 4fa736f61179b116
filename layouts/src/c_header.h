// What headers for C and C++ have in common: the names of macros, and blanks that are filled in.
#ifndef LAYOUTS_C_HEADER_H
#define LAYOUTS_C_HEADER_H

#include <string>

#include "layouts/exported_filter.h"

namespace layouts {

/** @return an identifier with its ASCII letters in upper case. */
std::string macro_name(std::string identifier);

/** How a language holds a filter. @NAME@ stands for what the filter is called. */
struct HeaderLanguage {
  /** The header, with @ROWS@ (the coefficients of each section in braces), @COUNT@ (of sections),
   *  @COLUMNS@ and @COLUMN_COUNT@ (names and number of the coefficients), @RATE@ (of the samples),
   *  @STRUCTURE@, @STATE@, @STATEMENTS@ (of the loop over sections i, with the coefficients in c),
   *  @TYPE@ and @GUARD@ (the name of macros) */
  const char *blank;
  const char *member;    /**< a line that declares a number for each section, called @MEMBER@ */
  const char *use;       /**< that number in section i */
  const char *statement; /**< the line of a @STATEMENT@ */
};

/**
 * Writes a header: the comment, and the text with its blanks filled in.
 * @param usage  the comment's last line of usage
 */
std::string c_header(const ExportedFilter &filter, Arithmetic arithmetic,
                     const HeaderLanguage &language, const std::string &usage);

}  // namespace layouts

#endif
