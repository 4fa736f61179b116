#!/usr/bin/env python3
"""Writes the zeros, poles and gains that filter designs are measured against.

The numbers come from closed_form.py in 50 digits and are written with 20, three
more than a double needs, so that reading the file costs no accuracy. One record
stands on each line, which keeps differences between two versions readable.
"""

import argparse
import sys
from decimal import Decimal
from itertools import product, zip_longest
from json import dumps
from pathlib import Path

from mpmath import nstr

from closed_form import FAMILIES, RESPONSES, design

COMMAND = "/usr/bin/python3 tests/reference/make_reference.py"
DEFAULT_FILE = Path(__file__).with_name("reference.json")
ORDERS = (2, 3, 4, 5, 8, 12)
# Half-band filters have roots exactly on the imaginary axis, and narrow ones
# crowd theirs together: both are where a design in doubles goes wrong first.
SETTINGS = {
    "narrow": {"edge": [0.01], "band": [0.30, 0.32]},
    "wide": {"edge": [0.7], "band": [0.1, 0.8]},
    "half-band": {"edge": [0.5], "band": [0.25, 0.75]},
}
RIPPLE_DB = 0.5
ATTENUATION_DB = 60.0
WRITTEN_DIGITS = 20


def written(x):
    return nstr(x, WRITTEN_DIGITS)


def written_roots(roots):
    """Roots as JSON, by ascending real part, then imaginary part, as written.

    Sorting what is written, not what was computed, lets no digit beyond the
    last written one decide about the order of roots with the same real part.
    """
    pairs = sorted(
        ((written(r.real), written(r.imag)) for r in roots),
        key=lambda pair: (Decimal(pair[0]), Decimal(pair[1])),
    )
    return "[" + ", ".join(f"[{re}, {im}]" for re, im in pairs) + "]"


def record(family, response, order, setting):
    """One filter as a line of JSON.

    Cutoffs are written as the shortest decimals that read back as the doubles
    designed with; 0.3 stands for the double nearest to it.
    """
    kind = "band" if response in ("bandpass", "bandstop") else "edge"
    cutoffs = SETTINGS[setting][kind]
    zeros, poles, gain = design(
        family, response, order, *cutoffs, ripple_db=RIPPLE_DB, attenuation_db=ATTENUATION_DB
    )
    inputs = dumps(
        {
            "family": family,
            "response": response,
            "order": order,
            "setting": setting,
            "cutoffs": cutoffs,
            "ripple": RIPPLE_DB,
            "attenuation": ATTENUATION_DB,
        }
    )
    return (
        f'{inputs[:-1]}, "zeros": {written_roots(zeros)}, '
        f'"poles": {written_roots(poles)}, "gain": {written(gain)}}}'
    )


def reference_lines():
    """Yields (what the line is, the line) for every line of the file."""
    yield "the opening line", "{"
    yield "the command", f'"made_by": {dumps(COMMAND)},'
    yield "the start of the records", '"records": ['
    cases = list(product(FAMILIES, RESPONSES, SETTINGS, ORDERS))
    for family, response, setting, order in cases:
        last = (family, response, setting, order) == cases[-1]
        yield (
            f"the record of the {setting} {family} {response} of order {order}",
            record(family, response, order, setting) + ("" if last else ","),
        )
    yield "the end of the records", "]"
    yield "the closing line", "}"


def first_difference(path):
    """A sentence naming the first line that is not as computed, or None."""
    try:
        text = path.read_text(encoding="utf-8")
    except OSError as error:
        return f"{path} cannot be read: {error.strerror}."
    if not text.endswith("\n"):
        return f"{path} does not end with a line feed."
    found = text[:-1].split("\n")
    for number, (expected, line) in enumerate(zip_longest(reference_lines(), found), start=1):
        if expected is None:
            return f"{path}, line {number}: nothing should follow the closing line."
        name, computed = expected
        if line is None:
            return f"{path}, line {number}: {name} is missing."
        if line != computed:
            return f"{path}, line {number}: {name} is not what is computed."
    return None


def main():
    parser = argparse.ArgumentParser(description=__doc__.split("\n", 1)[0])
    parser.add_argument(
        "-o",
        "--output",
        metavar="FILE",
        type=Path,
        default=DEFAULT_FILE,
        help="the file to write, or to check (default: reference.json beside this script)",
    )
    parser.add_argument(
        "--check",
        action="store_true",
        help="write nothing; compute again and exit 1 if the file holds anything else",
    )
    arguments = parser.parse_args()
    if arguments.check:
        return first_difference(arguments.output)
    text = "".join(line + "\n" for _, line in reference_lines())
    arguments.output.write_text(text, encoding="utf-8")
    return None


if __name__ == "__main__":
    sys.exit(main())
