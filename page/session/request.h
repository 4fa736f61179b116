// The members of a request. Each function raises Refusal where a member is missing or of another
// kind.
#ifndef PAGE_SESSION_REQUEST_H
#define PAGE_SESSION_REQUEST_H

#include <string>
#include <vector>

#include "session/answers.h"

namespace page {

bool has(const Request &request, const char *member);
std::string text_in(const Request &request, const char *member);
double number_in(const Request &request, const char *member);
std::vector<double> numbers_in(const Request &request, const char *member);
std::vector<std::string> texts_in(const Request &request, const char *member);

/** @return false where it is missing. */
bool flag_in(const Request &request, const char *member);

/** @return the settings that a member asks for. A cutoff that it does not give is that of a fresh box
 *  without audio, whatever the rate of the audio is: otherwise it would move when audio is switched
 *  on. */
designer::Settings settings_in(designer::Designer &designer, const Request &request,
                               const char *member);

/** Designs what a member asks for, at the rate of the audio that the request gives. */
designer::Design design_in(designer::Designer &designer, const Request &request,
                           const char *member);

/** @return the settings of a member, with the rate of the audio where they give none: whatever
 *  knows of no audio makes the same filter of them. */
designer::Settings settings_at_audio_rate(designer::Designer &designer, const Request &request,
                                          const char *member);

/** @return the words that make these settings at a terminal, behind a subcommand. */
std::vector<std::string> setting_words(designer::Designer &designer,
                                       const designer::Settings &settings);

}  // namespace page

#endif
