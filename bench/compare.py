#!/usr/bin/python3
"""Times veltane, SciPy and liquid-dsp on the same designs, and prints what came out.

With --running it runs their filters instead, and prints how far the outputs are off.
"""

import argparse
import json
import subprocess
import sys
from pathlib import Path

import batch
import document
import machine
import measure
import picture
import report
import running
import signals

DOCS = Path(__file__).parent.parent / "docs"
DOCUMENT = DOCS / "performance.md"
RUNNING_DOCUMENT = DOCS / "running.md"


def parts(results, build):
    """The lines of each part, by the name it has in the document."""
    return {
        "machine": machine.description(build),
        "aims": report.aims(results),
        "burst": report.burst(results),
        "batch": report.batch(results["batch"]),
        "filtering": signals.speed_lines(results["filtering"]),
        "long file": signals.memory_lines(results["long file"]),
        "times": report.times(results),
        "wrong filters": report.wrong_filters(results),
        "crossings": report.crossings(results),
        "growth": report.growth(results),
    }


def show(written):
    for name, lines in written.items():
        print(f"\n{name}\n")
        print("\n".join(lines))


def write(written, path=DOCUMENT):
    path.write_text(document.filled(path.read_text(encoding="utf-8"), written), encoding="utf-8")


def compare_running(build, arguments):
    """How well filters run: a measurement of its own, with a document of its own."""
    written = running.parts(running.measure(build, arguments.quick), machine.description(build))
    show(written)
    if arguments.write:
        write(written, RUNNING_DOCUMENT)


def main():
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("--build", required=True, help="the folder of the build with benchmarks")
    parser.add_argument("--quick", action="store_true",
                        help="one round over a few orders, to see that all of it runs")
    parser.add_argument("--again", action="store_true",
                        help="report the last measurement once more")
    parser.add_argument("--write", action="store_true",
                        help="put what was measured into docs/performance.md, with its picture")
    parser.add_argument("--batch", action="store_true",
                        help="measure the batch only; with --write, put that into the document")
    parser.add_argument("--running", action="store_true",
                        help="run filters on signals only; with --write, put what came out into "
                        "docs/running.md")
    parser.add_argument("--apply", action="store_true",
                        help="measure filtering only; with --write, put that into the document")
    arguments = parser.parse_args()
    if arguments.quick and (arguments.write or arguments.again):
        parser.error("a quick run is not a measurement: give --quick, or --write and --again")
    if (arguments.batch or arguments.apply) and (arguments.quick or arguments.again):
        parser.error("--batch and --apply go with --write only")
    if arguments.running and (arguments.batch or arguments.apply or arguments.again):
        parser.error("--running goes with --quick or --write only")

    rounds, min_time = (1, 0.001) if arguments.quick else (5, 0.05)
    kept = Path(arguments.build) / "measured.json"
    try:
        if arguments.running:
            compare_running(arguments.build, arguments)
            return 0
        if arguments.batch or arguments.apply:
            written = {}
            if arguments.batch:
                written["batch"] = report.batch(batch.measure(arguments.build, rounds, False))
            if arguments.apply:
                written["filtering"] = signals.speed_lines(
                    signals.measure_speed(arguments.build, rounds, False))
                written["long file"] = signals.memory_lines(
                    signals.measure_memory(arguments.build, False))
            show(written)
            if arguments.write:
                write(written)
            return 0
        if arguments.again:
            results = json.loads(kept.read_text(encoding="utf-8"))
        else:
            results = measure.measure(arguments.build, rounds, min_time, arguments.quick)
            results["batch"] = batch.measure(arguments.build, rounds, arguments.quick)
            results["filtering"] = signals.measure_speed(arguments.build, rounds, arguments.quick)
            results["long file"] = signals.measure_memory(arguments.build, arguments.quick)
        if not arguments.quick:
            kept.write_text(json.dumps(results), encoding="utf-8")
        written = parts(results, arguments.build)
        show(written)
        print("\n* misses a level of the textbook by more than 0.1 dB")
        if arguments.write:
            write(written)
            picture.draw(results, DOCUMENT.with_suffix(".svg"))
    except (OSError, RuntimeError, ValueError, subprocess.CalledProcessError) as error:
        print(f"compare.py: {error}", file=sys.stderr)
        return 3
    return 0


if __name__ == "__main__":
    sys.exit(main())
