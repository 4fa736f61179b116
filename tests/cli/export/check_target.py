#!/usr/bin/python3
"""Exports filters for one target, runs them in its own program on an impulse, and
compares what comes out with the response of the closed-form roots.

  check_target.py --veltane PROGRAM TARGET
"""

import argparse
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
    ("chebyshev-1", "bandpass", 3, (1500, 5000), ("--spread-gain",)),
    ("chebyshev-1", "lowpass", 6, (5000,), ("--normalise",)),
    ("butterworth", "bandstop", 4, (3000, 9000), ("--normalise", "--spread-gain")),
    ("chebyshev-2", "lowpass", 31, (7000,), ("--spread-gain",)),
]


def exported(veltane, target, case, file):
    """Writes the file. Returns false when this target has no room for the filter."""
    family, response, order, cutoffs, options = case
    if target == "webaudio":
        if order > 19:
            return False
        options = [option for option in options if option != "--spread-gain"]
    subprocess.run(
        [veltane, "export", "--for", target, "--topology", family, "--response", response,
         "--order", str(order), "--frequency", *map(str, cutoffs), "--samplerate",
         str(SAMPLERATE), "--passband-ripple", str(RIPPLE), "--stopband-attenuation",
         str(ATTENUATION), *options, "-o", str(file)], check=True)
    return True


def main():
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("--veltane", required=True, help="the built command")
    parser.add_argument("target", choices=programs.TARGETS)
    arguments = parser.parse_args()
    ending, function, tolerance = programs.TARGETS[arguments.target]

    failures = 0
    with tempfile.TemporaryDirectory() as folder:
        cases, files, names = [], [], []
        for number, case in enumerate(CASES):
            file = pathlib.Path(folder) / f"case-{number}{ending}"
            if exported(arguments.veltane, arguments.target, case, file):
                cases.append(case)
                files.append(file)
                names.append(f"veltane_case_{number}")
        try:
            responses = function(files, names, SAMPLERATE, COUNT)
        except programs.Missing as missing:
            print(missing)
            return 1
        for case, got in zip(cases, responses, strict=True):
            family, response, order, cutoffs, _options = case
            wanted = expected.impulse_response(family, response, order, cutoffs, SAMPLERATE,
                                               RIPPLE, ATTENUATION, COUNT)
            largest = max(abs(value) for value in wanted)
            worst = max(abs(a - b) for a, b in zip(got, wanted, strict=True)) / largest
            fine = worst <= tolerance
            failures += not fine
            print(f"{'good' if fine else 'WRONG'}: {family} {response} of order {order}: "
                  f"off by {worst:.1e} of the largest sample, {tolerance:.0e} allowed")
    print(f"{arguments.target}: {len(cases)} filters, {failures} wrong")
    return 1 if failures or len(cases) < 5 else 0


if __name__ == "__main__":
    sys.exit(main())
