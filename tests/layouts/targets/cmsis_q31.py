"""Compiles the header with a model of the library's arithmetic, in 32 bits."""

import fixed_point

ENDING = ".h"
TOLERANCE = 1e-6


def impulse_responses(files, _names, _samplerate, count):
    return fixed_point.impulse_responses(files, 32, count)
