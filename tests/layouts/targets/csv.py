"""Reads the table as any reader of CSV does, and filters with SciPy."""

import csv

from programs import DOUBLES, one_by_one, sections_filtered

ENDING = ".csv"
TOLERANCE = DOUBLES


@one_by_one
def impulse_responses(file, _name, _samplerate, count):
    with open(file, encoding="utf-8", newline="") as lines:
        rows = list(csv.DictReader(line for line in lines if not line.startswith("#")))
    return sections_filtered(
        [[float(row[key]) for key in ("b0", "b1", "b2", "a1", "a2")] for row in rows], count)
