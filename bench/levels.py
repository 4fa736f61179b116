"""The magnitudes that the textbook gives, to see whether a timed filter is the right one."""

import math

TOLERANCE = 0.1  # dB


def analog(frequency):
    """The analog frequency that the bilinear transform makes of a fraction of Nyquist."""
    return math.tan(math.pi / 2 * frequency)


def prototype_frequency(response, cutoffs, frequency):
    """Where a frequency lies for the lowpass prototype, whose own cutoff is 1."""
    at, first, last = analog(frequency), analog(cutoffs[0]), analog(cutoffs[-1])
    if response == "lowpass":
        return at / first
    if response == "highpass":
        return first / at
    in_band = abs(at * at - first * last) / (at * (last - first))
    return in_band if response == "bandpass" else 1 / in_band


def chebyshev(order, x):
    """The Chebyshev polynomial of the first kind."""
    return math.cos(order * math.acos(x)) if x <= 1 else math.cosh(order * math.acosh(x))


def level(design, ripple, attenuation, frequency):
    """The magnitude of a design in dB, for frequencies that are not in its stopband."""
    order = design["order"]
    x = prototype_frequency(design["response"], design["cutoffs"], frequency)
    if design["family"] == "butterworth":
        return -10 * math.log10(1 + x ** (2 * order))
    if design["family"] == "chebyshev-1":
        factor, polynomial = 10 ** (ripple / 10) - 1, chebyshev(order, x)
    else:
        factor, polynomial = 10 ** (attenuation / 10) - 1, 1 / chebyshev(order, 1 / x)
    squared = factor * polynomial * polynomial
    return -10 * math.log10(1 + squared)


def is_right(design, ripple, attenuation, found):
    """Whether levels found at the design's two places are those of the textbook."""
    return all(abs(value - level(design, ripple, attenuation, frequency)) <= TOLERANCE
               for value, frequency in zip(found, design["levels_at"]))
