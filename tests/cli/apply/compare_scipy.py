#!/usr/bin/python3
"""Holds `veltane apply` against SciPy: sosfilt, and sosfiltfilt with its usual edges.

SciPy runs the published sections in their published order; both are the same filter, and the
outputs agree as far as doubles allow.
"""

import argparse
import json
import subprocess
import sys
import tempfile
from pathlib import Path

import numpy
from scipy import signal

RATE = 500
FRAMES = 3000
CHANNELS = 3

# Of the peak of the output.
TOLERANCE = 1e-9

FILTERS = (
    "--topology butterworth --order 4 --frequency 40",
    "--topology butterworth --order 5 --frequency 40",
    "--topology chebyshev-1 --response bandpass --order 5 --frequency 10 60",
    "--topology chebyshev-2 --response bandstop --order 7 --frequency 40 60",
    "--topology chebyshev-2 --order 12 --frequency 100",
    "--topology butterworth --response highpass --order 3 --frequency 1",
)


def published_sections(veltane, words):
    text = subprocess.run([veltane, "design", "--format", "json", *words], check=True,
                          capture_output=True, text=True).stdout
    rows = numpy.array(json.loads(text)["dictionary"]["cascade"]).reshape(-1, 5)
    return numpy.column_stack([rows[:, :3], numpy.ones(len(rows)), rows[:, 3:]])


def applied(veltane, words, file):
    run = subprocess.run([veltane, "apply", str(file), "--column", "all", *words], check=True,
                         capture_output=True, text=True)
    if run.stderr:
        raise RuntimeError(run.stderr)
    return numpy.loadtxt(run.stdout.splitlines(), delimiter=",")


def main():
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("--veltane", required=True, help="the built command")
    veltane = parser.parse_args().veltane
    # A drift under noise: edges that do not lie at zero.
    generator = numpy.random.default_rng(1)
    x = generator.standard_normal((FRAMES, CHANNELS)) + numpy.linspace(3, 5, FRAMES)[:, None]
    wrong = 0
    with tempfile.TemporaryDirectory() as folder:
        file = Path(folder) / "signal.csv"
        numpy.savetxt(file, x, delimiter=",", fmt="%.17g")
        for settings in FILTERS:
            words = [*settings.split(), "--samplerate", str(RATE)]
            sos = published_sections(veltane, words)
            for name, option, reference in (
                    ("sosfilt", [], signal.sosfilt(sos, x, axis=0)),
                    ("sosfiltfilt", ["--zero-phase"], signal.sosfiltfilt(sos, x, axis=0))):
                found = applied(veltane, [*words, *option], file)
                error = numpy.abs(found - reference).max() / numpy.abs(reference).max()
                print(f"{name} {settings}: {error:.2g} of the peak")
                wrong += not error <= TOLERANCE
    print(f"{2 * len(FILTERS)} outputs, {wrong} wrong")
    return 1 if wrong else 0


if __name__ == "__main__":
    sys.exit(main())
