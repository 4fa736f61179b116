#!/usr/bin/env python3
"""Prints the level of a cascade, in dB, at fractions of the Nyquist frequency.

    veltane design ... --format json | python3 examples/level.py 0 0.5 1
"""

import cmath
import json
import math
import sys


def level(cascade, w):
    """20 log10 |H|, summed in dB, which no order overflows."""
    z = cmath.exp(1j * math.pi * w)
    total = 0.0
    for i in range(0, len(cascade), 5):
        b0, b1, b2, a1, a2 = cascade[i:i + 5]
        numerator = abs((b0 * z + b1) * z + b2)
        if numerator == 0:
            return -math.inf
        total += 20 * math.log10(numerator / abs((z + a1) * z + a2))
    return total


cascade = json.load(sys.stdin)["dictionary"]["cascade"]
for argument in sys.argv[1:]:
    db = round(level(cascade, float(argument)), 3) + 0.0  # + 0.0 takes the sign off a zero
    print(f"{argument}: {db:.3f} dB")
