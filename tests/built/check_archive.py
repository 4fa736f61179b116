#!/usr/bin/env python3
"""Links a program with libfiltermath.a as others would, and compares what it computes.

Whatever the program's own options are, the archive's code must do the same.
"""

import argparse
import os
import subprocess
import sys
import tempfile


def build_and_run(options, arguments, folder):
    program = os.path.join(folder, "zeros")
    archives = [os.path.join(arguments.build, archive) for archive in
                ("filter-support/libfiltermath.a", "runtime/libfiltermath-runtime.a")]
    includes = [f"-I{os.path.join(arguments.source, part)}" for part in
                ("filter-support/include", "brontal/include")]
    source = os.path.join(arguments.source, "tests/built/zeros.cpp")
    subprocess.run([arguments.compiler, "-std=c++20", *options, *includes, source, *archives,
                    "-o", program], check=True)
    return subprocess.run([program], capture_output=True, text=True)


def main():
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("--compiler", required=True)
    parser.add_argument("--source", required=True, help="the checkout")
    parser.add_argument("--build", required=True, help="its build folder")
    arguments = parser.parse_args()

    faults = []
    printed = {}
    with tempfile.TemporaryDirectory() as folder:
        for options in (["-O0"], ["-O1"], ["-O2"], ["-O0", "-flto"], ["-O2", "-flto"]):
            outcome = build_and_run(options, arguments, folder)
            printed[" ".join(options)] = outcome.stdout
            if outcome.returncode != 0:
                faults.append(f"{' '.join(options)}:\n{outcome.stderr}")
    if len(set(printed.values())) != 1:
        faults.append("the zeros differ with the options of the program")
    if next(iter(printed.values())).count("\n") != sum(range(1, 13)):
        faults.append("not all zeros were printed")
    for fault in faults:
        print(fault)
    return 1 if faults else 0


if __name__ == "__main__":
    sys.exit(main())
