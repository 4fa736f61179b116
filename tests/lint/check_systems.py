#!/usr/bin/python3
"""Looks for what only one operating system has, where the others would have to compile it.

  check_systems.py REPOSITORY

The rooms below are for every system. A source of theirs that includes a header of POSIX alone needs
another that Windows has in its place, FOLDER/windows/NAME.cpp, unless the build leaves it out there;
a header of Windows alone is for such sources only. Which system it is compiled for a source asks only
where the list says so.
"""

import argparse
import pathlib
import re
import sys

POSIX = ("dlfcn.h", "elf.h", "link.h", "poll.h", "pwd.h", "spawn.h", "termios.h", "sys/ioctl.h",
         "sys/mman.h", "sys/prctl.h", "sys/resource.h", "sys/socket.h", "sys/syscall.h",
         "sys/uio.h", "sys/wait.h")
WINDOWS = ("windows.h", "io.h", "shellapi.h")
INCLUDE = re.compile(r"^\s*#\s*include\s+<([^>]+)>", re.MULTILINE)
ASKS = re.compile(r"^\s*#\s*(?:if|ifdef|ifndef|elif)\b.*\b(_WIN32|__linux__|__APPLE__|__unix__)\b",
                  re.MULTILINE)
ROOMS = ("runtime", "filter-support", "veltane", "patchbay", "analysis", "text", "designer",
         "verdict", "layouts", "pictures", "signals", "cli", "page")
# Left out on Windows by their CMakeLists.txt: only what has a place taken there uses them.
LEFT_OUT = {"patchbay/src/elf.cpp", "cli/design/workers.cpp", "cli/design/workers.h"}
# The C library's functions for the same number have other names there.
MAY_ASK = {"filter-support/src/platform.cpp"}


def problems_of(repository):
    found, count = [], 0
    for room in ROOMS:
        for file in sorted((repository / room).rglob("*")):
            if file.suffix not in (".h", ".cpp") or "node_modules" in file.parts:
                continue
            count += 1
            where = str(file.relative_to(repository))
            text = file.read_text(encoding="utf-8")
            own = file.parent.name == "windows"
            replaced = (file.parent / "windows" / file.name).is_file()
            for header in INCLUDE.findall(text):
                if header in POSIX and (own or not replaced) and where not in LEFT_OUT:
                    found.append(f"{where} includes <{header}>, which Windows has not: it needs a "
                                 "source of the same name in a folder windows/ beside it")
                if header in WINDOWS and not own:
                    found.append(f"{where} includes <{header}>, which only Windows has")
            if ASKS.search(text) and where not in MAY_ASK:
                found.append(f"{where} asks which system it is compiled for; the build "
                             "chooses a source")
    found += [f"{name} is not there; take it out of the list" for name in sorted(LEFT_OUT | MAY_ASK)
              if not (repository / name).is_file()]
    return found, count


def main():
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("repository", type=pathlib.Path)
    found, count = problems_of(parser.parse_args().repository.resolve())
    for problem in found:
        print(problem)
    print(f"{count} files, {len(found)} problems")
    return 1 if found or count == 0 else 0


if __name__ == "__main__":
    sys.exit(main())
