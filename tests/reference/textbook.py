"""What the textbook says of a filter's magnitude, without its roots.

Sources: Oppenheim & Schafer, Discrete-Time Signal Processing, appendix B
(squared magnitudes); Parks & Burrus, Digital Filter Design, chapter 7, and
Antoniou, Digital Signal Processing, chapter 10 (transformations, inverse-
Chebyshev approximation). Everything is computed in mpmath's current precision.
"""

from mpmath import atan, chebyt, mpf, pi, sqrt, tan

RIPPLE_DB = 0.5
ATTENUATION_DB = 60.0


def from_db(level):
    return mpf(10) ** (mpf(level) / 20)


def edge_level(family):
    """|H| at the cutoffs; 1/sqrt(2) is what -3.0103 dB abbreviates."""
    return {
        "butterworth": 1 / sqrt(2),
        "chebyshev-1": from_db(-RIPPLE_DB),
        "chebyshev-2": from_db(-ATTENUATION_DB),
    }[family]


def passed_level(family, order):
    """H where the prototype's zero frequency ends up."""
    even_ripple = family == "chebyshev-1" and order % 2 == 0
    return from_db(-RIPPLE_DB) if even_ripple else mpf(1)


def stopped_level(family, order):
    """|H| where the prototype's infinite frequency ends up."""
    even_ripple = family == "chebyshev-2" and order % 2 == 0
    return from_db(-ATTENUATION_DB) if even_ripple else mpf(0)


def centre(cutoffs):
    """Frequency whose prewarped value is the geometric mean of the edges'."""
    warped = sqrt(tan(pi * mpf(cutoffs[0]) / 2) * tan(pi * mpf(cutoffs[-1]) / 2))
    return 2 * atan(warped) / pi


def passed_and_stopped(response, cutoffs):
    """Frequencies at which the levels above are due."""
    return {
        "lowpass": ([0], [1]),
        "highpass": ([1], [0]),
        "bandpass": ([centre(cutoffs)], [0, 1]),
        "bandstop": ([0, 1], [centre(cutoffs)]),
    }[response]


def prototype_frequency(response, cutoffs, w):
    """The frequency of the lowpass prototype that w comes from."""
    warped = tan(pi * mpf(w) / 2)
    low, high = (tan(pi * mpf(c) / 2) for c in (cutoffs[0], cutoffs[-1]))
    if response in ("lowpass", "highpass"):
        ratio = warped / low
    else:
        ratio = (warped**2 - low * high) / (warped * (high - low))
    return 1 / ratio if response in ("highpass", "bandstop") else ratio


def square_law(family, order, frequency):
    """|H|^2 of the prototype at the given frequency."""
    if family == "butterworth":
        return 1 / (1 + frequency ** (2 * order))
    if family == "chebyshev-1":
        epsilon_squared = 1 / edge_level(family) ** 2 - 1
        return 1 / (1 + epsilon_squared * chebyt(order, frequency) ** 2)
    epsilon_squared = 1 / (1 / edge_level(family) ** 2 - 1)
    return 1 / (1 + 1 / (epsilon_squared * chebyt(order, 1 / frequency) ** 2))
