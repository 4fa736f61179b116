/** The host's audio. */
#ifndef BRONTAL_AUDIO_H
#define BRONTAL_AUDIO_H

#include "types.h"

BRONTAL_BEGIN

/**
 * @return the audio sample rate in Hz; it is what the audio device reports, so
 *         a module should accept any value. [main]
 */
BRONTAL_API float sys_getsr(void);

BRONTAL_END

#endif
