"""Zeros, poles and gain of the classical digital filters, in closed form.

Every step maps roots to roots: the prototype's roots are known in closed form,
a frequency transformation costs at most one quadratic equation per root, and
the bilinear transform is a quotient. No polynomial is ever expanded, so the
digits asked for are the digits delivered, whatever the order.

Sources: Oppenheim & Schafer, Discrete-Time Signal Processing, appendix B
(Butterworth and Chebyshev prototypes) and the section on the bilinear
transformation; Parks & Burrus, Digital Filter Design, chapter 7; Antoniou,
Digital Signal Processing, chapter 10 (inverse-Chebyshev approximation,
transformations).
"""

from collections import namedtuple

from mpmath import asinh, conj, cospi, cosh, mp, mpc, mpf, sinh, sinpi, sqrt

FAMILIES = ("butterworth", "chebyshev-1", "chebyshev-2")
RESPONSES = ("lowpass", "highpass", "bandpass", "bandstop")

# `paired` holds one root of each conjugate pair and `real` those on the real
# axis. Symmetry is thus kept by construction, not by cleaning up after rounding.
Roots = namedtuple("Roots", "paired real")
Prototype = namedtuple("Prototype", "zeros poles level")


def upper_angles(order):
    """The prototypes' angles (2k-1)/2n below a quarter turn, in half turns."""
    return [mpf(2 * k - 1) / (2 * order) for k in range(1, order // 2 + 1)]


def butterworth(order):
    """Poles evenly spread on the left unit semicircle (O&S, appendix B.1)."""
    paired = [mpc(-sinpi(a), cospi(a)) for a in upper_angles(order)]
    return Prototype(Roots([], []), Roots(paired, [mpf(-1)] * (order % 2)), mpf(1))


def chebyshev_ellipse(order, epsilon):
    """Roots of 1 + eps^2 T_n(s/j)^2 left of the axis (O&S, appendix B.2)."""
    mu = asinh(1 / epsilon) / order
    paired = [mpc(-sinh(mu) * sinpi(a), cosh(mu) * cospi(a)) for a in upper_angles(order)]
    return Roots(paired, [-sinh(mu)] * (order % 2))


def chebyshev_1(order, ripple_db):
    """Equal ripple in the passband; T_n(0) = +-1 puts even orders at its foot."""
    foot = mpf(10) ** (-mpf(ripple_db) / 20)
    epsilon = sqrt(1 / foot**2 - 1)
    level = mpf(1) if order % 2 else foot
    return Prototype(Roots([], []), chebyshev_ellipse(order, epsilon), level)


def chebyshev_2(order, attenuation_db):
    """Reciprocal roots of the ellipse, zeros where T_n(1/w) = 0 (Antoniou, ch. 10)."""
    epsilon = 1 / sqrt(mpf(10) ** (mpf(attenuation_db) / 10) - 1)
    zeros = [mpc(0, 1 / cospi(a)) for a in upper_angles(order)]
    return Prototype(Roots(zeros, []), invert(chebyshev_ellipse(order, epsilon)), mpf(1))


def scale(roots, factor):
    return Roots([factor * r for r in roots.paired], [factor * r for r in roots.real])


def invert(roots):
    return Roots([1 / r for r in roots.paired], [1 / r for r in roots.real])


def split(roots, centre_squared):
    """Both solutions of s + centre^2/s = r for each root r (Parks & Burrus, ch. 7).

    Only a real root can have real solutions, and the conjugate of a complex one
    has the conjugate solutions, so that one of each pair still stands for both.
    """
    paired, real = [], []
    for r in roots.paired:
        d = sqrt(r * r - 4 * centre_squared)
        paired += [(r + d) / 2, (r - d) / 2]
    for r in roots.real:
        discriminant = r * r - 4 * centre_squared
        d = sqrt(abs(discriminant))
        if discriminant < 0:
            paired.append(mpc(r, d) / 2)
        else:
            real += [(r + d) / 2, (r - d) / 2]
    return Roots(paired, real)


def bilinear(roots):
    """z = (1+s)/(1-s), the inverse of s = (z-1)/(z+1)."""
    return Roots(
        [(1 + s) / (1 - s) for s in roots.paired], [(1 + s) / (1 - s) for s in roots.real]
    )


def prewarp(w):
    """tan(pi w/2) by the half-angle formula, which gives 1 without error at w = 1/2."""
    return sinpi(w) / (1 + cospi(w))


def prewarp_band(w1, w2):
    """Difference and product of the prewarped edges, by the addition theorems.

    With q = cos(a+b)/cos(b-a): tan b - tan a = 2 tan(b-a)/(1+q) and
    tan a tan b = (1-q)/(1+q). In this form the band 1/4..3/4 has width 2 and
    centre 1 without error, which matters: a real pole at -1 then splits into a
    double one, and a rounding error under that square root would tear it apart.
    """
    q = cospi((w1 + w2) / 2) / cospi((w2 - w1) / 2)
    return 2 * prewarp(w2 - w1) / (1 + q), (1 - q) / (1 + q)


def transform(roots, response, width, centre_squared):
    """Lowpass-to-X substitution, on finite roots."""
    if response in ("highpass", "bandstop"):
        roots = invert(roots)
    roots = scale(roots, width)
    return roots if centre_squared is None else split(roots, centre_squared)


def images_of_infinity(count, response, centre_squared):
    """Where the prototype's zeros at infinity end up in the z plane.

    s = infinity becomes -1 and s = 0 becomes 1; a bandstop filter has them at
    its centre frequency, (1+jc)/(1-jc) for the prewarped centre c.
    """
    if response == "bandstop":
        centre = mpc(1 - centre_squared, 2 * sqrt(centre_squared)) / (1 + centre_squared)
        return Roots([centre] * count, [])
    places = {"lowpass": [-1], "highpass": [1], "bandpass": [-1, 1]}[response]
    return Roots([], [mpf(place) for place in places] * count)


def digital_gain(prototype, response, width, centre_squared):
    """k = H(z = infinity), which is the prototype's value where s = 1 comes from."""
    x = 1 / width if centre_squared is None else (1 + centre_squared) / width
    if response in ("highpass", "bandstop"):
        x = 1 / x
    numerator = mp.fprod(1 - x / r for r in both_halves(prototype.zeros))
    denominator = mp.fprod(1 - x / r for r in both_halves(prototype.poles))
    return (prototype.level * numerator / denominator).real


def both_halves(roots):
    return [half for r in roots.paired for half in (r, conj(r))] + roots.real


def off_axis(z, digits):
    """Real part of z, or 0 if it is only what rounding left of a root on the axis."""
    return z.real if abs(z.real) > mpf(10) ** -digits * abs(z) else mpf(0)


def rounded(roots, digits):
    """All roots, each rounded to `digits` relative to its modulus."""
    roots = Roots([mpc(off_axis(z, digits), z.imag) for z in roots.paired], roots.real)
    with mp.workdps(digits):
        return [+z for z in both_halves(roots)]


def design(family, response, order, w1, w2=None, ripple_db=None, attenuation_db=None, digits=50):
    """Zeros, poles and gain k of H(z) = k prod(z - z_i) / prod(z - p_i).

    Cutoffs are fractions of the Nyquist frequency. Real roots are mpf, complex
    ones mpc in exactly conjugate pairs.
    """
    band = response in ("bandpass", "bandstop")
    if family not in FAMILIES or response not in RESPONSES or order < 1:
        raise ValueError(f"no {family} {response} filter of order {order}")
    if not (0 < w1 < w2 < 1 if band else 0 < w1 < 1):
        raise ValueError(f"cutoffs {w1}, {w2} are not increasing between 0 and 1")
    if any(level is not None and not level > 0 for level in (ripple_db, attenuation_db)):
        raise ValueError(f"ripple {ripple_db} and attenuation {attenuation_db} dB must be positive")
    # A square root near zero halves the number of digits, hence twice as many.
    with mp.workdps(2 * digits + 20):
        width, centre_squared = (
            prewarp_band(mpf(w1), mpf(w2)) if band else (prewarp(mpf(w1)), None)
        )
        prototype = {
            "butterworth": lambda: butterworth(order),
            "chebyshev-1": lambda: chebyshev_1(order, ripple_db),
            "chebyshev-2": lambda: chebyshev_2(order, attenuation_db),
        }[family]()
        poles = bilinear(transform(prototype.poles, response, width, centre_squared))
        finite = bilinear(transform(prototype.zeros, response, width, centre_squared))
        infinite = images_of_infinity(
            order - 2 * len(prototype.zeros.paired), response, centre_squared
        )
        gain = digital_gain(prototype, response, width, centre_squared)
        zeros = rounded(finite, digits) + rounded(infinite, digits)
        poles = rounded(poles, digits)
    with mp.workdps(digits):
        return zeros, poles, +gain
