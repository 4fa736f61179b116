// What sound files say of themselves.
#ifndef SIGNALS_SOUND_TEXTS_H
#define SIGNALS_SOUND_TEXTS_H

#include <sndfile.h>

#include <vector>

#include "signals/sound_reader.h"

namespace signals {

std::vector<SoundText> texts_of(SNDFILE *file);

/** Those that the format does not take are left out. */
void set_texts(SNDFILE *file, const std::vector<SoundText> &texts);

}  // namespace signals

#endif
