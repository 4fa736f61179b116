#!/usr/bin/env python3
"""Checks closed_form.py against facts that no root takes part in.

The filters are designed in 60 digits and the facts asserted in 50. With --whole the
highest order and all frequencies are checked; without it those that take little time.
"""

import sys
import unittest
from collections import Counter, namedtuple
from itertools import product
from math import nextafter

from mpmath import conj, expjpi, mp, mpc, mpf

from closed_form import FAMILIES, RESPONSES, design
from textbook import (
    ATTENUATION_DB,
    RIPPLE_DB,
    centre,
    edge_level,
    passed_and_stopped,
    passed_level,
    prototype_frequency,
    square_law,
    stopped_level,
)

DIGITS = 60
TOLERANCE = mpf(10) ** -50
ORDERS = (1, 2, 3, 4, 5, 8, 12)
CUTOFFS = {
    "lowpass": [(0.01,), (0.5,), (0.7,)],
    "highpass": [(0.01,), (0.5,), (0.7,)],
    "bandpass": [(0.3, 0.32), (0.25, 0.75), (0.1, 0.8)],
    "bandstop": [(0.3, 0.32), (0.25, 0.75), (0.1, 0.8)],
}
WHOLE = "--whole" in sys.argv
FREQUENCIES = (0.05, 0.28, 0.311, 0.45, 0.6, 0.93)

Case = namedtuple("Case", "family response order cutoffs")


def cases(orders=ORDERS, families=FAMILIES):
    for family, response, order in product(families, RESPONSES, orders):
        for cutoffs in CUTOFFS[response]:
            yield Case(family, response, order, cutoffs)


def designed(case, digits=DIGITS):
    return design(
        case.family,
        case.response,
        case.order,
        *case.cutoffs,
        ripple_db=RIPPLE_DB,
        attenuation_db=ATTENUATION_DB,
        digits=digits,
    )


def value_at(filter_, w):
    """H at the frequency w, a fraction of Nyquist."""
    zeros, poles, gain = filter_
    z = expjpi(w)
    return gain * mp.fprod(z - q for q in zeros) / mp.fprod(z - p for p in poles)


def worst_edge_error(filter_, case):
    """Largest relative error of |H| at the cutoffs."""
    level = edge_level(case.family)
    return max(abs(abs(value_at(filter_, mpf(w))) / level - 1) for w in case.cutoffs)


