"""Compiles the header with the difference equation that the library documents."""

from programs import FLOATS, compiled, one_by_one

ENDING = ".h"
TOLERANCE = FLOATS


@one_by_one
def impulse_responses(file, name, _samplerate, count):
    return compiled("cc", "-std=c99", "cmsis_impulse.c", file, count,
                    COEFFICIENTS=f"{name}_coefficients", STAGES=f"{name.upper()}_STAGES")
