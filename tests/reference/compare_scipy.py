#!/usr/bin/env python3
"""Compares the reference data with the filters scipy.signal designs.

Prints the worst differences by family and response, and exits 1 if a filter
differs by more than doubles explain.
"""

import argparse
import json
import sys
from pathlib import Path

import numpy as np
from scipy import optimize, signal

# A design in doubles takes some ten operations per root, each off by 1.1e-16 at
# most in relation to its result, and roots have modulus 1 at most: 1e-15, and
# ten times that for what cancels in the quadratic equation of a band.
ROOT_TOLERANCE = 1e-14
# A root that is double in exact arithmetic hangs on the square root of a zero
# that doubles miss by some 1e-15: 3e-8, and three times that for safety.
DOUBLE_ROOT_TOLERANCE = 1e-7
# A bandpass filter's gain goes with its width to the power of the order. The
# narrow width is the difference of edges 14 times as large, which magnifies
# their 1e-15 as much, and order 12 multiplies it by 12: 2e-13, and five times
# that for safety.
GAIN_TOLERANCE = 1e-12
TOLERANCES = np.array([ROOT_TOLERANCE, ROOT_TOLERANCE, DOUBLE_ROOT_TOLERANCE, GAIN_TOLERANCE])


def scipy_design(record):
    """The same filter by scipy.signal, as (zeros, poles, gain)."""
    order, cutoffs = record["order"], record["cutoffs"]
    edges = cutoffs if len(cutoffs) > 1 else cutoffs[0]
    if record["family"] == "butterworth":
        return signal.butter(order, edges, record["response"], output="zpk")
    if record["family"] == "chebyshev-1":
        return signal.cheby1(order, record["ripple"], edges, record["response"], output="zpk")
    return signal.cheby2(order, record["attenuation"], edges, record["response"], output="zpk")


def as_complex(pairs):
    return np.array([complex(re, im) for re, im in pairs])


def matched_distances(reference, roots):
    """Distance from every reference root to its partner, in the cheapest pairing.

    A pairing, not the nearest neighbour of each: two reference roots must not
    both be explained by the same one.
    """
    distances = np.abs(reference[:, None] - roots[None, :])
    rows, columns = optimize.linear_sum_assignment(distances)
    return distances[rows, columns]


def is_repeated(roots):
    return np.array([np.count_nonzero(roots == root) > 1 for root in roots])


def differences(record):
    """The worst of (zeros, simple poles, double poles, relative gain)."""
    zeros, poles, gain = scipy_design(record)
    reference_zeros, reference_poles = as_complex(record["zeros"]), as_complex(record["poles"])
    if (len(zeros), len(poles)) != (len(reference_zeros), len(reference_poles)):
        return np.full(len(TOLERANCES), np.inf)
    pole_distances = matched_distances(reference_poles, poles)
    double = is_repeated(reference_poles)
    return np.array(
        [
            matched_distances(reference_zeros, zeros).max(),
            pole_distances[~double].max(initial=0),
            pole_distances[double].max(initial=0),
            abs(gain / record["gain"] - 1),
        ]
    )


def main():
    parser = argparse.ArgumentParser(description=__doc__.split("\n", 1)[0])
    parser.add_argument(
        "file",
        nargs="?",
        type=Path,
        default=Path(__file__).with_name("reference.json"),
        help="the reference data (default: reference.json beside this script)",
    )
    records = json.loads(parser.parse_args().file.read_text(encoding="utf-8"))["records"]

    worst, beyond = {}, []
    for record in records:
        found = differences(record)
        key = record["family"], record["response"]
        worst[key] = np.maximum(worst.get(key, 0), found)
        if not (found <= TOLERANCES).all():
            beyond.append("{setting} {family} {response} of order {order}".format(**record))

    row = "{:<12} {:<9} {:>9} {:>9} {:>12} {:>9}"
    print(row.format("family", "response", "zeros", "poles", "double poles", "gain"))
    for key, values in worst.items():
        print(row.format(*key, *(f"{value:.1e}" for value in values)))
    print(row.format("tolerance", "", *(f"{value:.1e}" for value in TOLERANCES)))
    print(f"{len(records)} filters compared, {len(beyond)} beyond tolerance")
    return "\n".join(f"beyond tolerance: {name}" for name in beyond) or (
        None if records else "no filter to compare"
    )


if __name__ == "__main__":
    sys.exit(main())
