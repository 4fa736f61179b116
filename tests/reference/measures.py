"""The errors of one design: of what the command publishes, and of SciPy's."""

import math
from fractions import Fraction

import mpmath
import numpy
import scipy.optimize

from designs import DIGITS, expanded, published, scipy_design, true_roots
from responses import frequencies, roots_db, sections_db, transfer_db, true_db
from stability import is_stable, poles_are_inside, sections_are_stable
from textbook import ATTENUATION_DB

# Below it a gain cannot be trusted to be a double with all its digits.
SMALLEST_GAIN = 1e-300
# Levels further below the peak are not heard.
HEARD_DB = -120.0
# Near a zero of the response a tiny error is many dB. Below these levels an error
# counts relative to them: the stopband's, or for a bandstop filter that goes on
# falling, one that nobody hears. The zeros of the other filters are exact doubles.
STOPBAND_DB = {"chebyshev-2": -ATTENUATION_DB}
BANDSTOP_DB = -200.0
UNIT = 2.0**-52


def distance(found, true):
    """The largest distance in the best pairing, equal true roots taken together.

    A true double pole, which no double can hold apart, is so compared by the
    mean of the two.
    """
    if len(found) != len(true) or not numpy.all(numpy.isfinite(found)):
        return math.inf
    row, column = scipy.optimize.linear_sum_assignment(abs(found[:, None] - true[None, :]))
    partners = numpy.empty_like(found)
    partners[column] = found[row]
    return max(abs(partners[true == value].mean() - value) for value in numpy.unique(true))


def relative_to_largest(found, true):
    if len(found) != len(true):
        return math.inf
    return numpy.max(abs(found - true)) / numpy.max(abs(true))


def relative(found, true):
    """The error of a number that may be too small for a double."""
    return float(abs(found - true) / true) if math.isfinite(found) else math.inf


def shape(polynomial):
    return polynomial / polynomial[0] if polynomial[0] else polynomial * numpy.nan


def heard_error(found_db, expected_db):
    """The largest error in dB, from the peak to 120 dB below it."""
    return numpy.max(abs(found_db - expected_db)[expected_db > HEARD_DB])


def whole_error(design, found_db, expected_db):
    """The largest error over the whole axis, see STOPBAND_DB."""
    bandstop_db = BANDSTOP_DB if design.response == "bandstop" else -math.inf
    floor_db = STOPBAND_DB.get(design.family, bandstop_db)
    errors = abs(found_db - expected_db)
    low = expected_db < floor_db
    difference = abs(10 ** (found_db[low] / 20) - 10 ** (expected_db[low] / 20))
    errors[low] = 20 * numpy.log10(1 + difference / 10 ** (floor_db / 20))
    return numpy.max(errors)


