#!/usr/bin/python3
"""Measures published filters, and SciPy's, against the closed form in 60 digits.

Each design is run through the command `veltane`, so what is measured is what
the module publishes. Prints a table, the worst of all settings for each family,
response and order:

  poles     largest distance from the true pole; a true double pole, which no
            double can hold apart, is compared by the mean of the two
  zeros     the same for zeros
  den       largest error of a denominator coefficient, over the largest one
  num       the same for the numerator
  gain      relative error of the gain
  level     largest error of the cascade's response in dB, at frequencies down to
            120 dB below its peak
  scipy     poles and gain of SciPy's zpk form, and its den, for the same designs

With --check it exits 1 when poles, zeros or polynomials leave the tolerances.
"""

import argparse
import json
import subprocess
import sys
import warnings

import mpmath
import numpy
import scipy.optimize
import scipy.signal

import closed_form

DIGITS = 60
RIPPLE = 0.5
ATTENUATION = 60.0
FAMILIES = ("butterworth", "chebyshev-1", "chebyshev-2")
RESPONSES = ("lowpass", "highpass", "bandpass", "bandstop")
ORDERS = (2, 3, 5, 8, 12, 16, 24, 32, 50, 64, 100, 128, 200)
# One cutoff, and two: from the bottom of the scale to its top.
SETTINGS = {
    "low": ((0.001,), (0.001, 0.002)),
    "narrow": ((0.01,), (0.30, 0.32)),
    "half": ((0.5,), (0.25, 0.75)),
    "wide": ((0.7,), (0.1, 0.8)),
    "high": ((0.95,), (0.9, 0.99)),
}
COLUMNS = ("poles", "zeros", "den", "num", "gain", "level", "scipy poles", "scipy gain",
           "scipy den")

POLE_TOLERANCE = 1e-12
CHEBYSHEV_2_ZERO_TOLERANCE = 1e-9
PLACED_ZERO_TOLERANCE = 2.3e-16 * 2  # one unit in the last place of each part
POLYNOMIAL_TOLERANCE = 1e-9
POLYNOMIAL_ORDERS = 64


def published(veltane, family, response, order, cutoffs):
    """The dictionary that the module publishes, lists as arrays."""
    run = subprocess.run(
        [veltane, "design", "--topology", family, "--response", response, "--order", str(order),
         "--units", "normalized", "--frequency", *map(str, cutoffs), "--passband-ripple",
         str(RIPPLE), "--stopband-attenuation", str(ATTENUATION), "--tf-output", "on",
         "--format", "json"],
        capture_output=True, text=True, check=True)
    dictionary = json.loads(run.stdout)["dictionary"]
    for key, value in dictionary.items():
        if isinstance(value, list):
            dictionary[key] = numpy.array([numpy.nan if x is None else x for x in value])
    return dictionary


def roots(flat):
    return flat[::2] + 1j * flat[1::2]


def expanded(true_roots):
    """The coefficients of the monic polynomial, in twice the digits."""
    with mpmath.workdps(3 * DIGITS):
        coefficients = [mpmath.mpf(1)]
        for root in true_roots:
            coefficients.append(mpmath.mpf(0))
            for i in range(len(coefficients) - 1, 0, -1):
                coefficients[i] -= root * coefficients[i - 1]
        return numpy.array([complex(c).real for c in coefficients])


def distance(found, true):
    """The largest distance in the best pairing, equal true roots taken together."""
    if len(found) != len(true) or not numpy.all(numpy.isfinite(found)):
        return numpy.inf
    row, column = scipy.optimize.linear_sum_assignment(abs(found[:, None] - true[None, :]))
    partners = numpy.empty_like(found)
    partners[column] = found[row]
    worst = 0.0
    for value in numpy.unique(true):
        same = true == value
        worst = max(worst, abs(partners[same].mean() - value))
    return worst


def relative_to_largest(found, true):
    with numpy.errstate(all="ignore"):
        error = numpy.max(abs(found - true)) / numpy.max(abs(true))
    return error if numpy.isfinite(error) else numpy.inf


