#!/usr/bin/python3
"""Writes the pages that follow from what they describe: docs/command.md and docs/headers.md.

  reference.py VELTANE
"""

import pathlib
import re
import subprocess
import sys

ROOT = pathlib.Path(__file__).resolve().parent.parent

SUBCOMMANDS = ("design", "check", "plot", "export", "estimate", "apply", "response", "page")

# The rooms in the order in which a reader wants them, with what they are to a program.
ROOMS = {
    "filter-support": "The mathematics. [`filtermath.h`](../filter-support/include/filtermath.h) "
                      "includes all of these; they need no host.",
    "designer": "A filter as the box makes it: settings in, what it published out.",
    "analysis": "What filters do, and what arithmetic does to them: functions over coefficients.",
    "verdict": "What came out, in words.",
    "layouts": "Files for other programs.",
    "pictures": "Curves of every panel.",
    "signals": "Filters that run over sound files and columns.",
    "patchbay": "The small host.",
    "runtime": "Memory and symbols, for programs without a host.",
    "brontal": "The host's object interface, in C.",
}


def printed(veltane, *words):
    return subprocess.run([veltane, *words], check=True, capture_output=True, text=True).stdout


def command_page(veltane):
    lines = ["# The command", "",
             "What `veltane --help` and the help of each subcommand print. `veltane --man | man -l -` "
             "shows the same as a manual page.", "",
             "```console", "$ veltane --help", printed(veltane, "--help") + "```"]
    for subcommand in SUBCOMMANDS:
        lines += ["", f"## veltane {subcommand}", "", "```console",
                  f"$ veltane {subcommand} --help",
                  printed(veltane, subcommand, "--help") + "```"]
    return "\n".join(lines) + "\n"


def purpose(header):
    """The first sentence of a header's first comment, in one line."""
    text = header.read_text(encoding="utf-8")
    comment = re.match(r"/\*\*?(.*?)\*/|((?://[^\n]*\n)+)", text, flags=re.S)
    if not comment:
        raise ValueError(f"{header} does not begin with what it is")
    words = re.sub(r"^\s*(?:\*|//) ?", "", comment[1] or comment[2], flags=re.M)
    paragraph = " ".join(words.strip().split("\n\n")[0].split())
    return re.split(r"(?<=[.])\s", paragraph)[0].removesuffix(".") + "."


def headers_page():
    lines = ["# C++ headers", "",
             "The public headers, a folder each. Every function in them says what it is for, the "
             "shapes and units of what it takes, who owns what, what happens when it fails, what "
             "it costs and what limits its accuracy. [Linking filtermath]"
             "(../README.md#linking-filtermath) says how to link."]
    for room, what in ROOMS.items():
        lines += ["", f"## {room}", "", what, "", "| header | what it holds |", "|---|---|"]
        for header in sorted((ROOT / room / "include").rglob("*.h")):
            place = header.relative_to(ROOT)
            name = header.relative_to(ROOT / room / "include")
            lines.append(f"| [`{name}`](../{place}) | {purpose(header)} |")
    return "\n".join(lines) + "\n"


def main():
    veltane = sys.argv[1]
    (ROOT / "docs" / "command.md").write_text(command_page(veltane), encoding="utf-8")
    (ROOT / "docs" / "headers.md").write_text(headers_page(), encoding="utf-8")


if __name__ == "__main__":
    main()
