"""Whether all poles lie inside the unit circle, for each form, beyond doubt.

The doubles are taken for what they exactly are: no rounding of the judge's own
decides about a pole near the circle.
"""

from fractions import Fraction

import numpy

from responses import fixed


def poles_are_inside(poles):
    return all(Fraction(p.real) ** 2 + Fraction(p.imag) ** 2 < 1 for p in poles)


def sections_are_stable(sections):
    """The triangle of stable second-order denominators: |a2| < 1, |a1| < 1 + a2."""
    return all(abs(Fraction(a2)) < 1 and abs(Fraction(a1)) < 1 + Fraction(a2)
               for *_, a1, a2 in sections)


def reflections(denominator, bits):
    """Reflection coefficients by the step-down recursion, in units of 2^-bits.

    Ends with the first that is 1 or more: then not all roots are inside.
    Source: Oppenheim & Schafer, Discrete-Time Signal Processing, on the lattice
    filter; Jury, Theory and Application of the z-Transform Method, on the test.
    """
    one = 1 << bits
    a = numpy.array([fixed(c, bits) for c in denominator], object)
    found = []
    while len(a) > 1:
        k = a[-1]
        found.append(k)
        if abs(k) >= one:
            break
        a = ((a - (k * a[::-1] >> bits)) << bits) // (one - (k * k >> bits))
        a = a[:-1]
    return found


def is_stable(denominator):
    """Whether a polynomial with first coefficient 1 has all roots inside the circle.

    The recursion is repeated with twice the bits until both runs agree on every
    coefficient to a hundredth of its distance from 1.
    """
    if not numpy.isfinite(denominator).all():
        return False
    bits = 512
    before = reflections(denominator, bits)
    while bits < 1 << 16:
        bits *= 2
        now = reflections(denominator, bits)
        one = 1 << bits
        if len(now) == len(before) and all(
                100 * abs(k - (earlier << bits // 2)) <= abs(one - abs(k))
                for k, earlier in zip(now, before)):
            return abs(now[-1]) < one
        before = now
    raise ArithmeticError("a root is too near the unit circle to be judged")
