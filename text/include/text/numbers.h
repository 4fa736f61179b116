// Numbers as texts that read back to the same double.
#ifndef TEXT_NUMBERS_H
#define TEXT_NUMBERS_H

#include <cstddef>
#include <string>

namespace text {

/** The most that a number has: a sign, 17 digits, a point and an exponent of three digits, or ".0"
 *  behind 17 digits; and some to spare. */
inline constexpr std::size_t most_number_characters = 32;

/** Writes a finite number with 17 significant digits, so that the digits say what the double
 *  is, and with a point or an exponent, so that a reader takes it for a floating number.
 *  @param at  where there is room for `most_number_characters`
 *  @return the end of what was written */
char *write_double(char *at, double value);

/** @return the same as a text of its own. */
std::string double_text(double value);

/** @return the same with 9 digits, which are enough for any float. */
std::string float_text(double value);

}  // namespace text

#endif
