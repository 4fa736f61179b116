// The noise that an exported filter makes where it is used.
#ifndef LAYOUTS_NOISE_H
#define LAYOUTS_NOISE_H

#include <string>

#include "analysis/realization.h"
#include "layouts/target.h"

namespace layouts {

/** @return what to expect of a stable filter, for the comment of a file: a sentence with its full
 *          stop. */
std::string expected_noise(const analysis::Realization &filter, const Target &target);

/** @return true if it makes noise of more than -60 dB of the output's peak in floats, and the target
 *          computes in them. */
bool is_too_noisy(const analysis::Realization &filter, const Target &target);

/** @return the sentence that refuses a filter that is too noisy.
 *  @param instead  what to do */
std::string noise_refusal(const analysis::Realization &filter, const Target &target,
                          const std::string &instead);

}  // namespace layouts

#endif
