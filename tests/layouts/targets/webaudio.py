"""Filters with one node, as the Web Audio text defines it, in Node."""

from programs import DOUBLES, TARGETS, one_by_one, run, samples

ENDING = ".mjs"
TOLERANCE = DOUBLES
MOST_POLES = 19  # what one node takes
SECTIONS = False


@one_by_one
def impulse_responses(file, name, _samplerate, count):
    return samples(run("node", TARGETS / "webaudio_impulse.mjs", file, name, count))