@numpy.errstate(divide="ignore")  # a frequency may lie on a zero
def level_error(cascade, zeros, poles, gain):
    """The largest error of the cascade in dB, in extended precision."""
    z = numpy.exp(1j * numpy.pi * numpy.linspace(0.0005, 0.9995, 400).astype(numpy.longdouble))
    ours = numpy.zeros(z.size, numpy.longdouble)
    for b0, b1, b2, a1, a2 in cascade.reshape(-1, 5).astype(numpy.longdouble):
        ours += numpy.log10(abs((b0 * z + b1) * z + b2)) - numpy.log10(abs((z + a1) * z + a2))
    true = numpy.full(z.size, numpy.log10(numpy.longdouble(mpmath.nstr(abs(gain), 25))))
    for zero, pole in zip(zeros, poles):
        true += numpy.log10(abs(z - numpy.clongdouble(complex(zero))))
        true -= numpy.log10(abs(z - numpy.clongdouble(complex(pole))))
    heard = true > true.max() - 6
    return float(numpy.max(abs(20 * (ours - true)[heard])))


def scipy_design(family, response, order, cutoffs, output):
    edges = cutoffs[0] if len(cutoffs) == 1 else cutoffs
    with warnings.catch_warnings(), numpy.errstate(all="ignore"):
        warnings.simplefilter("ignore")
        if family == "butterworth":
            return scipy.signal.butter(order, edges, response, output=output)
        if family == "chebyshev-1":
            return scipy.signal.cheby1(order, RIPPLE, edges, response, output=output)
        return scipy.signal.cheby2(order, ATTENUATION, edges, response, output=output)


def measure(veltane, family, response, order, cutoffs):
    """One value for each column."""
    zeros, poles, gain = closed_form.design(
        family, response, order, *cutoffs, ripple_db=RIPPLE, attenuation_db=ATTENUATION,
        digits=DIGITS)
    dictionary = published(veltane, family, response, order, cutoffs)
    true_zeros = numpy.array([complex(zero) for zero in zeros])
    true_poles = numpy.array([complex(pole) for pole in poles])
    true_den = expanded(poles)
    true_num = float(gain) * expanded(zeros)
    measured = {
        "poles": distance(roots(dictionary["poles"]), true_poles),
        "zeros": distance(roots(dictionary["zeroes"]), true_zeros),
        "den": relative_to_largest(dictionary["denominator"], true_den),
        "num": relative_to_largest(dictionary["numerator"], true_num),
        "gain": abs(dictionary["gain"] / float(gain) - 1),
        "level": level_error(dictionary["cascade"], zeros, poles, gain),
    }
    try:
        _, scipy_poles, scipy_gain = scipy_design(family, response, order, cutoffs, "zpk")
        measured["scipy poles"] = distance(numpy.array(scipy_poles, complex), true_poles)
        measured["scipy gain"] = abs(scipy_gain / float(gain) - 1)
        _, scipy_den = scipy_design(family, response, order, cutoffs, "ba")
        measured["scipy den"] = relative_to_largest(scipy_den, true_den)
    except (ValueError, OverflowError, FloatingPointError):
        for key in ("scipy poles", "scipy gain", "scipy den"):
            measured.setdefault(key, numpy.inf)
    return {key: value if value == value else numpy.inf for key, value in measured.items()}


def complaints(family, response, order, worst):
    """What leaves its tolerance, a text each."""
    placed = family != "chebyshev-2"
    limits = {
        "poles": POLE_TOLERANCE,
        "zeros": PLACED_ZERO_TOLERANCE if placed else CHEBYSHEV_2_ZERO_TOLERANCE,
    }
    if order <= POLYNOMIAL_ORDERS:
        limits["den"] = POLYNOMIAL_TOLERANCE
    return [f"{family} {response} {order}: {key} {worst[key]:.1e} is above {limit:.1e}"
            for key, limit in limits.items() if not worst[key] <= limit]


def main():
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("veltane", help="the command to measure")
    parser.add_argument("--orders", type=lambda text: [int(n) for n in text.split(",")],
                        default=ORDERS, help="orders, separated by commas")
    parser.add_argument("--check", action="store_true", help="exit 1 beyond the tolerances")
    arguments = parser.parse_args()

    print(f"{'family':12}{'response':9}{'order':>5}" + "".join(f"{c:>12}" for c in COLUMNS))
    problems = []
    for family in FAMILIES:
        for response in RESPONSES:
            band = response.startswith("band")
            for order in arguments.orders:
                rows = [measure(arguments.veltane, family, response, order, cutoffs[band])
                        for cutoffs in SETTINGS.values()]
                worst = {key: max(row[key] for row in rows) for key in COLUMNS}
                problems += complaints(family, response, order, worst)
                print(f"{family:12}{response:9}{order:5}"
                      + "".join(f"{worst[key]:12.1e}" for key in COLUMNS), flush=True)
    for problem in problems:
        print(problem)
    return 1 if arguments.check and problems else 0


if __name__ == "__main__":
    sys.exit(main())
