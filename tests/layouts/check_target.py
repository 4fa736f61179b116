#!/usr/bin/python3
"""Exports filters for one target, runs them in its own program on an impulse, and
compares what comes out with the response of the closed-form roots.

  check_target.py --veltane PROGRAM NAME

targets/NAME.py says how: the ENDING of the target's files; TOLERANCE, how far a sample may be from
the expected one, as a fraction of the largest; and impulse_responses, which takes files, their
names for the filter, a sample rate and a count, and returns the responses in the same order. A
target that does not take every filter has MOST_POLES, one that does not take sections has
SECTIONS = False.
"""

import argparse
import importlib.util
import math
import pathlib
import subprocess
import sys
import tempfile

import expected
import programs

SAMPLERATE = 44100
COUNT = 600
RIPPLE, ATTENUATION = 0.5, 60

# family, response, order, cutoffs in Hz, further options. All zeros lie on the unit circle,
# so that b0 = b2 in each section of second order: only the one of first order, which an
# odd order has, tells the two apart.
CASES = [
    ("butterworth", "lowpass", 4, (2000,), ()),
    ("chebyshev-2", "highpass", 5, (6000,), ()),
    ("chebyshev-1", "bandpass", 3, (1500, 5000), ("--as-published",)),
    ("chebyshev-1", "lowpass", 6, (5000,), ("--normalise",)),
    ("butterworth", "bandstop", 4, (3000, 9000), ("--normalise", "--as-published", "--spread-gain")),
    ("chebyshev-2", "lowpass", 31, (7000,), ()),
]


def program_of(name):
    """The module of targets/NAME.py. The folder is not a place to import from: some targets are
    called like modules of Python."""
    found = importlib.util.spec_from_file_location(
        f"target_{name}", programs.TARGETS / f"{name}.py")
    module = importlib.util.module_from_spec(found)
    found.loader.exec_module(module)
    return module


def export(veltane, name, program, case, file):
    """Writes the file. Returns false when this target has no room for the filter."""
    family, response, order, cutoffs, options = case
    if order * len(cutoffs) > getattr(program, "MOST_POLES", math.inf):
        return False
    if not getattr(program, "SECTIONS", True):
        options = [option for option in options if option == "--normalise"]
    subprocess.run(
        [veltane, "export", "--for", name.replace("_", "-"), "--topology", family, "--response",
         response, "--order", str(order), "--frequency", *map(str, cutoffs), "--samplerate",
         str(SAMPLERATE), "--passband-ripple", str(RIPPLE), "--stopband-attenuation",
         str(ATTENUATION), *options, "-o", str(file)], check=True)
    return True


def main():
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("--veltane", required=True, help="the built command")
    parser.add_argument("name", help="the target's, with underscores")
    arguments = parser.parse_args()
    program = program_of(arguments.name)

    failures = 0
    with tempfile.TemporaryDirectory() as folder:
        cases, files, names = [], [], []
        for number, case in enumerate(CASES):
            file = pathlib.Path(folder) / f"case-{number}{program.ENDING}"
            if export(arguments.veltane, arguments.name, program, case, file):
                cases.append(case)
                files.append(file)
                names.append(f"veltane_case_{number}")
        try:
            responses = program.impulse_responses(files, names, SAMPLERATE, COUNT)
        except programs.Missing as missing:
            print(missing)
            return 1
        for case, got in zip(cases, responses, strict=True):
            family, response, order, cutoffs, _options = case
            wanted = expected.impulse_response(COUNT, family, response, order, cutoffs, SAMPLERATE,
                                               ripple_db=RIPPLE, attenuation_db=ATTENUATION)
            largest = max(abs(value) for value in wanted)
            worst = max(abs(a - b) for a, b in zip(got, wanted, strict=True)) / largest
            fine = worst <= program.TOLERANCE
            failures += not fine
            print(f"{'good' if fine else 'WRONG'}: {family} {response} of order {order}: "
                  f"off by {worst:.1e} of the largest sample, {program.TOLERANCE:.0e} allowed")
    print(f"{arguments.name}: {len(cases)} filters, {failures} wrong")
    return 1 if failures or len(cases) < 5 else 0


if __name__ == "__main__":
    sys.exit(main())
