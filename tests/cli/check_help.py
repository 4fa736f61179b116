#!/usr/bin/python3
"""Checks what the command says of itself.

The examples in the help of the command and of each subcommand are run one after the
other, in a folder that is empty at first, by an installation that has a page, and must
end with status 0. The manual page
must be the one that the command prints, name every option of every subcommand, and be
set without a warning.
"""

import argparse
import os
import pathlib
import re
import shutil
import subprocess
import sys
import tempfile


class Check:
    """Counts what was looked at and what was wrong."""

    def __init__(self):
        self.count = 0
        self.problems = []

    def __call__(self, holds, problem):
        self.count += 1
        if not holds:
            self.problems.append(problem)


def output_of(*command):
    run = subprocess.run(command, capture_output=True, encoding="utf-8", check=False)
    if run.returncode != 0 or run.stderr:
        raise SystemExit(f"{' '.join(command)}: status {run.returncode}, {run.stderr}")
    return run.stdout


def block(text, head):
    """The indented lines that follow a head."""
    found = re.search(rf"^{head}:\n((?:  .*\n)+)", text, flags=re.M)
    return [line.strip() for line in found.group(1).splitlines()] if found else []


def options_of(text):
    return sorted(set(re.findall(r"^  .*?(--[a-z][a-z-]*)", "\n".join(
        line for line in text.splitlines() if re.match(r"  (-\w,)?--", line)), flags=re.M)))


def installed(veltane, prefix):
    """The command in an installation of its own, whose page is a small one."""
    (prefix / "bin").mkdir()
    page = prefix / "share" / "veltane" / "veltane.html"
    page.parent.mkdir(parents=True)
    page.write_text("<!doctype html>", encoding="utf-8")
    (prefix / "lib").symlink_to(pathlib.Path(veltane).resolve().parent.parent / "lib")
    return shutil.copy(veltane, prefix / "bin")


def check_examples(check, veltane, who, examples):
    check(len(examples) >= 2, f"{who}: {len(examples)} examples, and there should be two")
    path = f"{pathlib.Path(veltane).parent}:{os.environ['PATH']}"
    with tempfile.TemporaryDirectory() as folder:
        for example in examples:
            run = subprocess.run(example, shell=True, cwd=folder, encoding="utf-8", check=False,
                                 capture_output=True, env={**os.environ, "PATH": path})
            check(run.returncode == 0 and not run.stderr,
                  f"{who}: '{example}' ends with {run.returncode} and says {run.stderr}")


def plain(manual):
    """The page as text, without overstriking."""
    run = subprocess.run(["groff", "-man", "-ww", "-Tascii", "-P-c", "-P-b", "-P-u", "-rLL=500n"],
                         input=manual, capture_output=True, encoding="utf-8", check=False)
    return run.stdout, run.stderr


def main():
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("--veltane", required=True, help="the built command")
    parser.add_argument("manual", type=pathlib.Path, help="the manual page in the repository")
    arguments = parser.parse_args()
    with tempfile.TemporaryDirectory() as prefix:
        return check_all(installed(arguments.veltane, pathlib.Path(prefix)), arguments.manual)


def check_all(veltane, manual_file):
    check = Check()
    manual = output_of(veltane, "--man")
    check(manual_file.read_text(encoding="utf-8") == manual,
          f"{manual_file} is old: make it again with 'veltane --man >docs/veltane.1'")
    page, warnings = plain(manual)
    check(not warnings, f"groff warns: {warnings}")

    main_help = output_of(veltane, "--help")
    check_examples(check, veltane, "veltane", block(main_help, "Examples"))
    for option in options_of(main_help):
        check(option in page, f"the manual page does not have {option}")
    subcommands = [line.split()[0] for line in block(main_help, "Subcommands")]
    check(subcommands, "the help lists no subcommand")
    sections = re.split(r"^   veltane (\S+)$", page, flags=re.M)
    for name in subcommands:
        text = output_of(veltane, name, "--help")
        check_examples(check, veltane, f"veltane {name}", block(text, "Examples"))
        check(name in sections, f"the manual page has no section on {name}")
        section = sections[sections.index(name) + 1] if name in sections else ""
        options = options_of(text)
        check("--help" in options and len(options) >= 2, f"{name}: no options found in its help")
        for option in options:
            check(option == "--help" or re.search(rf"{option}\b", section),
                  f"the section on {name} does not have {option}")
    for problem in check.problems:
        print(problem)
    print(f"{check.count} checks, {len(check.problems)} failed")
    return 1 if check.problems else 0


if __name__ == "__main__":
    sys.exit(main())
