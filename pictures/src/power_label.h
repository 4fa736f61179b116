// Labels of axes whose numbers were multiplied by a power of ten.
#ifndef PICTURES_POWER_LABEL_H
#define PICTURES_POWER_LABEL_H

#include <array>
#include <string>

namespace pictures {

/** @param power  of ten, by which what the label says was multiplied
 *  @return the label with it: "Im z · 10³"; as it is for 0 */
inline std::string counted_in_powers(const std::string &label, int power) {
  constexpr std::array digits{"\u2070", "\u00b9", "\u00b2", "\u00b3", "\u2074",
                              "\u2075", "\u2076", "\u2077", "\u2078", "\u2079"};
  if (power == 0) return label;
  std::string text = label + " \u00b7 10";
  for (const char c : std::to_string(power))
    text += c == '-' ? "\u207b" : digits.at(static_cast<std::size_t>(c - '0'));
  return text;
}

}  // namespace pictures

#endif
