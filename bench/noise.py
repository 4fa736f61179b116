#!/usr/bin/python3
"""Compares the predicted noise of random filters with what they make when they run."""

import argparse
import json
import math
import subprocess
import sys
import time
from pathlib import Path

import document
import machine
import noise_filters

ROOT = Path(__file__).resolve().parents[1]
DOCUMENT = ROOT / "docs" / "noise.md"
SAMPLE = ROOT / "tests" / "analysis" / "noise_filters.jsonl"
COUNT = 1000
QUICK_COUNT = 12
SAMPLE_COUNT = 48
SAMPLE_LONGEST_RUN = 300_000
# How many filters show that the reference is good enough, and how long they may run.
CHECKED = 100
CHECKED_LONGEST_RUN = 300_000

CLOSE, TOO_KIND = 6, 12  # dB
SHARE = 0.99
SIGNALS = {"white": "white noise", "sine": "worst sine"}


def run(program, filters, *options):
    """What the program writes for each filter."""
    lines = "".join(json.dumps(one["sections"]) + "\n" for one in filters)
    found = subprocess.run([program, *options], input=lines, text=True, stdout=subprocess.PIPE,
                           check=True)
    results = [json.loads(line) for line in found.stdout.splitlines()]
    if len(results) != len(filters):
        raise RuntimeError(f"{len(filters)} filters gave {len(results)} results")
    return results


def levels(results, name, signal):
    """Predicted, measured and difference of all filters that run so."""
    found = []
    for result in results:
        for record in result:
            if record["name"] == name and signal in record:
                predicted, actual, off = record[signal]
                found.append((float(predicted), float(actual),
                              -math.inf if off is None else off))
    return found


def is_lost(level):
    return level >= -15


def row(results, name, signal):
    found = levels(results, name, signal)
    offs = sorted(off for _, _, off in found)
    return {
        "name": name, "signal": signal, "count": len(found),
        "lost": sum(is_lost(actual) for _, actual, _ in found),
        "close": sum(abs(off) <= CLOSE for off in offs),
        "too_kind": sum(off > TOO_KIND for off in offs),
        "median": offs[len(offs) // 2], "kindest": offs[-1],
    }


def rows(results):
    names = [record["name"] for record in results[0]]
    return [row(results, name, signal) for name in names for signal in SIGNALS]


def text_of_row(one):
    return (f"| {one['name']} | {SIGNALS[one['signal']]} | {one['count']} | {one['lost']} "
            f"| {100 * one['close'] / one['count']:.1f} % | {one['median']:+.1f} dB "
            f"| {one['kindest']:+.1f} dB | {one['too_kind']} |")


def table(all_rows):
    return ["| structure, arithmetic | signal | filters | lost | within 6 dB | median | most too kind "
            "| by over 12 dB |",
            "|---|---|--:|--:|--:|--:|--:|--:|",
            *(text_of_row(one) for one in all_rows)]


def totals(all_rows):
    count = sum(one["count"] for one in all_rows)
    close = sum(one["close"] for one in all_rows)
    too_kind = sum(one["too_kind"] for one in all_rows)
    met = close >= SHARE * count and too_kind == 0
    return met, [
        f"- {count:,} comparisons, {100 * close / count:.2f} % within {CLOSE} dB; aim: "
        f"{SHARE:.0%}: {'met' if close >= SHARE * count else 'missed'}",
        f"- more than {TOO_KIND} dB more noise than predicted: {too_kind}; aim: none: "
        f"{'met' if too_kind == 0 else 'missed'}",
    ]


def set_lines(filters, drawn, longest):
    orders = sorted(one["settings"]["order"] for one in filters)
    edges = [one["settings"]["frequency"] for one in filters]
    lowest = min(edge[0] if isinstance(edge, list) else edge for edge in edges)
    return [
        f"- {len(filters):,} filters of {drawn:,} drawn; the others would have to run for more "
        f"than {longest:,} samples times sections",
        f"- orders {orders[0]} to {orders[-1]}, {sum(order > 40 for order in orders)} of them above "
        f"40; the lowest cutoff is {lowest:.2g} of Nyquist",
    ]


def reference_lines(program, filters):
    short = [one for one in filters
             if noise_filters.run_length(one["sections"]) <= CHECKED_LONGEST_RUN][:CHECKED]
    errors = run(program, short, "--check")
    return [f"- {len(short)} filters beside 113 binary digits: the error of the reference is at most "
            f"{max(errors):.0f} dB, with a median of {sorted(errors)[len(errors) // 2]:.0f} dB"]


def write_sample(veltane):
    found, _ = noise_filters.filters(veltane, SAMPLE_COUNT, SAMPLE_LONGEST_RUN)
    SAMPLE.write_text("".join(json.dumps(one["sections"]) + "\n" for one in found),
                      encoding="utf-8")


def main():
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("--build", type=Path, required=True)
    parser.add_argument("--quick", action="store_true",
                        help="a few filters once, to see that all of it runs")
    parser.add_argument("--write", action="store_true", help="put the tables into docs/noise.md")
    parser.add_argument("--sample", action="store_true", help="write the filters of the unit test")
    options = parser.parse_args()
    veltane, program = options.build / "bin" / "veltane", options.build / "bin" / "bench-noise"
    if options.sample:
        write_sample(veltane)
        return 0

    began = time.monotonic()
    count, longest = COUNT, noise_filters.LONGEST_RUN
    if options.quick:
        count, longest = QUICK_COUNT, CHECKED_LONGEST_RUN
    filters, drawn = noise_filters.filters(veltane, count, longest)
    all_rows = rows(run(program, filters))
    met, total = totals(all_rows)
    parts = {
        "machine": machine.description(options.build),
        "filters": set_lines(filters, drawn, longest),
        "totals": total,
        "table": table(all_rows),
        "reference": reference_lines(program, filters),
    }
    parts["machine"].append(f"- all of it took {(time.monotonic() - began) / 60:.0f} minutes")
    for lines in parts.values():
        print("\n".join(lines), end="\n\n")
    if options.write:
        DOCUMENT.write_text(document.filled(DOCUMENT.read_text(encoding="utf-8"), parts),
                            encoding="utf-8")
    return 0 if met else 1


if __name__ == "__main__":
    sys.exit(main())
