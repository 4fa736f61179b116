#!/usr/bin/python3
"""Times SciPy on the same designs, and writes what Google Benchmark would write.

What is timed is what a user calls to hold the forms that a box publishes: zeros,
poles and gain from signal.butter, cheby1 or cheby2, and from those the
second-order sections by signal.zpk2sos. Imports and a first call come before.
"""

import argparse
import json
import sys
import time
import warnings

import numpy
from scipy import signal


def maker(design, ripple, attenuation):
    """A function without arguments that designs one filter."""
    order, response = design["order"], design["response"]
    cutoffs = design["cutoffs"] if len(design["cutoffs"]) > 1 else design["cutoffs"][0]

    def butterworth():
        z, p, k = signal.butter(order, cutoffs, response, output="zpk")
        return z, p, k, signal.zpk2sos(z, p, k)

    def chebyshev_1():
        z, p, k = signal.cheby1(order, ripple, cutoffs, response, output="zpk")
        return z, p, k, signal.zpk2sos(z, p, k)

    def chebyshev_2():
        z, p, k = signal.cheby2(order, attenuation, cutoffs, response, output="zpk")
        return z, p, k, signal.zpk2sos(z, p, k)

    return {"butterworth": butterworth, "chebyshev-1": chebyshev_1,
            "chebyshev-2": chebyshev_2}[design["family"]]


def seconds_of(make, count):
    """CPU time of so many designs."""
    start = time.process_time()
    for _ in range(count):
        make()
    return time.process_time() - start


def measured(make, min_time):
    """How many designs were made, and the CPU seconds of each."""
    count = max(1, round(min_time / max(seconds_of(make, 1), 1e-6)))
    return count, seconds_of(make, count) / count


def level(sos, frequency):
    """The magnitude of a cascade in dB, at a fraction of the Nyquist frequency."""
    z1 = numpy.exp(-1j * numpy.pi * frequency)
    b0, b1, b2, a0, a1, a2 = sos.T
    magnitudes = abs((b0 + z1 * (b1 + z1 * b2)) / (a0 + z1 * (a1 + z1 * a2)))
    return float(20 * numpy.log10(magnitudes).sum())


def main():
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("designs", help="the file that designs.py wrote")
    parser.add_argument("--min-time", type=float, default=0.05, help="of a design, in seconds")
    arguments = parser.parse_args()
    with open(arguments.designs, encoding="utf-8") as file:
        designs = json.load(file)

    warnings.simplefilter("ignore")
    numpy.seterr(all="ignore")  # a level that is not finite is in the results
    runs = []
    for design in designs["designs"]:
        make = maker(design, designs["passband_ripple"], designs["stopband_attenuation"])
        sos = make()[3]
        count, seconds = measured(make, arguments.min_time)
        runs.append({
            "name": design["name"], "iterations": count,
            "cpu_time": 1e6 * seconds, "time_unit": "us",
            "passband_level": level(sos, design["levels_at"][0]),
            "cutoff_level": level(sos, design["levels_at"][1]),
        })
    json.dump({"benchmarks": runs}, sys.stdout, indent=1)


if __name__ == "__main__":
    main()
