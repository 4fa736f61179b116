"""Where two lines cross, and how steeply one rises."""

import math


def first_crossing(orders, ratios):
    """Where the ratios first reach 1, on straight lines between logarithms; None if nowhere."""
    if ratios[0] >= 1:
        return orders[0]
    for (n, low), (m, high) in zip(zip(orders, ratios), zip(orders[1:], ratios[1:])):
        if high >= 1:
            part = math.log(1 / low) / math.log(high / low)
            return n * (m / n) ** part
    return None


def exponents(orders, times):
    """Between each order and the next: e, where the time grows as order^e."""
    return [math.log(t2 / t1) / math.log(n2 / n1)
            for n1, n2, t1, t2 in zip(orders, orders[1:], times, times[1:])]
