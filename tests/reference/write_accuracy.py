#!/usr/bin/python3
"""Writes docs/accuracy.md and docs/accuracy.svg from what measure_accuracy.py measured.

The text is docs/accuracy.md.in, in which {{name}} stands for something measured
and {{$ command}} for a command and what it prints.
"""

import argparse
import pathlib
import re
import subprocess
import sys

import accuracy_facts as facts
import accuracy_tables as tables
from accuracy_picture import draw
from designs import FAMILIES
from measure_accuracy import load

ROOT = pathlib.Path(__file__).resolve().parents[2]


def measured_parts(results, minutes, veltane):
    parts = facts.text_facts(results)
    parts["safe_sections"] = tables.safe_tables(results, "sections")
    parts["safe_roots"] = tables.safe_tables(results, "roots")
    if parts["safe_roots"] == parts["safe_sections"]:
        parts["safe_roots"] = "The table is the same, cell by cell."
    parts["safe_transfer"] = tables.safe_tables(results, "transfer")
    for family in FAMILIES:
        parts[f"map_{family}"] = tables.map_table(results, family)
    parts["numerator_table"] = tables.numerator_table(results)
    parts["bandpass_table"] = tables.table(
        ["cutoffs", "order", "numerator / true", "gain / true"],
        facts.bandpass_numerators(veltane))
    parts["underflow_table"] = tables.table(
        ["cutoff", "butterworth to order", "gain there", "its error", "chebyshev-1 to order",
         "gain there", "its error"], facts.underflow_rows(veltane))
    parts["minutes"] = f"{minutes:.1f}"
    parts["versions"] = facts.versions(veltane.resolve().parents[1])
    return parts


def transcript(command, veltane):
    """The command as a user types it, and what it prints."""
    name, _, arguments = command.partition(" ")
    assert name == "script/run"
    run = subprocess.run(f"{veltane.resolve()} {arguments}", shell=True, cwd=ROOT, text=True,
                         stdout=subprocess.PIPE, stderr=subprocess.STDOUT, check=True)
    return f"$ {command}\n{run.stdout.rstrip()}"


def filled(template, parts, veltane):
    used = set()

    def value(match):
        name = match[1]
        if name.startswith("$ "):
            return transcript(name[2:], veltane)
        used.add(name)
        return str(parts[name])

    text = re.sub(r"\{\{(.+?)\}\}", value, template)
    if unused := parts.keys() - used:
        raise KeyError(f"measured, but not in the text: {', '.join(sorted(unused))}")
    return text


def main():
    parser = argparse.ArgumentParser(description=__doc__.split("\n", 1)[0])
    parser.add_argument("veltane", type=pathlib.Path, help="the command that was measured")
    parser.add_argument("results", help="what measure_accuracy.py --output wrote")
    arguments = parser.parse_args()

    results, minutes = load(arguments.results)
    template = (ROOT / "docs" / "accuracy.md.in").read_text(encoding="utf-8")
    parts = measured_parts(results, minutes, arguments.veltane)
    text = filled(template, parts, arguments.veltane)
    (ROOT / "docs" / "accuracy.md").write_text(text, encoding="utf-8")
    draw(results, ROOT / "docs" / "accuracy.svg")
    return 0


if __name__ == "__main__":
    sys.exit(main())
