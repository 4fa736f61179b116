"""Reads the array with Python and filters with SciPy."""

import runpy

import scipy.signal

from programs import DOUBLES, impulse, one_by_one

ENDING = ".py"
TOLERANCE = DOUBLES


@one_by_one
def impulse_responses(file, _name, samplerate, count):
    module = runpy.run_path(str(file))
    if module["samplerate"] != samplerate:
        raise ValueError(f"samplerate is {module['samplerate']}")
    return scipy.signal.sosfilt(module["sos"], impulse(count))
