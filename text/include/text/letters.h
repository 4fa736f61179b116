// Capital and small letters.
#ifndef TEXT_LETTERS_H
#define TEXT_LETTERS_H

#include <string>
#include <string_view>

namespace text {

/** @return the text with A to Z in small letters; all other characters stay, whatever the locale. */
std::string lower_case(std::string_view text);

}  // namespace text

#endif
