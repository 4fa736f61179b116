/** What messages, attributes and dictionaries hold, as C++ values. */
#ifndef PATCHBAY_VALUE_H
#define PATCHBAY_VALUE_H

#include <string>
#include <utility>
#include <variant>
#include <vector>

#include "brontal/types.h"

/** Marks what the shared library exports. */
#define PATCHBAY_API BRONTAL_API

namespace patchbay {

/** An integer, a number or a symbol's text. */
using Value = std::variant<t_long, double, std::string>;
using Values = std::vector<Value>;

/** A value in a dictionary: a symbol's text, a number, or an atom array. */
using Entry = std::variant<std::string, double, Values>;

/** A dictionary's contents in the order of its keys. */
using Dictionary = std::vector<std::pair<std::string, Entry>>;

/** @return the value as a text, numbers with the fewest digits
 *  that read back to the same double; a symbol without quotes. */
PATCHBAY_API std::string to_text(const Value &value);

/**
 * Splits a line of text into values: integers, numbers, and symbols for all
 * else. A word that begins with a double quote ends at the next one, and is a
 * symbol.
 * Raises Error when a quote is not closed.
 */
PATCHBAY_API Values parse_line(const std::string &line);

}  // namespace patchbay

#endif
