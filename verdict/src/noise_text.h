// What sections do to a signal, in words.
#ifndef VERDICT_NOISE_TEXT_H
#define VERDICT_NOISE_TEXT_H

#include <string>

namespace verdict {

/** @return what follows "they": "make noise 120 dB below the output's peak", "overflow".
 *  @param db  the noise in dB of that peak; may be infinite */
std::string noise_text(double db);

}  // namespace verdict

#endif
