// Numbers as texts that read back to the same double.
#ifndef TEXT_NUMBERS_H
#define TEXT_NUMBERS_H

#include <string>

namespace text {

/** Appends a finite number with 17 significant digits, so that the digits say what the double
 *  is, and with a point or an exponent, so that a reader takes it for a floating number. */
void append_double(std::string &out, double value);

/** @return the same as a text of its own. */
std::string double_text(double value);

/** @return the same with 9 digits, which are enough for any float. */
std::string float_text(double value);

}  // namespace text

#endif
