#!/usr/bin/python3
"""Tests of what is said of filters that ran."""

import math
import unittest
from pathlib import Path

import document
import running

NOISY = {"doubles": 1e-8, "floats": None}
QUIET = {"doubles": 1e-12, "floats": 2e-5}


def ran(name, arranged=None, exported=None, **more):
    """What bench-running writes for a filter."""
    everywhere = dict.fromkeys(running.STRUCTURES, arranged or QUIET)
    return {"name": name, "microseconds": 5.0, "arranged": everywhere,
            "published": dict.fromkeys(running.STRUCTURES, NOISY),
            "exported": {running.EXPORTED: exported or QUIET}, **more}


def results(*low):
    high = [ran("high", scipy=dict.fromkeys(running.STRUCTURES, NOISY))]
    first = ran("first", reference=3e-16, scipy=dict.fromkeys(running.STRUCTURES, QUIET))
    return {"low orders": {"orders": (2, 40), "drawn": 1 + len(low), "silent": 0,
                           "runs": [first, *low]},
            "high orders": {"orders": (41, 200), "drawn": 3, "silent": 2, "runs": high}}


class Settings(unittest.TestCase):
    def test_are_the_same_for_the_same_seed(self):
        self.assertEqual(list(running.settings((2, 40), 50, 1)),
                         list(running.settings((2, 40), 50, 1)))
        self.assertNotEqual(list(running.settings((2, 40), 50, 1)),
                            list(running.settings((2, 40), 50, 2)))

    def test_go_through_all_families_responses_and_orders(self):
        drawn = list(running.settings((2, 40), 1000, 1))
        self.assertEqual({(one["topology"], one["response"]) for one in drawn},
                         {(f, r) for f in running.FAMILIES for r in running.RESPONSES})
        self.assertEqual({one["order"] for one in drawn}, set(range(2, 41)))

    def test_have_cutoffs_all_over_the_logarithmic_scale(self):
        cutoffs = [one["frequency"] for one in running.settings((2, 40), 1000, 1)
                   if not one["response"].startswith("band")]
        self.assertGreater(min(cutoffs), 10)
        self.assertLess(max(cutoffs), 23000)
        middle = math.sqrt(10 * 23000)
        self.assertAlmostEqual(sum(f < middle for f in cutoffs) / len(cutoffs), 0.5, delta=0.1)

    def test_have_edges_in_ascending_order(self):
        for one in running.settings((2, 40), 100, 1):
            if one["response"].startswith("band"):
                self.assertLess(*one["frequency"])


class Cascades(unittest.TestCase):
    def test_with_a_numerator_of_zeros_are_silent(self):
        self.assertFalse(running.is_silent([1, 0, 0, 0.5, 0, 0, 0, 1, 0.5, 0]))
        self.assertTrue(running.is_silent([1, 0, 0, 0.5, 0, 0, 0, 0, 0.5, 0]))

    def test_of_scipy_are_those_of_the_published_roots(self):
        made = running.scipys_sections({"zeroes": [-1, 0, -1, 0], "poles": [0.5, 0.5, 0.5, -0.5],
                                        "gain": 3.0})
        self.assertEqual(made, [3.0, 6.0, 3.0, -1.0, 0.5])


class Shares(unittest.TestCase):
    def test_count_what_is_beyond_each_limit_and_the_infinite_everywhere(self):
        one_set = results(ran("second", {"doubles": 1e-9, "floats": 2e-3}),
                          ran("third", {"doubles": None, "floats": None}))["low orders"]
        rows = [[cell.strip() for cell in line.split("|")[1:-1]]
                for line in running.shares(one_set)[2:]]
        found = {tuple(row[:3]): row[3:] for row in rows}
        self.assertEqual(len(found), 2 * (3 * 3 + 1))
        # A limit that is met exactly is met.
        self.assertEqual(found["doubles", "direct form I", "arranged"],
                         ["3", "33.3 %", "33.3 %", "33.3 %", "33.3 %", "infinite"])
        self.assertEqual(found["floats", "state variable", "arranged"],
                         ["3", "", "66.7 %", "66.7 %", "33.3 %", "infinite"])
        self.assertEqual(found["doubles", "direct form I", "SciPy"],
                         ["1", "0", "0", "0", "0", "1e-12"])


class Aims(unittest.TestCase):
    def verdicts(self, *low):
        return ["MISSED" in line for line in running.aims(results(*low))]

    def test_are_met_by_quiet_filters(self):
        self.assertEqual(self.verdicts(), [False, False, False, False])

    def test_are_missed_by_one_in_doubles(self):
        self.assertEqual(self.verdicts(ran("x", {"doubles": 2e-9, "floats": 1e-5})),
                         [True, False, False, False])

    def test_are_missed_by_too_many_in_floats(self):
        noisy = ran("x", {"doubles": 1e-12, "floats": 5e-4})
        quiet = [ran("y")] * 98
        self.assertEqual(self.verdicts(noisy, *quiet), [False, False, False, False])
        self.assertEqual(self.verdicts(noisy, noisy, *quiet), [False, True, False, False])

    def test_are_missed_by_one_that_is_very_noisy_in_floats(self):
        loud = ran("x", {"doubles": 1e-12, "floats": None})
        self.assertEqual(self.verdicts(loud, *[ran("y")] * 98), [False, False, True, False])

    def test_are_missed_by_what_is_exported_noisily(self):
        loud = ran("x", exported={"doubles": 1e-12, "floats": 2e-3})
        self.assertEqual(self.verdicts(loud, *[ran("y")] * 98), [False, False, False, True])
        noisy = ran("x", exported={"doubles": 1e-12, "floats": 5e-4})
        self.assertEqual(self.verdicts(noisy, *[ran("y")] * 98), [False, False, False, False])
        self.assertEqual(self.verdicts(*[noisy] * 2, *[ran("y")] * 97),
                         [False, False, False, True])


class Document(unittest.TestCase):
    def test_has_a_place_for_each_part(self):
        parts = running.parts(results(), ["- a machine"])
        page = "".join(f"<!-- {name} -->\n<!-- end -->\n" for name in parts)
        filled = document.filled(page, parts)
        self.assertIn("3 filters; 2 of them silent", filled)
        self.assertIn("low orders, 2e-05: first", filled)
        self.assertIn("within 3e-16 of the same in 113 bits, in 1 of the filters", filled)

    def test_of_the_repository_has_them_too(self):
        path = Path(__file__).parent.parent / "docs" / "running.md"
        document.filled(path.read_text(encoding="utf-8"), running.parts(results(), ["- one"]))


if __name__ == "__main__":
    unittest.main()
