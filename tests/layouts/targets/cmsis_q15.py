"""Compiles the header with a model of the library's arithmetic, in 16 bits."""

import fixed_point

ENDING = ".h"
MOST_POLES = 10

# Half a unit of each sum, times what follows, beside an output of some thousands of units.
TOLERANCE = 2e-2


def impulse_responses(files, _names, _samplerate, count):
    return fixed_point.impulse_responses(files, 16, count)