def rounded_sections(zeros, poles, gain):
    """The true filter's sections, each coefficient rounded once: none can be nearer."""

    def factors(roots):
        pairs = [(-2 * r.real, r.real**2 + r.imag**2) for r in roots if r.imag > 0]
        real = [r for r in roots if not r.imag]
        pairs += [(-a - b, a * b) for a, b in zip(real[::2], real[1::2])]
        return pairs + [(-r, 0) for r in real[len(real) // 2 * 2:]]

    rows = [[1, *b, *a] for b, a in zip(factors(zeros), factors(poles), strict=True)]
    rows[0][:3] = [gain * b for b in rows[0][:3]]
    return numpy.array(rows, float)


def structure_faults(form):
    """What a filter must hold exactly, whatever its accuracy; a text for each breach."""
    faults = []
    for name in ("zeros", "poles"):
        found = getattr(form, name)
        if sorted(found, key=key) != sorted(found.conj(), key=key):
            faults.append(f"{name} are not in exactly conjugate pairs")
    if not all(numpy.isfinite(part).all() for part in form):
        faults.append("a number is not finite")
        return faults
    if not poles_are_inside(form.poles):
        faults.append("a pole is not inside the unit circle")
    if not sections_are_stable(form.sections):
        faults.append("a section is not stable")
    return faults + pairing_faults(form)


def key(root):
    return root.real, root.imag


def pairing_faults(form):
    """Each section must hold a conjugate pair or two real poles, each pole once."""
    sections = [tuple(row[3:]) for row in form.sections]
    pairs = [(p, p.conjugate()) for p in form.poles if p.imag > 0]
    real = [p for p in form.poles if p.imag == 0]
    if len(sections) != (len(form.poles) + 1) // 2:
        return ["sections and poles differ in number"]
    if len(real) % 2:
        real.append(0j)  # the first-order section
    while real:
        # Which two real poles share a section is free: take what one section holds.
        pairs.append(min(
            ((real[0], other) for other in real[1:]),
            key=lambda pair: min(mismatch(section, pair) for section in sections)))
        for pole in pairs[-1]:
            real.remove(pole)
    cost = numpy.array([[mismatch(section, pair) for pair in pairs] for section in sections])
    rows, columns = scipy.optimize.linear_sum_assignment(cost)
    faults = []
    for row, column in zip(rows, columns):
        (a1, a2), (p, q) = sections[row], pairs[column]
        discriminant = Fraction(a1) ** 2 - 4 * Fraction(a2)
        same_kind = (discriminant < 0) == (p.imag != 0) or abs(p - q) ** 2 < 16 * UNIT
        if cost[row, column] > 2 * UNIT or not same_kind:
            faults.append(f"the section with a1 = {a1}, a2 = {a2} has no pair of the poles")
    return faults


def mismatch(section, pair):
    p, q = pair
    return max(abs(section[0] + (p + q).real), abs(section[1] - (p * q).real))


def measure_published(form, design, truth, at, expected_db):
    """What measure_accuracy.py sets limits to, and what belongs to it."""
    true_zeros, true_poles, true_gain = truth
    zeros = numpy.array([complex(z) for z in true_zeros])
    poles = numpy.array([complex(p) for p in true_poles])
    numerator, true_numerator = shape(form.numerator), expanded(true_zeros)
    if design.family == "chebyshev-2":
        numerator, true_numerator = form.numerator, float(true_gain) * true_numerator
    found_db = sections_db(form.sections, at)
    return {
        "faults": structure_faults(form),
        "true gain": float(true_gain),
        "published gain": form.gain,
        "poles": distance(form.poles, poles),
        "zeros": distance(form.zeros, zeros),
        "den": relative_to_largest(form.denominator, expanded(true_poles)),
        "num": relative_to_largest(numerator, true_numerator),
        "scale": relative(form.numerator[0], true_gain),
        "gain": relative(form.gain, true_gain),
        "sections": heard_error(found_db, expected_db),
        "whole": whole_error(design, found_db, expected_db),
        "sections stable": sections_are_stable(form.sections),
    }


def measure_other_forms(form, at, expected_db):
    roots = roots_db(form.zeros, form.poles, form.gain, at)
    transfer = transfer_db(form.numerator, form.denominator, at)
    return {
        "roots": heard_error(roots, expected_db),
        "roots stable": poles_are_inside(form.poles),
        "transfer": heard_error(transfer, expected_db),
        "transfer stable": is_stable(form.denominator),
    }


def measure_rounded(design, truth, at, expected_db):
    """What is left when the true filter's sections are rounded to doubles."""
    level = sections_db(rounded_sections(*truth), at)
    return {"sections": heard_error(level, expected_db),
            "whole": whole_error(design, level, expected_db)}


def measure_scipy(design, truth, at, expected_db):
    """A form that SciPy does not deliver is infinitely wrong."""
    _, true_poles, true_gain = truth
    poles = numpy.array([complex(p) for p in true_poles])
    roots, polynomials, sections = (scipy_design(design, o) for o in ("zpk", "ba", "sos"))
    measured = dict.fromkeys(("poles", "gain", "den", "sections", "transfer"), math.inf)
    if roots:
        measured["poles"] = distance(numpy.array(roots[1], complex), poles)
        measured["gain"] = relative(roots[2], true_gain)
    if polynomials:
        num, den = polynomials
        measured["den"] = relative_to_largest(den, expanded(true_poles))
        padded = numpy.concatenate([num, numpy.zeros(len(den) - len(num))])
        measured["transfer"] = heard_error(transfer_db(padded, den, at), expected_db)
    if sections is not None:
        rows = sections[:, [0, 1, 2, 4, 5]]
        measured["sections"] = heard_error(sections_db(rows, at), expected_db)
    return measured


def plain(value):
    """A value for JSON, where NaN, which compares with nothing, is infinite."""
    if isinstance(value, dict):
        return {k: plain(v) for k, v in value.items()}
    if isinstance(value, (float, numpy.floating)):
        return float(value) if value == value else math.inf
    return bool(value) if isinstance(value, numpy.bool_) else value


def measure(veltane, quick, design):
    """All errors of one design, by the names that measure_accuracy.py explains.

    `quick` leaves out what no limit is set to.
    """
    truth = true_roots(design)
    at = frequencies(design)
    expected_db = true_db(design, at)
    form = published(veltane, design)
    with mpmath.workdps(DIGITS), numpy.errstate(all="ignore"):
        found = measure_published(form, design, truth, at, expected_db)
        if not quick:
            found |= measure_other_forms(form, at, expected_db)
            found["rounded"] = measure_rounded(design, truth, at, expected_db)
            found["scipy"] = measure_scipy(design, truth, at, expected_db)
        return plain(found)
