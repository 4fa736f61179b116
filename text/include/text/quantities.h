// Quantities with their units, as a person writes them.
#ifndef TEXT_QUANTITIES_H
#define TEXT_QUANTITIES_H

#include <cstddef>
#include <string>
#include <string_view>

namespace text {

/** @return "1 pole", "2 poles". @param thing  in the singular; its plural adds an s */
std::string counted(std::size_t count, std::string_view thing);

/** @return a number with two digits that is no less, and no more than a tenth larger: "0.13" for
 *  0.1201. @param value  not negative */
std::string no_less_than(double value);

/** @return a level to a thousandth of a dB, never "-0 dB". */
std::string decibels(double level);

/** @return a time in the unit that a person would use for it: "3.5 ms", "12.4 s", "4.2 min",
 *  "10.6 h", with three digits. @param seconds  not negative */
std::string duration(double seconds);

}  // namespace text

#endif
