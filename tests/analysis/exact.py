"""What the doubles of a filter mean exactly, in mpmath's current precision.

By formulas other than the library's: products of plain differences, delays and
slopes by the logarithmic derivative, and whole turns of the phase by a walk.
"""

import numpy
from mpmath import log, log10, mp, mpc, mpf, pi


def quadratic_roots(c0, c1, c2):
    c0, c1, c2 = mpf(c0), mpf(c1), mpf(c2)
    root = mp.sqrt(mpc(c1 * c1 - 4 * c0 * c2))
    return [(-c1 + root) / (2 * c0), (-c1 - root) / (2 * c0)]


class Exact:
    """H, z H'/H and the delay of the doubles of one form, in the current precision."""

    def __init__(self, zeros=(), poles=(), gain=1.0, sections=(), transfer=None):
        self.zeros, self.poles = [mpc(z) for z in zeros], [mpc(p) for p in poles]
        self.gain = mpf(gain)
        self.polynomials = [(row[:3], [1.0, *row[3:]]) for row in sections]
        if transfer:
            self.polynomials.append(transfer)

        self.all_zeros = self.zeros + [r for n, _ in self.polynomials[:len(sections)]
                                       for r in quadratic_roots(*n)]

    def __call__(self, w):
        z = mp.expjpi(mpf(w))
        value, derivative = mpc(self.gain), mpc(0)
        for zero in self.zeros:
            value, derivative = value * (z - zero), derivative + self.inverse(z - zero)
        for pole in self.poles:
            value, derivative = value / (z - pole), derivative - 1 / (z - pole)
        for numerator, denominator in self.polynomials:
            n, dn = mp.polyval(numerator, z, derivative=True)
            d, dd = mp.polyval(denominator, z, derivative=True)
            value, derivative = value * n / d, derivative + dn * self.inverse(n) - dd / d
        return value, z * derivative

    def delay(self, w):
        """Zeros that rounding left within 1e-9 of the circle count as lying on it: half a
        sample each."""
        z = mp.expjpi(mpf(w))
        found = sum((z / (z - p)).real for p in self.poles)
        found += sum((z * mp.polyval(d, z, derivative=True)[1] / mp.polyval(d, z)).real
                     for _, d in self.polynomials)
        return found - sum(mpf(1) / 2 if abs(1 - abs(q)) < 1e-9 else (z / (z - q)).real
                           for q in self.all_zeros)

    @staticmethod
    def inverse(x):
        return 1 / x if x else mpc(mp.nan)


def exact_values(form, w):
    """Level in dB, wrapped phase, group delay in samples, slope in dB per unit of w."""
    value, derivative = form(w)
    if not value or abs(value) < mpf(10) ** -5000:
        return [-mp.inf, mp.nan, mp.nan, mp.nan]
    phase = mpf(0) if w in (0.0, 1.0) and value.real > 0 else mp.arg(value)
    if phase <= -pi:
        phase += 2 * pi
    return [20 * log10(abs(value)), phase, form.delay(w),
            -derivative.imag * 20 / log(10) * pi]


def turns(zeros, poles, at):
    """Whole turns by which the unwrapped phase of the factors 1 - root/z exceeds the wrapped
    one, from a walk in small steps. Zeros on the circle are left out."""
    roots = [(complex(z), 1) for z in zeros if abs(abs(z) - 1) > 1e-9]
    roots += [(complex(p), -1) for p in poles]
    marks = sorted(abs(numpy.angle(r)) / numpy.pi for r, _ in roots)
    steps = [numpy.linspace(0, 1, 2001), numpy.array(at)]
    for r, _ in roots:
        w, scale = abs(numpy.angle(r)) / numpy.pi, max(abs(1 - abs(r)), 1e-9)
        steps.append(w + scale * numpy.linspace(-3, 3, 25))
        steps.append(w + scale * 1.5 ** numpy.arange(1, 40))
        steps.append(w - scale * 1.5 ** numpy.arange(1, 40))
    assert marks
    grid = numpy.unique(numpy.concatenate(steps))
    grid = grid[(grid >= 0) & (grid <= 1)]
    z = numpy.exp(-1j * numpy.pi * grid)
    total = numpy.zeros(len(grid))
    for r, sign in roots:
        phase = numpy.unwrap(numpy.angle(1 - r * z))
        total += sign * phase
    return dict(zip(grid, total))


def unwrapped(form, zeros, poles, at):
    """Phases continuous except for + pi at zeros on the circle: the exact wrapped phase and the
    number of whole turns that a walk in doubles has seen. None where there is no phase."""
    walked = turns(zeros, poles, at)
    circle = [z for z in zeros if abs(abs(z) - 1) <= 1e-9]
    start = mpf(sum(1 for z in circle if abs(mp.arg(z)) < 1e-15)) * pi / 2
    surplus = mp.ceil((start - pi) / (2 * pi))
    found = []
    for w in at:
        wrapped = exact_values(form, w)[1]
        phase = mpf(walked[w]) - 2 * pi * surplus
        for zero in circle:
            ahead = mp.arg(zero) - pi * mpf(w)
            phase += ahead / 2 + (-pi / 2 if ahead > 0 else pi / 2)
        found.append(wrapped + 2 * pi * mp.nint((phase - wrapped) / (2 * pi))
                     if mp.isfinite(wrapped) else mp.nan)
    return found
