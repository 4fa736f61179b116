#!/usr/bin/python3
"""Measures published filters, and SciPy's, against the closed form.

Each design is run through the command `veltane`, so what is measured is what
the module publishes. Prints a table, the worst of all cutoffs for each family,
response and order; what is missing, or is not a number, counts as infinite:

  poles     largest distance from the true pole; a true double pole, which no
            double can hold apart, is compared by the mean of the two
  zeros     the same for zeros
  den       largest error of a denominator coefficient, over the largest one
  num       the same for the numerator; of butterworth and chebyshev-1 it is the
            shape that counts, the numerator over its first coefficient
  scale     relative error of the numerator's first coefficient
  gain      relative error of the gain
  sections  largest error of the sections' response in dB, where the true one is
            less than 120 dB below its peak
  whole     the same as sections, but over the whole axis; near zeros it counts
            relative to the level of the stopband
  scipy     SciPy's poles, gain, denominator and sections for the same designs

With --check it exits 1 when a design leaves the limits, and says which.
"""

import argparse
import json
import os
import sys
import time
from concurrent.futures import ProcessPoolExecutor
from functools import partial
from itertools import groupby

from designs import FAMILIES, ORDERS, RESPONSES, Design, all_designs, sample_designs
from measures import SMALLEST_GAIN, measure

COLUMNS = ("poles", "zeros", "den", "num", "scale", "gain", "sections", "whole")
SCIPY_COLUMNS = ("poles", "gain", "den", "sections")

POLE_LIMIT = 1e-12
CHEBYSHEV_2_ZERO_LIMIT = 1e-9
PLACED_ZERO_LIMIT = 2.3e-16 * 2  # one unit in the last place of each part
POLYNOMIAL_LIMIT = 1e-9
POLYNOMIAL_ORDERS = 64
LEVEL_LIMIT_DB = 1e-6
# At the lowest cutoffs and highest orders no doubles are that near. Then the limit
# is this many times what is left when the true filter's coefficients are rounded.
TIMES_ROUNDED = 4


def limits(design, found):
    """What of a design is limited, and by how much."""
    zeros = CHEBYSHEV_2_ZERO_LIMIT if design.family == "chebyshev-2" else PLACED_ZERO_LIMIT
    limited = {"poles": POLE_LIMIT, "zeros": zeros}
    if design.order <= POLYNOMIAL_ORDERS:
        limited |= {"den": POLYNOMIAL_LIMIT, "num": POLYNOMIAL_LIMIT}
    if found["true gain"] > SMALLEST_GAIN:
        rounded = found["rounded"]["whole"] if "rounded" in found else 0.0
        limited["whole"] = max(LEVEL_LIMIT_DB, TIMES_ROUNDED * rounded)
    return limited


def complaints(design, found):
    """What leaves its limits, a text each."""
    name = f"{design.family} {design.response} {design.order} {design.cutoffs}"
    wrong = [f"{name}: {fault}" for fault in found["faults"]]
    wrong += [f"{name}: {what} {found[what]:.1e} is above {limit:.1e}"
              for what, limit in limits(design, found).items() if not found[what] <= limit]
    if found["true gain"] <= SMALLEST_GAIN and not 0 <= found["published gain"] <= SMALLEST_GAIN:
        wrong.append(f"{name}: the gain {found['published gain']} is too small to be a double, "
                     "and yet it is published as one")
    return wrong


def measured(arguments):
    """Yields (setting, design, errors) in the order of the designs."""
    named = sample_designs() if arguments.sample else list(
        all_designs(arguments.orders, arguments.families, arguments.responses))
    one = partial(measure, arguments.veltane, arguments.quick)
    with ProcessPoolExecutor(arguments.jobs) as pool:
        found = pool.map(one, [design for _, design in named], chunksize=4)
        for (setting, design), errors in zip(named, found):
            yield setting, design, errors


def heading(quick):
    columns = [f"{c:>10}" for c in COLUMNS]
    columns += [] if quick else [f"{'scipy ' + c:>15}" for c in SCIPY_COLUMNS]
    return f"{'family':12}{'response':9}{'order':>5}" + "".join(columns)


def table_row(design, rows, quick):
    worst = [f"{max(row[c] for row in rows):10.1e}" for c in COLUMNS]
    worst += [] if quick else [f"{max(row['scipy'][c] for row in rows):15.1e}"
                               for c in SCIPY_COLUMNS]
    return f"{design.family:12}{design.response:9}{design.order:5}" + "".join(worst)


def store(path, results, minutes):
    with open(path, "w", encoding="utf-8") as file:
        json.dump({"minutes": minutes, "results": results}, file, indent=0)


def load(path):
    """What store() wrote: the results, as (setting, design, errors), and the minutes taken."""
    with open(path, encoding="utf-8") as file:
        stored = json.load(file)
    return [(setting, Design(*fields[:3], tuple(fields[3])), errors)
            for setting, fields, errors in stored["results"]], stored["minutes"]


def order_list(text):
    orders = [int(word) for word in text.split(",")]
    if not all(2 <= order <= 200 for order in orders):
        raise argparse.ArgumentTypeError(f"{text} has an order that is not within 2 to 200")
    return orders


def listed(choices):
    def parse(text):
        words = text.split(",")
        if not set(words) <= set(choices):
            raise argparse.ArgumentTypeError(f"{text} is not a list of {', '.join(choices)}")
        return words
    return parse


def main():
    parser = argparse.ArgumentParser(
        description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("veltane", help="the command to measure")
    parser.add_argument("--orders", type=order_list, default=ORDERS,
                        help="orders, separated by commas")
    parser.add_argument("--families", type=listed(FAMILIES), default=FAMILIES)
    parser.add_argument("--responses", type=listed(RESPONSES), default=RESPONSES)
    parser.add_argument("--sample", action="store_true",
                        help="measure a fixed sample, in which every family and response meets "
                             "every setting and seven orders, and no other designs")
    parser.add_argument("--jobs", type=int, default=os.cpu_count(), help="processes to use")
    parser.add_argument("--quick", action="store_true",
                        help="leave out SciPy, and what no limit is set to")
    parser.add_argument("--output", help="write everything measured to this file, as JSON")
    parser.add_argument("--check", action="store_true", help="exit 1 beyond the limits")
    arguments = parser.parse_args()

    began = time.monotonic()
    print(heading(arguments.quick))
    results = []
    for _, group in groupby(measured(arguments), key=lambda result: result[1][:3]):
        group = list(group)
        results += group
        print(table_row(group[0][1], [errors for _, _, errors in group], arguments.quick),
              flush=True)
    problems = [text for _, design, errors in results for text in complaints(design, errors)]
    for problem in problems:
        print(problem)
    print(f"{len(results)} designs measured, {len(problems)} times beyond the limits")
    if arguments.output:
        store(arguments.output, results, (time.monotonic() - began) / 60)
    return 1 if arguments.check and (problems or not results) else 0


if __name__ == "__main__":
    sys.exit(main())
