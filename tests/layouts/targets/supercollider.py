"""Filters with the function on the server, not in real time."""

import os
import warnings

import numpy
import scipy.io.wavfile

from programs import FLOATS, impulse, run

ENDING = ".scd"
TOLERANCE = FLOATS


def impulse_responses(files, names, samplerate, count):
    """One run of the language writes a score for each file; the server renders them.

    The server shows its units the first sample twice, once to set them up; so the impulse
    comes after a silence.
    """
    folder = files[0].parent
    silence = 100
    source = folder / "impulse.wav"
    scipy.io.wavfile.write(source, samplerate, numpy.concatenate(
        [numpy.zeros(silence), impulse(count)]).astype(numpy.float32))
    scores = "".join(f"""
      "{file}".load;
      Score([
        [0.0, [\\d_recv, SynthDef(\\filter, {{ |out| Out.ar(out, ~{name}.(SoundIn.ar(0))) }}).asBytes]],
        [0.0, [\\s_new, \\filter, 1000, 0, 0]],
        [{(silence + count + 100) / samplerate}, [\\c_set, 0, 0]]
      ]).writeOSCFile("{file}.osc");""" for file, name in zip(files, names))
    driver = folder / "driver.scd"
    driver.write_text(f"({scores}\n0.exit;\n)\n", encoding="utf-8")
    # The language's window toolkit wants a place of its own, and no sandbox where the
    # user is root; without --no-sandbox it ends at once there.
    environment = {**os.environ, "QT_QPA_PLATFORM": "offscreen", "HOME": str(folder),
                   "XDG_RUNTIME_DIR": str(folder), "QTWEBENGINE_CHROMIUM_FLAGS": "--no-sandbox"}
    said = run("sclang", driver, env=environment)
    if "ERROR" in said:
        raise RuntimeError(said)
    responses = []
    for file in files:
        sound = file.with_suffix(".wav")
        run("scsynth", "-N", f"{file}.osc", source, sound, samplerate, "WAV", "float", "-i", 1,
            "-o", 1, env=environment)
        with warnings.catch_warnings():  # of the chunk that says where the peak is
            warnings.simplefilter("ignore", scipy.io.wavfile.WavFileWarning)
            rate, signal = scipy.io.wavfile.read(sound)
        if rate != samplerate:
            raise ValueError(f"rendered at {rate} Hz")
        responses.append(signal[silence:silence + count].astype(float))
    return responses
