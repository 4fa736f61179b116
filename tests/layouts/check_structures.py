#!/usr/bin/python3
"""Exports filters for C or C++ in every structure, compiles them, runs signals through them, and
compares what comes out with closed-form roots in 50 digits.

  check_structures.py --veltane PROGRAM {c,c_float,cpp,cpp_float}

In doubles every structure, and in floats the one that is taken by default and state-variable
sections, are within a small part of the output's peak; direct forms in floats, which may be any
way off, within the noise that their comments name.
"""

import argparse
import pathlib
import random
import subprocess
import sys
import tempfile

import numpy

import expected
import programs

FAMILIES = ("butterworth", "chebyshev-1", "chebyshev-2")
RESPONSES = ("lowpass", "highpass", "bandpass", "bandstop")
STRUCTURES = ("direct-2-transposed", "direct-1", "state-variable")
SAMPLERATE = 48000

# family, response, order, cutoffs in Hz
WIDE_BAND = ("butterworth", "bandpass", 8, (20.0, 20000.0))
LOW_CUTOFF = ("butterworth", "lowpass", 4, (30.0,))
SEED, RANDOM_FILTERS = 11, 6

# Of the output's peak: in doubles, and in floats that are run well.
WITHIN = {"double": 1e-9, "float": 1e-4}
# By how many dB noise may be above its prediction, which is for its root of the mean square.
TOO_KIND_DB = 12


def random_filters():
    draw = random.Random(SEED)
    for i in range(RANDOM_FILTERS):
        response = RESPONSES[i % len(RESPONSES)]
        count = 2 if response.startswith("band") else 1
        cutoffs = sorted(round(20 * 1000 ** draw.random(), 2) for _ in range(count))
        yield FAMILIES[i % len(FAMILIES)], response, draw.randint(2, 12), tuple(cutoffs)


def signals(case):
    """Names and samples, each a float's value."""
    count = 12000 if case == LOW_CUTOFF else 4000
    n = numpy.arange(count)
    made = {"impulse": numpy.eye(1, count)[0],
            "white noise": numpy.random.default_rng(5).uniform(-1, 1, count),
            "sine": numpy.sin(2 * numpy.pi * 1000 / SAMPLERATE * n)}
    return {name: samples.astype(numpy.float32).astype(float) for name, samples in made.items()}


class Filters:
    """Exported headers of one target."""

    def __init__(self, veltane, target, folder):
        self.veltane, self.folder = veltane, folder
        self.target = target.replace("_", "-")
        self.number = "float" if target.endswith("float") else "double"
        self.ending = ".hpp" if target.startswith("cpp") else ".h"
        self.count = 0

    def exported(self, case, *options):
        family, response, order, cutoffs = case
        name = f"filter_{self.count}"
        self.count += 1
        file = pathlib.Path(self.folder) / f"{name}{self.ending}"
        subprocess.run(
            [self.veltane, "export", "--for", self.target, "--topology", family, "--response",
             response, "--order", str(order), "--frequency", *map(str, cutoffs), "--samplerate",
             str(SAMPLERATE), "--stopband-attenuation", "60", *options, "-o", str(file)], check=True,
            stderr=subprocess.DEVNULL)
        return programs.Header(file, f"veltane_{name}", self.number)


class Judge:
    def __init__(self, number):
        self.number = number
        self.checked = self.wrong = 0

    def say(self, fine, text):
        self.checked += 1
        self.wrong += not fine
        if not fine:
            print(f"WRONG: {text}")

    def compare(self, name, header, samples, wanted, exact):
        """`exact`: whether the output is right, and not just as noisy as was predicted."""
        error = header.filter(samples) - wanted
        peak = numpy.abs(wanted).max()
        if exact:
            worst = numpy.abs(error).max() / peak
            self.say(worst <= WITHIN[self.number], f"{name}: off by {worst:.1e} of the peak")
        # In doubles the published roots are further from the closed form than that.
        if self.number == "float" and name.endswith("white noise"):
            effective = numpy.sqrt(numpy.mean(wanted ** 2))
            noise = numpy.sqrt(numpy.mean(error ** 2)) / (4 * effective)
            noise_db = 20 * numpy.log10(max(noise, 1e-20))
            self.say(noise_db <= header.noise_db + TOO_KIND_DB,
                     f"{name}: noise of {noise_db:.0f} dB, and {header.noise_db:.0f} predicted")


def check(filters, case, judge, structures):
    wanted = {name: numpy.array(expected.response(samples, *case, SAMPLERATE))
              for name, samples in signals(case).items()}
    for structure in structures:
        options = ("--anyway", "--structure", structure) if structure else ()
        header = filters.exported(case, *options)
        exact = filters.number == "double" or structure in (None, "state-variable")
        for name, samples in signals(case).items():
            judge.compare(f"{case}, {structure or 'default'}, {name}", header, samples, wanted[name],
                          exact)


def check_the_test(filters, judge):
    """What the module publishes is heard to be wrong in floats, or nothing here is."""
    header = filters.exported(WIDE_BAND, "--as-published", "--anyway")
    peak = numpy.abs(header.filter(signals(WIDE_BAND)["sine"])).max()
    judge.say(peak > 100, f"{WIDE_BAND}, as published: a sine peaks at {peak:.3g} only")


def main():
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("--veltane", required=True, help="the built command")
    parser.add_argument("target", choices=("c", "c_float", "cpp", "cpp_float"))
    arguments = parser.parse_args()

    with tempfile.TemporaryDirectory() as folder:
        filters = Filters(arguments.veltane, arguments.target, folder)
        judge = Judge(filters.number)
        for case in (WIDE_BAND, LOW_CUTOFF):
            check(filters, case, judge, (None, *STRUCTURES))
        # C and C++ have the same statements: one of them is enough.
        if filters.ending == ".h":
            for case in random_filters():
                check(filters, case, judge, (None, *STRUCTURES))
        if filters.number == "float":
            check_the_test(filters, judge)
    print(f"{arguments.target}: {filters.count} filters, {judge.checked} comparisons, "
          f"{judge.wrong} wrong")
    return 1 if judge.wrong or judge.checked < 20 else 0


if __name__ == "__main__":
    sys.exit(main())
