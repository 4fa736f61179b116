"""Compiles the header as strictly as a C++ compiler can be told to, and filters in doubles."""

from programs import DOUBLES, Header, impulse, one_by_one

ENDING = ".hpp"
TOLERANCE = DOUBLES


@one_by_one
def impulse_responses(file, name, _samplerate, count):
    return Header(file, name, "double").filter(impulse(count))
