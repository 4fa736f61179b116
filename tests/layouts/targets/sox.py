"""Filters a sound file of 32 bits with the effects."""

import numpy
import scipy.io.wavfile

from programs import graph_of, impulse, one_by_one, run

ENDING = ".txt"

# Integers of 32 bits: half of full scale goes in, and of a narrow band some hundredths come out.
TOLERANCE = 1e-7
FULL_SCALE = 2.0 ** 31


@one_by_one
def impulse_responses(file, _name, samplerate, count):
    source, output = file.with_suffix(".in.wav"), file.with_suffix(".out.wav")
    scipy.io.wavfile.write(source, samplerate, (impulse(count) * FULL_SCALE / 2).astype(numpy.int32))
    run("sox", "-D", source, output, *graph_of(file).split())
    rate, signal = scipy.io.wavfile.read(output)
    if rate != samplerate or signal.dtype != numpy.int32:
        raise ValueError(f"it became {signal.dtype} at {rate} Hz")
    return signal / (FULL_SCALE / 2)
