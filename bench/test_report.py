#!/usr/bin/python3
"""Tests of what is made of the measurements."""

import unittest

from scipy import signal

import analysis
import batch
import bench_scipy
import designs
import document
import levels
import measure
import report
import signals


def design(order, ours, scipys, liquids, right=True):
    run = {"right": True, "allocations": 3, "bytes": 4096}
    runs = {"veltane": {**run, "us": ours}, "SciPy": {**run, "us": scipys},
            "liquid-dsp": {**run, "us": liquids, "right": right}}
    return {"name": f"chebyshev-2/lowpass/{order}", "family": "chebyshev-2",
            "response": "lowpass", "order": order, "runs": runs}


class Analysis(unittest.TestCase):
    def test_a_line_that_crosses_half_way_between_logarithms(self):
        self.assertAlmostEqual(analysis.first_crossing([2, 8], [0.5, 2.0]), 4.0)

    def test_a_line_that_touches_crosses_there(self):
        self.assertAlmostEqual(analysis.first_crossing([2, 8, 16], [0.5, 1.0, 0.9]), 8.0)

    def test_a_line_that_is_above_from_the_start(self):
        self.assertEqual(analysis.first_crossing([2, 8], [1.5, 2.0]), 2)

    def test_a_line_that_stays_below(self):
        self.assertIsNone(analysis.first_crossing([2, 8], [0.5, 0.99]))

    def test_a_cubic_cost_has_exponent_three(self):
        found = analysis.exponents([2, 5, 64], [8.0, 125.0, 64.0**3])
        for exponent in found:
            self.assertAlmostEqual(exponent, 3.0)


class Levels(unittest.TestCase):
    def test_scipy_designs_what_the_textbook_says(self):
        plan = designs.designs(quick=False)
        settings = plan["passband_ripple"], plan["stopband_attenuation"]
        for entry in plan["designs"]:
            sos = bench_scipy.maker(entry, *settings)()[3]
            found = [bench_scipy.level(sos, at) for at in entry["levels_at"]]
            self.assertTrue(levels.is_right(entry, *settings, found), entry["name"])
            off = [found[0], found[1] - 2 * levels.TOLERANCE]
            self.assertFalse(levels.is_right(entry, *settings, off), entry["name"])

    def test_another_cutoff_is_noticed(self):
        entry = {"family": "butterworth", "response": "lowpass", "order": 5, "cutoffs": [0.25],
                 "levels_at": [0.125, 0.25]}
        sos = signal.butter(5, 0.24, output="sos")
        found = [bench_scipy.level(sos, at) for at in entry["levels_at"]]
        self.assertFalse(levels.is_right(entry, 0.5, 96.0, found))

    def test_what_is_not_finite_is_wrong(self):
        entry = designs.DEFAULT
        for value in (float("nan"), float("-inf")):
            self.assertFalse(levels.is_right(entry, 0.5, 96.0, [value, -96.0]))


class Measure(unittest.TestCase):
    def test_the_least_time_counts_in_any_unit(self):
        found = [{"x": {"cpu_time": 3.0, "time_unit": "us"}},
                 {"x": {"cpu_time": 2900.0, "time_unit": "ns"}}]
        self.assertAlmostEqual(measure.least(found, "x")["us"], 2.9)

    def test_one_refusal_is_a_refusal(self):
        found = [{"x": {"cpu_time": 3.0, "time_unit": "us"}},
                 {"x": {"error_occurred": True, "error_message": "no", "cpu_time": 0.0,
                        "time_unit": "us"}}]
        self.assertEqual(measure.least(found, "x"), {"refused": "no"})


class Batch(unittest.TestCase):
    LINE = '{"line": %d, "dictionary": {"poles": [0, 0, 0, 0, 0, 0, 0, 0, 0, 0]}}'

    def test_each_line_has_its_own_settings(self):
        lines = [str(one) for one in batch.settings(1000)]
        self.assertEqual(len(set(lines)), 1000)

    def test_results_in_order_pass(self):
        batch.check([self.LINE % 1, self.LINE % 2], 2)

    def test_results_that_are_missing_or_out_of_order_do_not(self):
        for lines in ([self.LINE % 1], [self.LINE % 2, self.LINE % 1],
                      [self.LINE % 1, '{"line": 2, "dictionary": {"poles": []}}']):
            with self.assertRaises(RuntimeError):
                batch.check(lines, 2)

    def test_the_rate_is_that_of_the_wall_clock(self):
        lines = report.batch({"count": 1000, "order": 5, "cores": 2, "wall": 0.5, "cpu": 0.8,
                              "input": 1e6, "output": 2e6})
        self.assertIn("0.5 s on 2 cores, 2,000 designs a second", lines[0])
        self.assertIn("0.8 s, 800 us a design", lines[1])
        self.assertIn("wrote 2 MB of results", lines[2])


