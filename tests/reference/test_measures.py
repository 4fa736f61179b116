#!/usr/bin/python3
"""Checks the measuring: a filter rounded from the true one passes, each with one fault does not."""

import unittest

import mpmath
import numpy

from designs import DIGITS, Design, Published, all_designs, expanded, sample_designs, true_roots
from measure_accuracy import complaints
from measures import measure_published, plain, rounded_sections
from responses import frequencies, polynomial_db, roots_db, sections_db, transfer_db, true_db
from stability import is_stable, poles_are_inside, sections_are_stable

EDGE = Design("chebyshev-1", "lowpass", 5, (0.1,))
BAND = Design("butterworth", "bandpass", 3, (0.1, 0.8))
ZEROED = Design("chebyshev-2", "bandstop", 4, (0.2, 0.4))


def rounded(design):
    """The nearest that doubles come to the true filter, as if it were published."""
    zeros, poles, gain = true_roots(design)
    with mpmath.workdps(DIGITS):
        sections = rounded_sections(zeros, poles, gain)
    return Published(
        numpy.array([complex(z) for z in zeros]), numpy.array([complex(p) for p in poles]),
        float(gain), sections, float(gain) * expanded(zeros), expanded(poles))


def judged(design, form):
    """The complaints about a filter."""
    at = frequencies(design)
    with mpmath.workdps(DIGITS), numpy.errstate(all="ignore"):
        found = measure_published(form, design, true_roots(design), at, true_db(design, at))
        return complaints(design, plain(found))


def changed(values, index, factor):
    values = values.copy()
    values[index] *= factor
    return values


class Sample(unittest.TestCase):
    def test_every_family_and_response_meets_every_setting_and_order(self):
        sample = sample_designs()
        every = [(d.family, d.response, setting, d.order)
                 for setting, d in all_designs({d.order for _, d in sample})]
        self.assertLess(len(sample), len(every) / 4)
        for part in ((0, 1, 2), (0, 1, 3), (2, 3)):
            def seen(rows):
                return {tuple(row[i] for i in part) for row in rows}
            self.assertEqual(
                seen((d.family, d.response, setting, d.order) for setting, d in sample),
                seen(every), part)


class Complaints(unittest.TestCase):
    def test_a_filter_rounded_from_the_true_one_passes(self):
        for design in (EDGE, BAND, ZEROED):
            self.assertEqual(judged(design, rounded(design)), [], design)

    def test_each_fault_is_noticed(self):
        form = rounded(EDGE)
        faults = {
            "poles are not in exactly conjugate pairs":
                {"poles": changed(form.poles, 0, 1 + 1e-15)},
            "poles ": {"poles": form.poles * (1 + 1e-11)},
            "zeros ": {"zeros": form.zeros * (1 - 1e-15)},
            "den ": {"denominator": changed(form.denominator, 2, 1 + 1e-8)},
            "num ": {"numerator": changed(form.numerator, 2, 1 + 1e-8)},
            "whole ": {"sections": changed(form.sections, (0, 0), 1 + 1e-6)},
            "a number is not finite": {"numerator": changed(form.numerator, 2, numpy.nan)},
            "a pole is not inside": {"poles": numpy.where(form.poles.imag == 0, 1, form.poles)},
            "a section is not stable": {"sections": changed(form.sections, (1, 4), 2)},
            "has no pair of the poles": {"sections": changed(form.sections, (1, 3), 1 + 1e-12)},
        }
        for text, fields in faults.items():
            with self.subTest(text):
                found = judged(EDGE, form._replace(**fields))
                self.assertTrue(any(text in complaint for complaint in found), found)

    def test_a_wrong_level_in_the_stopband_is_noticed(self):
        form = rounded(ZEROED)
        found = judged(ZEROED, form._replace(zeros=form.zeros * numpy.exp(1e-8j)))
        self.assertTrue(any("zeros " in complaint for complaint in found), found)
        moved = changed(form.sections, (0, 1), 1 + 1e-4)
        found = judged(ZEROED, form._replace(sections=moved))
        self.assertTrue(any("whole " in complaint for complaint in found), found)


class Evaluation(unittest.TestCase):
    def test_a_polynomial_that_cancels_keeps_its_digits(self):
        binomials = [float(mpmath.binomial(40, k)) for k in range(41)]
        distance = 1e-6  # from z = -1, where all 40 zeros lie
        found = polynomial_db(binomials, (1 - distance,))[0]
        expected = 40 * 20 * mpmath.log10(2 * mpmath.sin(mpmath.pi * mpmath.mpf(distance) / 2))
        self.assertAlmostEqual(found, float(expected), delta=1e-6)

    def test_all_forms_of_a_filter_have_its_response(self):
        for design in (EDGE, BAND, ZEROED):
            form, at = rounded(design), frequencies(design)
            expected = true_db(design, at)
            near = expected > -100
            for level in (sections_db(form.sections, at),
                          roots_db(form.zeros, form.poles, form.gain, at),
                          transfer_db(form.numerator, form.denominator, at)):
                self.assertLess(numpy.max(abs(level - expected)[near]), 1e-6, design)


class Stability(unittest.TestCase):
    def test_a_pole_near_the_circle_is_judged_right(self):
        inside, outside = 1 - 2.0**-53, 1 + 2.0**-52
        self.assertTrue(is_stable(numpy.array([1, -inside])))
        self.assertFalse(is_stable(numpy.array([1, -1.0])))
        self.assertFalse(is_stable(numpy.array([1, -outside])))
        self.assertTrue(poles_are_inside([inside + 0j]))
        self.assertFalse(poles_are_inside([0.6 + 0.8j, 1j]))

    def test_the_recursion_agrees_with_the_roots(self):
        generator = numpy.random.default_rng(5)
        verdicts = set()
        for _ in range(200):
            denominator = numpy.concatenate([[1], generator.normal(0, 0.5, 6)])
            largest = numpy.max(abs(numpy.roots(denominator)))
            self.assertEqual(is_stable(denominator), largest < 1)
            verdicts.add(largest < 1)
        self.assertEqual(verdicts, {True, False})

    def test_the_triangle_agrees_with_the_recursion(self):
        for a1 in numpy.linspace(-2.2, 2.2, 12):
            for a2 in numpy.linspace(-1.2, 1.2, 12):
                self.assertEqual(sections_are_stable([[1, 0, 0, a1, a2]]),
                                 is_stable(numpy.array([1, a1, a2])))


if __name__ == "__main__":
    unittest.main()
