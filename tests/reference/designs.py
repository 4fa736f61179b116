"""The designs that are measured: as they truly are, as the command `veltane`
publishes them, and as SciPy designs them.
"""

import json
import subprocess
import warnings
from collections import namedtuple

import mpmath
import numpy
import scipy.signal

import closed_form
from textbook import ATTENUATION_DB, RIPPLE_DB

FAMILIES = closed_form.FAMILIES
RESPONSES = closed_form.RESPONSES
ORDERS = (2, 3, 4, 5, 6, 8, 10, 12, 16, 24, 32, 50, 64, 100, 128, 200)
# One cutoff, and two, as fractions of the Nyquist frequency: from the bottom of
# the scale to its top.
SETTINGS = {
    "low": ((0.001,), (0.001, 0.002)),
    "narrow": ((0.01,), (0.30, 0.32)),
    "middle": ((0.1,), (0.05, 0.15)),
    "half": ((0.5,), (0.25, 0.75)),
    "wide": ((0.7,), (0.1, 0.8)),
    "high": ((0.95,), (0.9, 0.99)),
}
# Roots in so many digits that their expansion, which cancels up to 2^400, is
# still exact to more digits than a double has.
DIGITS = 150

Design = namedtuple("Design", "family response order cutoffs")


def is_band(response):
    return response in ("bandpass", "bandstop")


def all_designs(orders, families=FAMILIES, responses=RESPONSES):
    """(setting, design) for everything that is measured."""
    for family in families:
        for response in responses:
            for order in orders:
                for setting, cutoffs in SETTINGS.items():
                    yield setting, Design(family, response, order, cutoffs[is_band(response)])


def sample_designs():
    """(setting, design) for a fifth of the designs of some orders.

    Five has no divisor in common with the number of settings or of these orders, so that
    every family and response meets every setting and every order.
    """
    return list(all_designs((2, 3, 5, 8, 16, 32, 64)))[::5]


def true_roots(design):
    """Zeros, poles and gain, as mpmath's numbers."""
    return closed_form.design(
        design.family, design.response, design.order, *design.cutoffs, ripple_db=RIPPLE_DB,
        attenuation_db=ATTENUATION_DB, digits=DIGITS)


def expanded(roots):
    """The monic polynomial with these roots, complex ones in pairs, as doubles.

    In integers that stand for binary fractions. No root is outside the unit
    circle, so each factor at most doubles an error for each of its roots.
    """
    bits = len(roots) + 200
    coefficients = numpy.array([1 << bits] + [0] * len(roots), object)
    with mpmath.workdps(DIGITS):
        factors = [(-2 * r.real, r.real**2 + r.imag**2) if r.imag else (-r.real,)
                   for r in roots if r.imag >= 0]
        for factor in factors:
            before = coefficients.copy()
            for shift, value in enumerate(factor, 1):
                coefficients[shift:] += before[:-shift] * int(mpmath.ldexp(value, bits)) >> bits
    return numpy.array([c / (1 << bits) for c in coefficients])


def command(veltane, design):
    return [veltane, "design", "--topology", design.family, "--response", design.response,
            "--order", str(design.order), "--units", "normalized",
            "--frequency", *map(str, design.cutoffs), "--passband-ripple", str(RIPPLE_DB),
            "--stopband-attenuation", str(ATTENUATION_DB), "--tf-output", "on",
            "--format", "json"]


Published = namedtuple("Published", "zeros poles gain sections numerator denominator")


def published(veltane, design):
    """What the command prints: roots as complex arrays, sections as rows of five."""
    run = subprocess.run(command(veltane, design), capture_output=True, text=True, check=True)
    dictionary = {
        key: numpy.array(numpy.nan if value is None else value, float)
        for key, value in json.loads(run.stdout)["dictionary"].items()
        if not isinstance(value, str)
    }
    return Published(
        zeros=dictionary["zeroes"].view(complex), poles=dictionary["poles"].view(complex),
        gain=float(dictionary["gain"]), sections=dictionary["cascade"].reshape(-1, 5),
        numerator=dictionary["numerator"], denominator=dictionary["denominator"])


def scipy_design(design, output):
    """The same filter by SciPy, or None where it gives up."""
    edges = design.cutoffs if is_band(design.response) else design.cutoffs[0]
    ripple = {"butterworth": (), "chebyshev-1": (RIPPLE_DB,), "chebyshev-2": (ATTENUATION_DB,)}
    function = {"butterworth": scipy.signal.butter, "chebyshev-1": scipy.signal.cheby1,
                "chebyshev-2": scipy.signal.cheby2}[design.family]
    with warnings.catch_warnings(), numpy.errstate(all="ignore"):
        warnings.simplefilter("ignore")
        try:
            return function(design.order, *ripple[design.family], edges, design.response,
                            output=output)
        except (ValueError, ArithmeticError, IndexError):
            return None
