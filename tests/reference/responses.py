"""Responses: the true one, from the textbook's magnitudes, and that of each form.

A form is evaluated as the exact value of its doubles, in integers that stand for
binary fractions, with as many bits as leave the evaluation out of the account.
"""

import functools
import math

import numpy
from mpmath import mp

import textbook
from designs import is_band

DB_PER_BIT = 20 * math.log10(2)
TRUE_DIGITS = 50


def frequencies(design):
    """Where responses are compared, over the whole axis, as fractions of Nyquist.

    Dense on both sides of each edge, where the prototype's ripples crowd, and
    even over the axis. The ends, 0 and 1, are left out.
    """
    crowded = numpy.cos(numpy.pi / 2 * (numpy.arange(120) + 0.37) / 120)
    x = numpy.concatenate([crowded, 1 / crowded, numpy.logspace(2.2, 3, 5)])
    if design.response in ("highpass", "bandstop"):
        x = 1 / x
    low, high = (math.tan(math.pi / 2 * w) for w in (design.cutoffs[0], design.cutoffs[-1]))
    if is_band(design.response):
        x = numpy.concatenate([x, -x]) * (high - low) / 2
        root = numpy.sqrt(x * x + low * high)
        # the positive solution of warped^2 - 2 x warped = low high, without cancelling
        warped = numpy.where(x > 0, x + root, low * high / (root - x))
    else:
        warped = x * low
    w = numpy.concatenate([2 / numpy.pi * numpy.arctan(warped), (numpy.arange(100) + 0.5) / 100])
    return tuple(numpy.unique(w[(w > 1e-9) & (w < 1 - 1e-9)]))


def true_db(design, at):
    """20 log10 |H| from the textbook's square law."""
    with mp.workdps(TRUE_DIGITS):
        laws = (textbook.square_law(design.family, design.order,
                                    textbook.prototype_frequency(design.response, design.cutoffs, w))
                for w in at)
        return numpy.array([float(10 * mp.log10(law)) if law else -math.inf for law in laws])


@functools.lru_cache(maxsize=8)
def circle(at, bits):
    """exp(j pi w) for each w, as two arrays of integers in units of 2^-bits."""
    with mp.workprec(bits + 20):
        return tuple(numpy.array([int(mp.ldexp(f(w), bits)) for w in at], object)
                     for f in (mp.cospi, mp.sinpi))


def fixed(value, bits):
    """A double in units of 2^-bits."""
    mantissa, exponent = math.frexp(value)
    shift = bits + exponent - 53
    integer = int(math.ldexp(mantissa, 53))
    return integer << shift if shift >= 0 else integer >> -shift


def magnitude_db(re, im, bits):
    squares = re * re + im * im
    return numpy.array([10 * math.log10(s) if s else -math.inf for s in squares]) - bits * DB_PER_BIT


def polynomial_db(coefficients, at):
    """20 log10 |c0 z^n + ... + cn| on the unit circle."""
    largest = numpy.max(numpy.abs(coefficients))
    if not numpy.isfinite(largest):
        return numpy.full(len(at), numpy.nan)
    if largest == 0:
        return numpy.full(len(at), -numpy.inf)
    exponent = math.frexp(largest)[1]
    # Horner's rule loses at most a unit or two a step: what counts are values
    # that stand 60 bits above that. A polynomial that cancels more gets more bits.
    for bits in (256, 512, 1024, 2048, 4096):
        cos, sin = circle(at, bits)
        re, im = numpy.zeros(len(at), object), numpy.zeros(len(at), object)
        for c in coefficients:
            re, im = (re * cos - im * sin >> bits) + fixed(c, bits - exponent), \
                (re * sin + im * cos >> bits)
        level = magnitude_db(re, im, bits)
        if level.min() > (60 - bits) * DB_PER_BIT + 20 * math.log10(4 * len(coefficients)):
            break
    return level + exponent * DB_PER_BIT


def sections_db(sections, at):
    """The cascade's response; a row is b0 b1 b2 a1 a2."""
    level = numpy.zeros(len(at))
    for b0, b1, b2, a1, a2 in sections:
        level += polynomial_db((b0, b1, b2), at) - polynomial_db((1.0, a1, a2), at)
    return level


def roots_db(zeros, poles, gain, at):
    """The response of zeros, poles and gain."""
    if not (numpy.isfinite(zeros).all() and numpy.isfinite(poles).all() and math.isfinite(gain)):
        return numpy.full(len(at), numpy.nan)
    bits = 256
    cos, sin = circle(at, bits)

    def product_db(roots):
        return sum(magnitude_db(cos - fixed(r.real, bits), sin - fixed(r.imag, bits), bits)
                   for r in roots)

    level = 20 * math.log10(abs(gain)) if gain else -math.inf
    excess = len(poles) - len(zeros)  # zeros at the origin, which no magnitude shows
    assert excess >= 0
    return level + product_db(zeros) - product_db(poles)


def transfer_db(numerator, denominator, at):
    """The response of the transfer function."""
    with numpy.errstate(invalid="ignore"):
        return polynomial_db(numerator, at) - polynomial_db(denominator, at)
