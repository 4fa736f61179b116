"""Compiles the header as strictly as a C compiler can be told to, and filters in floats."""

from programs import FLOATS, compiled, one_by_one

ENDING = ".h"
TOLERANCE = FLOATS


@one_by_one
def impulse_responses(file, name, _samplerate, count):
    return compiled("cc", "-std=c99", "c_impulse.c", file, count, NAME=name, TYPE="float")
