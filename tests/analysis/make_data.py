#!/usr/bin/env python3
"""Writes the numbers that the analysis is tested against.

Filters come from tests/reference/closed_form.py, rounded to doubles. What the
doubles mean exactly is then evaluated in 60 digits by exact.py. -3 dB points
come from the prototypes' square laws, and the orders for given edges from SciPy.
"""

import argparse
import itertools
import json
import pathlib
import sys

import numpy
import scipy.optimize
import scipy.signal
from mpmath import acosh, atan, cosh, log10, mp, mpc, mpf, nstr, pi, sqrt, tan

from exact import Exact, exact_values, quadratic_roots, unwrapped

HERE = pathlib.Path(__file__).resolve().parent
sys.path.insert(0, str(HERE.parent / "reference"))
from closed_form import design  # noqa: E402 (its folder is known from here on)

mp.dps = 60
DATA = HERE / "data.json"

CASES = [
    # family, band, order, cutoffs, ripple, attenuation
    ("chebyshev-2", "lowpass", 5, [0.125], 0.5, 96.0),
    ("butterworth", "lowpass", 4, [1 / 24], 0.5, 60.0),
    ("chebyshev-1", "lowpass", 8, [0.1], 0.5, 60.0),
    ("chebyshev-1", "highpass", 7, [0.7], 2.0, 60.0),
    ("chebyshev-1", "bandpass", 4, [0.2, 0.6], 12.0, 60.0),
    ("butterworth", "bandpass", 3, [0.25, 0.75], 0.5, 60.0),
    ("butterworth", "bandstop", 3, [0.1, 0.3], 0.5, 60.0),
    ("chebyshev-2", "highpass", 6, [0.3], 0.5, 40.0),
    ("chebyshev-2", "bandpass", 4, [0.0008, 0.0009], 0.5, 60.0),
    ("butterworth", "lowpass", 190, [0.02], 0.5, 60.0),
    ("butterworth", "bandpass", 200, [0.1, 0.8], 0.5, 60.0),
    ("chebyshev-1", "bandpass", 200, [0.0008, 0.0009], 0.5, 60.0),
    ("chebyshev-2", "bandstop", 200, [0.2, 0.4], 0.5, 60.0),
    ("chebyshev-2", "lowpass", 200, [0.0008], 0.5, 60.0),
]


def text(x):
    return float(x).__repr__() if isinstance(x, float) else nstr(x, 20)


def numbers(values):
    return "[" + ", ".join(text(v) if mp.isfinite(v) else "null" for v in values) + "]"


def flat(roots):
    return [part for r in roots for part in (r.real, r.imag)]


