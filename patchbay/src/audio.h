// Audio being switched on.
#ifndef PATCHBAY_AUDIO_H
#define PATCHBAY_AUDIO_H

#include "instances.h"

namespace patchbay {

/** Sends "dsp64" to an instance that takes signals. */
void send_dsp64(State &s, const Instance &x);

/** Switches audio on and sends "dsp64" to all instances. @param samplerate  in Hz */
void audio_on(State &s, double samplerate);

}  // namespace patchbay

#endif