class Report(unittest.TestCase):
    def test_aims_are_met_or_missed(self):
        results = {"designs": [{**design(5, 10.0, 301.0, 0.4), "name": "default"},
                               design(32, 10.0, 9.0, 1.0)]}
        scipy, liquid, *families = report.aims(results)
        self.assertIn("30.1 times", scipy)
        self.assertTrue(scipy.endswith(": met"), scipy)
        self.assertTrue(liquid.endswith(": MISSED"), liquid)
        self.assertIn("MISSED, behind at lowpass 32", families[-1])

    def test_the_time_of_a_trusting_host_follows_that_of_a_strict_one(self):
        results = {"designs": [{**design(5, 10.0, 301.0, 0.4), "name": "default"}],
                   "trusting": {"us": 7.891}}
        strict, trusting = report.aims(results)[:2]
        self.assertIn("takes 10 us", strict)
        self.assertIn("book it takes 7.89 us", trusting)

    def test_a_wrong_filter_is_marked(self):
        rows = report.times({"designs": [design(5, 10.0, 300.0, 0.5, right=False)]})
        self.assertIn("0.5*", rows[-1])
        self.assertIn("| 300 |", " ".join(rows[-1].split()))

    def test_wrong_and_refused_filters_are_listed(self):
        refused = design(16, 10.0, 300.0, 0.5)
        refused["runs"]["liquid-dsp"] = {"refused": "no"}
        found = report.wrong_filters(
            {"designs": [design(5, 10.0, 300.0, 0.5, right=False), refused]})
        self.assertEqual(found, [
            "- veltane: none", "- SciPy: none",
            "- liquid-dsp: chebyshev-2 lowpass 16 refused; chebyshev-2 lowpass 5"])

    def test_numbers_keep_three_digits_and_no_exponent(self):
        self.assertEqual([report.significant(x) for x in (0.012345, 12.345, 123456.0)],
                         ["0.0123", "12.3", "123,000"])


class Document(unittest.TestCase):
    def test_only_what_is_measured_is_replaced(self):
        text = "Prose.\n<!-- a -->\nold\n<!-- end -->\nMore.\n<!-- b -->\n<!-- end -->\n"
        self.assertEqual(document.filled(text, {"a": ["new \\1"], "b": ["2"]}),
                         "Prose.\n<!-- a -->\n\nnew \\1\n\n<!-- end -->\nMore.\n"
                         "<!-- b -->\n\n2\n\n<!-- end -->\n")

    def test_a_part_that_is_missing_is_an_error(self):
        with self.assertRaises(ValueError):
            document.filled("nothing", {"a": []})


class Filtering(unittest.TestCase):
    def test_the_ratio_says_how_much_longer_sosfilt_takes(self):
        lines = signals.speed_lines(
            [{"order": 40, "channels": 8, "rounds": 5, "veltane": 100.0, "SciPy": 450.0}])
        self.assertEqual(lines[-1], "| 40 | 8 | 100 ns | 450 ns | 4.5 |")

    def test_memory_is_in_megabytes_and_speed_in_times_real_time(self):
        run = {"MB": 12.34, "seconds": 36.0}
        lines = signals.memory_lines(
            {"seconds": 7200, "bytes": 1_382_400_044, "forwards": run, "both ways": run})
        self.assertIn("2 hours of stereo at 48000 Hz, 16 bits, 1.38 GB", lines[0])
        self.assertIn("12.3 MB of memory at most, 36 s, 200 times as fast", lines[1])

    def test_the_signal_is_between_minus_one_and_one(self):
        found = signals.samples(10000)
        self.assertLessEqual(abs(found).max(), 1.0)
        self.assertGreater(found.std(), 0.5)


if __name__ == "__main__":
    unittest.main()
