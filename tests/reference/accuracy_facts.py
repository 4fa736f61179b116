"""The figures that stand in the text of docs/accuracy.md, each measured for it."""

import math
import os
import platform
import subprocess

import mpmath
import numpy
import scipy

from accuracy_tables import beyond, safe_order
from designs import FAMILIES, ORDERS, SETTINGS, Design, published, true_roots
from measure_accuracy import POLYNOMIAL_LIMIT, POLYNOMIAL_ORDERS, complaints, limits
from measures import SMALLEST_GAIN, relative
from responses import frequencies


def worst(results, name, **wanted):
    return max(errors[name] for _, design, errors in results
               if math.isfinite(errors[name]) and all(
                   getattr(design, field) in values for field, values in wanted.items()))


def worst_level(results):
    """The largest error of the sections in dB, of filters whose gain is a double."""
    return max(errors["sections"] for _, _, errors in results
               if errors["true gain"] >= SMALLEST_GAIN)


def smallest_highpass_gain(results):
    return min(errors["true gain"] for _, design, errors in results
               if design.response == "highpass")


def scipy_facts(results):
    levels = [errors["scipy"]["sections"] for _, _, errors in results]
    at_200 = [errors["scipy"]["sections"] for _, design, errors in results if design.order == 200]
    return {
        "scipy_none_200": f"{at_200.count(math.inf)} of {len(at_200)}",
        "scipy_worst_level": f"{max(filter(math.isfinite, levels)):.0e}",
    }


def bandpass_shape(results):
    """A sentence or two on the shape of all-pole bandpass numerators."""
    def at(*orders):
        return worst(results, "num", order=orders, response=["bandpass"],
                     family=["butterworth", "chebyshev-1"])

    good = [order for order in ORDERS if at(order) <= POLYNOMIAL_LIMIT]
    last = max(good)
    text = f"Its shape is right to {at(*good):.0e} of the largest coefficient up to order {last}."
    if last == ORDERS[-1]:
        return text
    after = ORDERS[ORDERS.index(last) + 1]
    return (f"{text} At order {after} the error is {at(after):.0e} times the largest coefficient: "
            "the zeros at 1 are multiplied out before those at -1, and what then cancels has more "
            "digits than a double.")


def text_facts(results):
    every = [errors for _, _, errors in results]
    placed = ["butterworth", "chebyshev-1"]
    to_64 = [order for order in ORDERS if order <= POLYNOMIAL_ORDERS]
    rounded = [errors["rounded"]["whole"] for _, design, errors in results
               if "whole" in limits(design, errors)]
    transfer = [safe_order(results, "transfer", family, response, "low")
                for family in FAMILIES for response in ("lowpass", "highpass")]
    return {
        **scipy_facts(results),
        "designs": len(results),
        "orders": ", ".join(map(str, sorted({design.order for _, design, _ in results}))),
        "points": len(frequencies(Design("butterworth", "lowpass", 2, SETTINGS["middle"][0]))),
        "band_points": len(frequencies(Design("butterworth", "bandpass", 2,
                                              SETTINGS["middle"][1]))),
        "transfer_low": f"{min(transfer, key=int)} to {max(transfer, key=int)}",
        "worst_poles": f"{worst(results, 'poles'):.1e}",
        "worst_zeros": f"{worst(results, 'zeros', family=['chebyshev-2']):.1e}",
        "worst_placed": f"{worst(results, 'zeros', family=placed):.1e}",
        "worst_den": f"{worst(results, 'den', order=to_64):.1e}",
        "worst_den_all": f"{worst(results, 'den'):.1e}",
        "worst_level": f"{worst_level(results):.1e}",
        "smallest_gain_checked": f"{smallest_highpass_gain(results):.0e}",
        "rounded_whole": f"{max(rounded):.1e}",
        "bandpass_shape": bandpass_shape(results),
        "unstable": sum(not errors["transfer stable"] for errors in every),
        "unstable_sections": sum(not errors["sections stable"] for errors in every),
        "beyond": beyond([text for _, design, errors in results
                          for text in complaints(design, errors)]),
    }


def bandpass_numerators(veltane):
    """Rows of cutoffs, order, and the numerator's and the gain's share of the truth."""
    warped = math.tan(math.pi / 8)
    rows = []
    for low in (0.2, 0.1):
        # the upper cutoff with which the centre lies at 1/4
        high = 2 / math.pi * math.atan(warped**2 / math.tan(math.pi / 2 * low))
        for order in (2, 3, 4, 6):
            design = Design("butterworth", "bandpass", order, (low, high))
            form, gain = published(veltane, design), float(true_roots(design)[2])
            rows.append([f"{low:g}, {high:.6g}", order, f"{form.numerator[0] / gain + 0.0:.6g}",
                         f"{form.gain / gain:.6g}"])
    return rows


def last_gain(veltane, family, cutoff):
    """The last order whose published gain is not 0, or 200, and the gain there."""
    def gain(order):
        return published(veltane, Design(family, "lowpass", order, (cutoff,))).gain

    low, high = 2, 200
    if gain(high) != 0:
        return high, gain(high)
    while high - low > 1:
        middle = (low + high) // 2
        low, high = (middle, high) if gain(middle) != 0 else (low, middle)
    return low, gain(low)


def underflow_rows(veltane):
    rows = []
    for cutoff in (0.0001, 0.001, 0.01, 0.02, 0.05):
        row = [f"{cutoff:g}"]
        for family in ("butterworth", "chebyshev-1"):
            order, gain = last_gain(veltane, family, cutoff)
            true_gain = true_roots(Design(family, "lowpass", order, (cutoff,)))[2]
            row += [order, f"{gain:.2e}", f"{relative(gain, true_gain):.0e}"]
        rows.append(row)
    return rows


def version(package):
    run = subprocess.run(["dpkg-query", "-W", "-f", "${Version}", package], capture_output=True,
                         text=True, check=True)
    return run.stdout


def compiler(build):
    """What CMake compiled with, from its cache."""
    with open(os.path.join(build, "CMakeCache.txt"), encoding="utf-8") as cache:
        path = next(line.split("=", 1)[1].strip() for line in cache
                    if line.startswith("CMAKE_CXX_COMPILER:"))
    run = subprocess.run([path, "--version"], capture_output=True, text=True, check=True)
    return run.stdout.splitlines()[0]


def versions(build):
    return (f"{compiler(build)}; Eigen {version('libeigen3-dev')}; "
            f"Python {platform.python_version()}, mpmath {mpmath.__version__}, "
            f"NumPy {numpy.__version__}, SciPy {scipy.__version__}; "
            f"gnuplot {version('gnuplot-nox')}; {platform.machine()}")