def rounded_sections(zeros, poles, gain):
    """Sections of the true roots, each coefficient rounded once; the gain in the first."""
    def factors(roots):
        pairs = [(-2 * r.real, abs(r) ** 2) for r in roots if r.imag > 0]
        real = sorted(r.real for r in roots if r.imag == 0)
        pairs += [(-p - q, p * q) for p, q in zip(real[::2], real[1::2])]
        return pairs + [(-p, mpf(0)) for p in real[len(real) // 2 * 2:]]

    rows = [[mpf(1), *b, *a] for b, a in zip(factors(zeros), factors(poles), strict=True)]
    rows[0][:3] = [gain * b for b in rows[0][:3]]
    return [[float(x) for x in row] for row in rows]


def expanded(roots):
    coefficients = [mpc(1)]
    for root in roots:
        coefficients = [a - root * b for a, b in zip(coefficients + [0], [0] + coefficients)]
    return [c.real for c in coefficients]


def frequencies(case, poles):
    """Cutoffs and places about them, sharp poles' angles, both ends, and between."""
    cutoffs = case[3]
    angles = sorted((1 - abs(p), abs(mp.arg(p)) / pi) for p in poles)
    at = {0.0, 1.0, 0.45, 0.97, *cutoffs}
    at |= {float(angles[i][1]) for i in (0, len(angles) // 2, len(angles) - 1)}
    at |= {c * factor for c in cutoffs for factor in (0.5, 0.999, 1.004, 1.2) if c * factor < 1}
    return sorted(at)


def half_power(case):
    """-3.0103 dB points relative to the passband's peak, from the square laws."""
    family, band, order, cutoffs, ripple, attenuation = case
    x = mpf(1)
    if family == "chebyshev-1":
        epsilon = sqrt(mpf(10) ** (mpf(ripple) / 10) - 1)
        y = 1 / epsilon
        x = cosh(acosh(y) / order) if y >= 1 else mp.cos(mp.acos(y) / order)
    if family == "chebyshev-2":
        x = 1 / cosh(acosh(sqrt(mpf(10) ** (mpf(attenuation) / 10) - 1)) / order)
    if band in ("highpass", "bandstop"):
        x = 1 / x
    analog = [tan(pi * mpf(c) / 2) for c in cutoffs]
    if len(analog) == 1:
        found = [x * analog[0]]
    else:
        centre, half = analog[0] * analog[1], x * (analog[1] - analog[0]) / 2
        high = half + sqrt(half * half + centre)
        found = [centre / high, high]
    return [2 / pi * atan(f) for f in found]


def margins(poles):
    return min(1 - abs(mpc(p)) for p in poles)


def section_margin(sections):
    found = mpf(1)
    for *_, a1, a2 in sections:
        found = min([found] + [1 - abs(p) for p in quadratic_roots(1, a1, a2)])
    return found


def float_movement(sections):
    worst = mpf(0)
    for *_, a1, a2 in sections:
        p, q = quadratic_roots(1, a1, a2)
        r, s = quadratic_roots(1, float(numpy.float32(a1)), float(numpy.float32(a2)))
        worst = max(worst, min(max(abs(p - r), abs(q - s)), max(abs(p - s), abs(q - r))))
    return worst


def section_peak(section):
    """Peak of |H|^2 = N(x)/D(x), quadratics in x = cos(angle), where N'D = ND' or at an end."""
    def squared(c0, c1, c2):
        c0, c1, c2 = mpf(c0), mpf(c1), mpf(c2)
        return [4 * c0 * c2, 2 * c1 * (c0 + c2), (c0 - c2) ** 2 + c1 ** 2]

    n, d = squared(*section[:3]), squared(1, *section[3:])
    qa = n[0] * d[1] - n[1] * d[0]
    qb = 2 * (n[0] * d[2] - n[2] * d[0])
    qc = n[1] * d[2] - n[2] * d[1]
    inner = []
    if qa:
        root = mp.sqrt(mpc(qb * qb - 4 * qa * qc))
        inner = [(-qb + s * root) / (2 * qa) for s in (1, -1)]
    elif qb:
        inner = [-qc / qb]
    places = [mpf(1), mpf(-1)] + [x.real for x in inner if abs(x.imag) < 1e-40 and abs(x) < 1]
    return max(10 * log10(mp.polyval(n, x) / mp.polyval(d, x)) if mp.polyval(n, x) > 0 else -mp.inf
               for x in places)


def running_peaks(sections):
    """Peaks of the running products, by a fine walk and a minimisation in doubles.

    Rounded to 1e-7 dB: NumPy's functions end in other digits on other processors, and
    of a peak near 0 dB those would be all its digits.
    """
    found = []
    for k in range(1, len(sections) + 1):
        sos = numpy.array([[*row[:3], 1.0, *row[3:]] for row in sections[:k]])

        def loss(w):
            return -abs(numpy.prod([numpy.polyval(r[:3], numpy.exp(1j * numpy.pi * w)) /
                                    numpy.polyval(r[3:], numpy.exp(1j * numpy.pi * w))
                                    for r in sos], axis=0))

        at = numpy.linspace(0, 1, 20001)
        i = numpy.argmin(loss(at))
        low, high = at[max(i - 1, 0)], at[min(i + 1, 20000)]
        best = scipy.optimize.minimize_scalar(loss, bounds=(low, high), method="bounded",
                                              options={"xatol": 1e-12})
        found.append(20 * mp.log10(-min(best.fun, loss(0.0), loss(1.0))))
    return [mp.nint(db * 10**7) / 10**7 for db in found]


def case_line(case):
    family, band, order, cutoffs, ripple, attenuation = case
    true = design(family, band, order, cutoffs[0], cutoffs[1] if len(cutoffs) > 1 else None,
                  ripple, attenuation)
    zeros, poles = ([complex(r) for r in roots] for roots in true[:2])
    # A gain that no double holds is left out, and what that lifts the levels by is said.
    gain, lift = float(true[2]), mpf(0)
    if gain < 1e-300:
        gain, lift = 1.0, -20 * log10(true[2])
        true = (true[0], true[1], mpf(1))
    sections = rounded_sections(*true)
    at = frequencies(case, true[1])
    roots_form, sections_form = Exact(zeros, poles, gain), Exact(sections=sections)
    parts = {
        "family": json.dumps(family), "band": json.dumps(band), "order": order,
        "cutoffs": json.dumps(cutoffs), "ripple": ripple, "attenuation": attenuation,
        "zeros": numbers(flat(zeros)), "poles": numbers(flat(poles)), "gain": text(gain), "lift": text(lift),
        "sections": numbers([x for row in sections for x in row]), "at": json.dumps(at),
        "half_power": numbers(half_power(case)),
        "margin": text(margins(poles)), "section_margin": text(section_margin(sections)),
        "float_movement": text(float_movement(sections)),
        "section_peaks": numbers([section_peak(row) for row in sections]),
        "unwrapped": numbers(unwrapped(roots_form, zeros, poles, at)),
    }
    for name, form in (("roots", roots_form), ("sections", sections_form)):
        columns = zip(*(exact_values(form, w) for w in at))
        for column, values in zip(("level", "phase", "delay", "slope"), columns):
            parts[f"{name}_{column}"] = numbers(values)
    if order <= 8:
        transfer = [[float(gain * c) for c in expanded([mpc(z) for z in zeros])],
                    [float(c) for c in expanded([mpc(p) for p in poles])]]
        parts["numerator"], parts["denominator"] = (numbers(c) for c in transfer)
        form = Exact(transfer=transfer)
        parts["transfer_level"] = numbers([exact_values(form, w)[0] for w in at])
        parts["running_peaks"] = numbers(running_peaks(sections))
        count = 64
        signal = scipy.signal.sosfilt([[*row[:3], 1.0, *row[3:]] for row in sections],
                                      [1.0] + [0.0] * (count - 1))
        parts["impulse"] = numbers([mpf(nstr(mpf(x), 12)) for x in signal])
    return "{" + ", ".join(f'"{key}": {value}' for key, value in parts.items()) + "}"


def order_line(family, band, generator):
    """A random demand and the order that SciPy gives for it."""
    edges = sorted(generator.uniform(0.02, 0.98, 2 if band in ("lowpass", "highpass") else 4))
    if min(b - a for a, b in zip(edges, edges[1:])) < 0.02:
        return None
    ripple, attenuation = generator.uniform(0.05, 3), generator.uniform(10, 120)
    outer, inner = (([edges[1]], [edges[0]]) if len(edges) == 2 else
                    ([edges[0], edges[3]], [edges[1], edges[2]]))
    if band == "highpass":
        passband, stopband = outer, inner
    elif band == "lowpass":
        passband, stopband = inner, outer
    else:
        passband, stopband = (inner, outer) if band == "bandpass" else (outer, inner)
    estimate = {"butterworth": scipy.signal.buttord, "chebyshev-1": scipy.signal.cheb1ord,
                "chebyshev-2": scipy.signal.cheb2ord}[family]
    order, _ = estimate(passband if len(edges) > 2 else passband[0],
                        stopband if len(edges) > 2 else stopband[0], ripple, attenuation)
    return json.dumps({"family": family, "band": band, "passband": passband, "stopband": stopband,
                       "ripple": ripple, "attenuation": attenuation, "order": int(order)})


def order_lines(count):
    generator = numpy.random.default_rng(20240501)
    for family, band in itertools.product(("butterworth", "chebyshev-1", "chebyshev-2"),
                                          ("lowpass", "highpass", "bandpass", "bandstop")):
        made = 0
        while made < count:
            line = order_line(family, band, generator)
            if line:
                made += 1
                yield line


def data_lines(computed):
    """The lines of the file; None for a case that is not to be computed."""
    yield from ("{", '"made_by": "/usr/bin/python3 tests/analysis/make_data.py",', '"cases": [')
    for number, case in enumerate(CASES, start=1):
        comma = "," if number < len(CASES) else ""
        yield case_line(case) + comma if computed(case) else None
    yield from ("],", '"orders": [')
    yield ",\n".join(order_lines(60))
    yield from ("]", "}", "")


def main():
    parser = argparse.ArgumentParser(description=__doc__.split("\n", 1)[0])
    parser.add_argument("--check", action="store_true",
                        help="write nothing; exit 1 if the file holds anything else")
    parser.add_argument("--sample", action="store_true",
                        help="the same, without the cases of order 200, which take long")
    arguments = parser.parse_args()
    made = list(data_lines(lambda case: not arguments.sample or case[2] < 200))
    if not (arguments.check or arguments.sample):
        DATA.write_text("\n".join(made), encoding="utf-8")
        return None
    lines = [line for part in made for line in ([None] if part is None else part.split("\n"))]
    for number, (new, old) in enumerate(itertools.zip_longest(
            lines, DATA.read_text(encoding="utf-8").split("\n"), fillvalue=False), start=1):
        if new is not None and new != old:
            return f"{DATA.name}, line {number}, is not what is computed."
    return None


if __name__ == "__main__":
    sys.exit(main())
