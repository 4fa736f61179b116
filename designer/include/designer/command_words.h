// Settings as they are typed behind a subcommand.
#ifndef DESIGNER_COMMAND_WORDS_H
#define DESIGNER_COMMAND_WORDS_H

#include <string>
#include <vector>

#include "designer/settings.h"
#include "patchbay/host.h"

namespace designer {

/** @return the option that sets an attribute: "--passband-ripple" for "passband_ripple". */
std::string option_for(const std::string &attribute);

/**
 * The words that make settings again: "--order", "8", "--frequency", "300", "3400". They are as few
 * as can be: what a box has anyway is left out, and so is the name of its dictionary. Numbers have
 * the fewest digits that read back to the same double.
 * @param attributes  of the class, in the order in which the words come
 * @param settings    as a box holds them; what is missing is as in a fresh one. A sample rate of 0
 *                    means `audio_samplerate` to the command: whoever designs at another rate of
 *                    the audio gives that one.
 * @param fresh       those of a box without any, at `audio_samplerate`: `Designer::fresh`
 * @return none where nothing differs. What `Designer::accepted` refuses, such as cutoffs in radians
 *         or a single one for a band, the command refuses in these words, too.
 */
std::vector<std::string> command_words(const std::vector<patchbay::AttributeInfo> &attributes,
                                       const Settings &settings, const Settings &fresh);

}  // namespace designer

#endif