class ClosedForm(unittest.TestCase):
    def setUp(self):
        self.addCleanup(setattr, mp, "dps", mp.dps)
        mp.dps = DIGITS + 20

    def test_levels_at_the_cutoffs(self):
        for case in cases(orders=ORDERS + (60,)):
            with self.subTest(case):
                self.assertLess(worst_edge_error(designed(case), case), TOLERANCE)

    def test_a_perturbed_pole_or_gain_is_noticed(self):
        for case in cases():
            with self.subTest(case):
                zeros, poles, gain = designed(case)
                # Towards the cutoff, since across that line |H| stands still.
                step = mpf(10) ** -49 * (expjpi(mpf(case.cutoffs[0])) - poles[0])
                moved = zeros, [poles[0] + step] + poles[1:], gain
                self.assertGreater(worst_edge_error(moved, case), TOLERANCE)
                amplified = zeros, poles, gain * (1 + mpf(10) ** -49)
                self.assertGreater(worst_edge_error(amplified, case), TOLERANCE)

    def test_levels_at_zero_nyquist_and_centre(self):
        for case in cases():
            with self.subTest(case):
                filter_ = designed(case)
                passed, stopped = passed_and_stopped(case.response, case.cutoffs)
                for w in passed:
                    error = value_at(filter_, w) - passed_level(case.family, case.order)
                    self.assertLess(abs(error), TOLERANCE)
                for w in stopped:
                    error = abs(value_at(filter_, w)) - stopped_level(case.family, case.order)
                    self.assertLess(abs(error), TOLERANCE)

    def test_magnitude_follows_the_square_law(self):
        for case, w in product(cases(), FREQUENCIES if WHOLE else FREQUENCIES[::3]):
            with self.subTest(case, w=w):
                frequency = prototype_frequency(case.response, case.cutoffs, w)
                expected = square_law(case.family, case.order, frequency)
                found = abs(value_at(designed(case), mpf(w))) ** 2
                self.assertLess(abs(found - expected), TOLERANCE * expected)

    def test_poles_lie_inside_the_circle_and_zeros_on_it(self):
        for case in cases():
            with self.subTest(case):
                zeros, poles, _ = designed(case)
                self.assertLess(max(map(abs, poles)), 1)
                self.assertLess(max(abs(abs(z) - 1) for z in zeros), TOLERANCE)

    def test_there_are_as_many_zeros_as_poles(self):
        for case in cases():
            with self.subTest(case):
                zeros, poles, _ = designed(case)
                count = case.order * len(case.cutoffs)
                self.assertEqual((len(zeros), len(poles)), (count, count))

    def test_complex_roots_come_in_exact_pairs_and_others_are_real(self):
        for case in cases():
            zeros, poles, _ = designed(case)
            for roots in (zeros, poles):
                with self.subTest(case):
                    self.assertEqual(Counter(roots), Counter(conj(r) for r in roots))
                    for root in roots:
                        self.assertIsInstance(root, mpf if root.imag == 0 else mpc)

    def test_zeros_of_all_pole_prototypes(self):
        places = {"lowpass": [-1], "highpass": [1], "bandpass": [-1, 1]}
        for case in cases(families=("butterworth", "chebyshev-1")):
            with self.subTest(case):
                counts = Counter(designed(case)[0])
                if case.response == "bandstop":
                    self.assertEqual(list(counts.values()), [case.order] * 2)
                    cosine = mp.cospi(centre(case.cutoffs))
                    self.assertLess(max(abs(z.real - cosine) for z in counts), TOLERANCE)
                else:
                    self.assertEqual(counts, Counter(places[case.response] * case.order))

    def test_half_band_roots_lie_exactly_on_the_axes(self):
        # Many precisions, since a rounding error may happen to vanish in one.
        for digits in range(20, 80):
            with self.subTest(digits):
                band = Case("butterworth", "bandpass", 3, (0.25, 0.75))
                self.assertEqual(designed(band, digits)[1].count(0), 2)
                edge = Case("butterworth", "lowpass", 5, (0.5,))
                self.assertEqual({p.real for p in designed(edge, digits)[1]}, {0})

    def test_more_digits_confirm_the_digits_delivered(self):
        unit = mpf(10) ** (1 - DIGITS)
        almost_double = Case("butterworth", "bandpass", 3, (0.25, nextafter(0.75, 1)))
        very_wide = Case("butterworth", "bandstop", 3, (1e-9, 1 - 1e-9))
        for case in (*cases(orders=(3, 8, 200) if WHOLE else (3, 8)), almost_double, very_wide):
            with self.subTest(case):
                zeros, poles, gain = designed(case)
                finer_zeros, finer_poles, finer_gain = designed(case, digits=2 * DIGITS)
                finer = finer_zeros + finer_poles + [finer_gain]
                for found, expected in zip(zeros + poles + [gain], finer):
                    self.assertLessEqual(abs(found - expected), unit * abs(expected))

    def test_impossible_requests_are_refused(self):
        for request in (
            ("elliptical", "lowpass", 2, 0.5),
            ("butterworth", "allpass", 2, 0.5),
            ("butterworth", "lowpass", 0, 0.5),
            ("butterworth", "lowpass", 2, 1.0),
            ("butterworth", "bandpass", 2, 0.5, 0.4),
            ("chebyshev-1", "lowpass", 2, 0.5, None, 0.0),
        ):
            with self.subTest(request), self.assertRaises(ValueError):
                design(*request)


if __name__ == "__main__":
    unittest.main(argv=[word for word in sys.argv if word != "--whole"])
