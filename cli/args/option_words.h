// Settings as people type them: "3k", "60 dB", "lp", "Butter".
#ifndef CLI_ARGS_OPTION_WORDS_H
#define CLI_ARGS_OPTION_WORDS_H

#include "args/option.h"
#include "base/words.h"

namespace cli {

/**
 * What was typed for a setting, in the words and numbers that the object takes: the short names of
 * families, responses and units in any case; numbers with their unit and with k or M for thousands
 * and millions; two numbers with a comma between them. What is not understood stays as it is, for
 * the object to refuse.
 * Raises designer::Refusal for a word that is no choice but close to one, and says which.
 */
Words in_own_words(const Option &option, const Words &typed);

}  // namespace cli

#endif
