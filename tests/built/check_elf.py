#!/usr/bin/env python3
"""Reads every program and library in a build folder and checks how it loads and is hardened.

An empty element of a run path is the folder that a program is started in, and so is a
relative one: whoever puts a library there has it run.
"""

import argparse
import os
import re
import subprocess
import sys


def elf_type(path):
    """1 for an object file, 2 for a program at a fixed address, 3 for one that can be moved."""
    with open(path, "rb") as file:
        head = file.read(18)
    if head[:4] != b"\x7fELF":
        return None
    return int.from_bytes(head[16:18], "little" if head[5] == 1 else "big")


def programs(folder, left_out):
    for parent, folders, names in os.walk(folder):
        folders[:] = [name for name in folders if name not in left_out]
        for name in names:
            path = os.path.join(parent, name)
            if not os.path.islink(path) and elf_type(path) in (2, 3):
                yield path


def readelf(option, path):
    command = ["readelf", "--wide", option, path]
    environment = {**os.environ, "LC_ALL": "C"}
    return subprocess.run(command, check=True, capture_output=True, text=True,
                          env=environment).stdout


def run_path_faults(path):
    for kind, run_path in re.findall(r"\((RPATH|RUNPATH)\).*\[(.*)\]", readelf("-d", path)):
        for element in dict.fromkeys(run_path.split(":")):
            if not element.startswith(("/", "$ORIGIN", "${ORIGIN}")):
                yield f"{kind} '{run_path}' has the element '{element}'"


def hardening_faults(path):
    dynamic = readelf("-d", path)
    segments = readelf("-l", path)
    if elf_type(path) != 3:
        yield "is at a fixed address (no PIE)"
    if "GNU_RELRO" not in segments or not re.search(r"\(FLAGS(_1)?\).*\b(BIND_)?NOW\b", dynamic):
        yield "has no full RELRO"
    if re.search(r"GNU_STACK.* RWE ", segments):
        yield "has a stack that code runs on"


def uses(paths, pattern):
    return any(re.search(pattern, readelf("--dyn-syms", path)) for path in paths)


def main():
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("--hardened", action="store_true", help="check the hardening as well")
    parser.add_argument("--at-least", type=int, default=1, help="how many must be there")
    parser.add_argument("--leave-out", action="append", default=[], help="the name of a folder")
    parser.add_argument("folder")
    arguments = parser.parse_args()

    found = sorted(programs(arguments.folder, arguments.leave_out))
    faults = [f"{path}: {fault}" for path in found for fault in run_path_faults(path)]
    if len(found) < arguments.at_least:
        faults.append(f"there are {len(found)} programs, not {arguments.at_least} or more")
    if arguments.hardened:
        faults += [f"{path}: {fault}" for path in found for fault in hardening_faults(path)]
        # Not every program has something to protect; all of them together have.
        if not uses(found, r"\b__stack_chk_fail\b"):
            faults.append("nothing is built with the stack protector")
        if not uses(found, r"\b__(memcpy|memmove|memset|strcpy|read|snprintf)_chk\b"):
            faults.append("nothing is built with _FORTIFY_SOURCE")
    for fault in faults:
        print(fault)
    print(f"{len(found)} programs and libraries read")
    return 1 if faults else 0


if __name__ == "__main__":
    sys.exit(main())
