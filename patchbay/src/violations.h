// Violations of the interface by modules and threads.
#ifndef PATCHBAY_VIOLATIONS_H
#define PATCHBAY_VIOLATIONS_H

#include <string>
#include <vector>

namespace patchbay {

struct State;

/** Records a misuse, as a sentence without its full stop. */
void report(State &s, std::string violation);

/** @return all misuse so far, oldest first, the calls of other threads included. */
const std::vector<std::string> &violations(State &s);

}  // namespace patchbay

#endif
