#!/usr/bin/python3
"""Writes the designs that the benchmarks time, so that all of them time the same.

Frequencies are fractions of the Nyquist frequency. Each design has two places
where its level is looked at: one inside the passband, and its lower cutoff.
"""

import argparse
import json
import sys

FAMILIES = ("butterworth", "chebyshev-1", "chebyshev-2")
ORDERS = (2, 5, 8, 16, 32, 64, 128, 200)
QUICK_ORDERS = (2, 16)

CUTOFF = 0.25
BAND = (0.25, 0.5)
RESPONSES = {
    "lowpass": {"cutoffs": [CUTOFF], "levels_at": [CUTOFF / 2, CUTOFF]},
    "highpass": {"cutoffs": [CUTOFF], "levels_at": [(1 + CUTOFF) / 2, CUTOFF]},
    "bandpass": {"cutoffs": BAND, "levels_at": [0.3, BAND[0]]},
    "bandstop": {"cutoffs": BAND, "levels_at": [BAND[0] / 2, BAND[0]]},
}

# What a new box designs, with its own cutoff.
DEFAULT = {
    "name": "default",
    "family": "chebyshev-2",
    "response": "lowpass",
    "order": 5,
    "cutoffs": [0.125],
    "levels_at": [0.0625, 0.125],
}


def designs(quick):
    grid = [
        {"name": f"{family}/{response}/{order}", "family": family, "response": response,
         "order": order, **places}
        for family in FAMILIES
        for response, places in RESPONSES.items()
        for order in (QUICK_ORDERS if quick else ORDERS)
    ]
    return {
        "passband_ripple": 0.5,
        "stopband_attenuation": 96.0,
        "changes_in_burst": 1000 if quick else 1000000,
        "designs": [DEFAULT, *grid],
    }


def main():
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("--quick", action="store_true", help="few orders, a short burst")
    json.dump(designs(parser.parse_args().quick), sys.stdout, indent=1)


if __name__ == "__main__":
    main()
