"""What a filter makes of a signal, computed without the program that exports it."""

import pathlib
import sys

from mpmath import mp, mpf

sys.path.append(str(pathlib.Path(__file__).resolve().parents[1] / "reference"))
import closed_form  # noqa: E402

DIGITS = 50
# Samples are integers in units of 2^-BITS. What grows on the way stays exact to that; the gain,
# which makes it small again, comes last.
BITS = 256


def fixed(value):
    return int(mp.nint(mp.ldexp(value, BITS)))


def product(a, b):
    return (a * b) >> BITS


def quadratics(roots):
    """The real polynomials 1 + p d + q d^2 that conjugate and real roots multiply to."""
    pairs = [(root, mp.conj(root)) for root in roots if root.imag > 0]
    real = [root.real for root in roots if root.imag == 0]
    if 2 * len(pairs) + len(real) != len(roots):
        raise ValueError("a root is without its conjugate")
    if len(real) % 2:
        real.append(mpf(0))
    pairs += zip(real[::2], real[1::2])
    return [(fixed(-mp.re(a + b)), fixed(mp.re(a * b))) for a, b in pairs]


def response(signal, family, form, order, cutoffs, samplerate, ripple_db=0.5, attenuation_db=60):
    """As many samples as the signal has, from roots in closed form, in 50 digits or more.

    The signal's samples are floats, whose bits are taken as they are.
    """
    with mp.workdps(DIGITS + 40):
        edges = [mpf(2) * mpf(f) / samplerate for f in cutoffs]
        zeros, poles, gain = closed_form.design(
            family, form, order, *edges, ripple_db=mpf(ripple_db),
            attenuation_db=mpf(attenuation_db))
        if len(zeros) != len(poles):
            raise ValueError("a digital filter here has as many zeros as poles")
        samples = [fixed(mpf(float(x))) for x in signal]
        for p, q in quadratics(zeros):
            before, older = 0, 0
            for n, x in enumerate(samples):
                samples[n] = x + product(p, before) + product(q, older)
                before, older = x, before
        for p, q in quadratics(poles):
            before, older = 0, 0
            for n, x in enumerate(samples):
                before, older = x - product(p, before) - product(q, older), before
                samples[n] = before
        gain = mp.re(gain)
        return [float(mp.ldexp(gain * y, -BITS)) for y in samples]


def impulse_response(count, *filter_and_rate, **ripples):
    """The first `count` samples of what `response` makes of an impulse."""
    return response([1.0] + [0.0] * (count - 1), *filter_and_rate, **ripples)
