"""Filters a sound file of doubles with the graph."""

import numpy
import scipy.io.wavfile

from programs import DOUBLES, graph_of, impulse, one_by_one, run

ENDING = ".txt"
TOLERANCE = DOUBLES


@one_by_one
def impulse_responses(file, _name, samplerate, count):
    source, output = file.with_suffix(".in.wav"), file.with_suffix(".out.wav")
    scipy.io.wavfile.write(source, samplerate, impulse(count).astype(numpy.float64))
    run("ffmpeg", "-nostdin", "-y", "-loglevel", "error", "-i", source, "-af", graph_of(file),
        "-c:a", "pcm_f64le", output)
    rate, signal = scipy.io.wavfile.read(output)
    if rate != samplerate:
        raise ValueError(f"it became {rate} Hz")
    return signal
