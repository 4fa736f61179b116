"""Compiles the header as strictly as a C compiler can be told to, and filters in doubles."""

from programs import DOUBLES, compiled, one_by_one

ENDING = ".h"
TOLERANCE = DOUBLES


@one_by_one
def impulse_responses(file, name, _samplerate, count):
    return compiled("cc", "-std=c99", "c_impulse.c", file, count, NAME=name, TYPE="double")
