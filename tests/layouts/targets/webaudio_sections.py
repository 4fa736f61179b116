"""Filters with the chain of nodes, as the Web Audio text defines them, in Node."""

from programs import DOUBLES, TARGETS, one_by_one, run, samples

ENDING = ".mjs"
TOLERANCE = DOUBLES


@one_by_one
def impulse_responses(file, name, _samplerate, count):
    return samples(run("node", TARGETS / "webaudio_impulse.mjs", file, name, count))
