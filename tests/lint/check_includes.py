#!/usr/bin/python3
"""Holds the includes of all rooms against the table in docs/architecture.md.

  check_includes.py REPOSITORY

A row of the table names a room and the rooms that it may include, besides itself. Which room an
include belongs to follows from the file that it finds. A room that is not in the table, an include
of our own that finds no file, and an arrow that is not in the table are problems; so is an arrow in
the table that no file needs, and a circle.
"""

import argparse
import pathlib
import re
import sys

INCLUDE = re.compile(r'^\s*#\s*include\s+"([^"]+)"', re.MULTILINE)
ROW = re.compile(r"^\| `([\w/-]+)/` \|[^|]*\|([^|]*)\|$", re.MULTILINE)
ENDINGS = (".h", ".cpp", ".c", ".inc")


def table(page):
    """What each room may include, from the page."""
    rows = ROW.findall(page.read_text(encoding="utf-8"))
    return {room: set(re.findall(r"`([\w/-]+)/`", allowed)) for room, allowed in rows}


def room_of(path, rooms):
    """The innermost room that a file is in; none outside of all."""
    holding = [room for room in rooms if path.parts[:room.count("/") + 1] == tuple(room.split("/"))]
    return max(holding, key=len, default=None)


def places(repository, rooms):
    """Where the compiler may look, for each room: its public folder, or the room itself."""
    found = {}
    for room in rooms:
        folder = repository / room
        found[room] = [folder / "include" if (folder / "include").is_dir() else folder]
        if room.startswith("cli"):
            found[room] = [repository / "cli"]
    return found


def target_of(file, include, repository, rooms):
    """The file that an include finds: beside the including one, in its room, or in a public folder."""
    own = room_of(file.relative_to(repository), rooms)
    nearby = [file.parent, repository / own / "src", repository / own]
    for folder in [*nearby, *(place for room in places(repository, rooms).values() for place in room)]:
        if (folder / include).is_file():
            return (folder / include).resolve()
    return None


def circle(allowed):
    """A room that reaches itself; none where there is none."""
    def reached(room, seen):
        for other in allowed.get(room, ()):
            if other not in seen:
                seen.add(other)
                reached(other, seen)
        return seen
    return next((room for room in allowed if room in reached(room, set())), None)


def problems_of(repository):
    allowed = table(repository / "docs" / "architecture.md")
    if not allowed:
        return ["docs/architecture.md has no table of rooms"], 0
    found, used, count = [], set(), 0
    unknown = {room for others in allowed.values() for room in others} - allowed.keys()
    found += [f"the table allows '{room}/', which is not a room of it" for room in sorted(unknown)]
    if (room := circle(allowed)) is not None:
        found.append(f"the table leads from '{room}/' back to it")
    for cmake in sorted(repository.glob("*/CMakeLists.txt")):
        name = cmake.parent.name
        if name not in allowed and name not in ("tests", "bench", "examples", "build"):
            found.append(f"'{name}/' is not in the table")
    for room in allowed:
        for file in sorted((repository / room).rglob("*")):
            if "node_modules" in file.parts:
                continue
            if file.suffix not in ENDINGS or room_of(file.relative_to(repository), allowed) != room:
                continue
            for include in INCLUDE.findall(file.read_text(encoding="utf-8")):
                count += 1
                where = file.relative_to(repository)
                target = target_of(file, include, repository, allowed)
                if target is None:
                    found.append(f'{where} includes "{include}", which does not exist')
                    continue
                other = room_of(target.relative_to(repository), allowed)
                used.add((room, other))
                if other != room and other not in allowed[room]:
                    found.append(f'{where} includes "{include}": {room}/ may not use {other}/')
    for room, others in allowed.items():
        found += [f"the table lets {room}/ use {other}/, and no file does"
                  for other in sorted(others) if (room, other) not in used]
    return found, count


def main():
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("repository", type=pathlib.Path)
    found, count = problems_of(parser.parse_args().repository.resolve())
    for problem in found:
        print(problem)
    print(f"{count} includes, {len(found)} problems")
    return 1 if found or count == 0 else 0


if __name__ == "__main__":
    sys.exit(main())
