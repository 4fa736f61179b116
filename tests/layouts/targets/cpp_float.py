"""Compiles the header as strictly as a C++ compiler can be told to, and filters in floats."""

from programs import FLOATS, Header, impulse, one_by_one

ENDING = ".hpp"
TOLERANCE = FLOATS


@one_by_one
def impulse_responses(file, name, _samplerate, count):
    return Header(file, name, "float").filter(impulse(count))
