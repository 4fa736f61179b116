// Frequencies as texts name them.
#ifndef PICTURES_FREQUENCY_TEXT_H
#define PICTURES_FREQUENCY_TEXT_H

#include <string>
#include <vector>

namespace pictures {

/**
 * @param frequencies  in Hz, ascending, not negative
 * @param digits       significant ones, more where that many would make two neighbours equal
 * @return them in one unit: "291.77 and 3416 Hz". Zeros at the end of a fraction are left out, and
 *  no number has an exponent.
 */
std::string frequencies_text(const std::vector<double> &frequencies, int digits);

}  // namespace pictures

#endif
