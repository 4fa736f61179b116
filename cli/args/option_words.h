// Values as people type them: "3k", "60 dB", "lp", "Butter", "JSON".
#ifndef CLI_ARGS_OPTION_WORDS_H
#define CLI_ARGS_OPTION_WORDS_H

#include <string>

#include "args/option.h"
#include "base/words.h"

namespace cli {

/**
 * What was typed for an option, in the words and numbers that it takes: choices in any case, and
 * short names of families, responses and units; numbers with their unit and with k or M for
 * thousands and millions; two numbers with a comma between them. What is not understood, another
 * unit included, stays as it is, for its reader to refuse.
 * Raises designer::Refusal for a word that is not a choice but close to one, and says which; and for
 * a comma that may be a decimal one, as in "3,4kHz".
 */
Words in_own_words(const Option &option, const Words &typed);

/** @return a number as it is typed there, without its unit and thousands: "3400" for "3.4kHz". What
 *          is not understood stays as it is. */
std::string in_own_number(const std::string &typed, Unit unit);

}  // namespace cli

#endif
