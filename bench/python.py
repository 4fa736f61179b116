#!/usr/bin/python3
"""How long a design takes from Python, in microseconds of processor time a call.

  PYTHONPATH=build/python/python bench/python.py [--rounds N]

Each line is the least of the rounds, in which the calls take turns; other work on the machine only
ever adds. SciPy is asked for zeros, poles and gain, and for sections made of them, which is what a
design has.
"""

import argparse
import time

from scipy import signal

import veltane

CALLS = 500
SETTINGS = {"topology": "butterworth", "order": 5, "frequency": 1000, "fs": 48000}


def scipy_design():
    return signal.zpk2sos(*signal.butter(5, 1000, fs=48000, output="zpk"))


def design_and_sections():
    return veltane.design(**SETTINGS).sos


SUBJECTS = {
    "veltane.design(), no settings": veltane.design,
    "veltane.design(topology, order, frequency, fs)": lambda: veltane.design(**SETTINGS),
    "the same, and its sos": design_and_sections,
    "veltane.butter(output='zpk')": lambda: veltane.butter(5, 1000, fs=48000, output="zpk"),
    "veltane.butter(output='sos')": lambda: veltane.butter(5, 1000, fs=48000, output="sos"),
    "scipy.signal.butter(output='zpk') and zpk2sos": scipy_design,
}


def microseconds(call):
    begin = time.process_time()
    for _ in range(CALLS):
        call()
    return (time.process_time() - begin) / CALLS * 1e6


def main():
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("--rounds", type=int, default=15)
    least = dict.fromkeys(SUBJECTS, float("inf"))
    for _ in range(parser.parse_args().rounds):
        for name, call in SUBJECTS.items():
            least[name] = min(least[name], microseconds(call))
    for name, time_of_one in least.items():
        print(f"{time_of_one:8.2f}  {name}")


if __name__ == "__main__":
    main()
