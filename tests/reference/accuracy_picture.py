"""The picture of the errors against the order, drawn by gnuplot."""

import math
import pathlib
import subprocess
import tempfile

from measures import SMALLEST_GAIN

# Where an infinite error is drawn in each panel: above everything finite.
TOPS = (1e-10, 1e36, 1e4)


def worst(rows, pick, top):
    values = [pick(row) for row in rows]
    return top if math.inf in values else max(values)


def curves(results):
    """One line of the data file for each order."""
    by_order = {}
    for _, design, errors in results:
        by_order.setdefault(design.order, []).append(errors)
    for order, rows in sorted(by_order.items()):
        numbers = [row for row in rows if row["true gain"] >= SMALLEST_GAIN]
        yield (
            order,
            worst(rows, lambda row: row["poles"], TOPS[0]),
            worst(rows, lambda row: row["scipy"]["poles"], TOPS[0]),
            worst(rows, lambda row: row["den"], TOPS[1]),
            worst(rows, lambda row: row["scipy"]["den"], TOPS[1]),
            worst(numbers, lambda row: row["sections"], TOPS[2]),
            worst(numbers, lambda row: row["scipy"]["sections"], TOPS[2]),
        )


def draw(results, picture):
    script = pathlib.Path(__file__).with_name("accuracy.gnuplot")
    with tempfile.NamedTemporaryFile("w", suffix=".dat") as data:
        for line in curves(results):
            data.write(" ".join(str(value) for value in line) + "\n")
        data.flush()
        tops = "".join(f"top{i}={top};" for i, top in enumerate(TOPS, 1))
        terminal = "png" if picture.suffix == ".png" else "svg"
        subprocess.run(
            ["gnuplot", "-e", f"data='{data.name}';picture='{picture}';terminal='{terminal}';{tops}",
             str(script)], check=True)
