#!/usr/bin/python3
"""Runs the commands in the documents and compares what they print.

Numbers may differ by 1e-9 of themselves, and columns by their spaces: the last
digits of a design depend on the machine's mathematics library.

In a block that begins with ```console, a line that begins with "$ " is a
command, lines that begin with ">" go on with it, and those up to the next one are what it prints, on standard output
and standard error together. "veltane" is the built command, and "script/run" stands
for it. The commands of a document run one after the other in a folder with links to
all that the repository holds, so that what they write goes with it.
"""

import argparse
import math
import os
import pathlib
import re
import subprocess
import sys
import tempfile


def examples(text):
    """Yields (command, expected output) for each command in the text."""
    for block in re.findall(r"^```console\n(.*?)^```", text, flags=re.M | re.S):
        for part in re.split(r"^\$ ", block, flags=re.M)[1:]:
            lines = part.splitlines(keepends=True)
            count = next((i for i, line in enumerate(lines) if i > 0 and not line.startswith(">")),
                         len(lines))
            command = lines[0] + "".join(re.sub("^> ?", "", line) for line in lines[1:count])
            yield command.removesuffix("\n"), "".join(lines[count:])


def as_built(command):
    """The command with the program in the place of the script that builds it."""
    if command == "script/run":
        return "veltane design"
    return re.sub(r"(^|[|] *)script/run(?= )", r"\1veltane", command)


NUMBER = re.compile(r"(?<![\w.])-?\d+(?:\.\d+)?(?:e[+-]?\d+)?")


def same(printed, shown):
    """Whether two texts agree apart from the last digits of their numbers."""
    def skeleton(text):
        return re.sub(r" +", " ", NUMBER.sub("#", text))

    pairs = zip(NUMBER.findall(printed), NUMBER.findall(shown))
    return skeleton(printed) == skeleton(shown) and all(
        math.isclose(float(a), float(b), rel_tol=1e-9, abs_tol=1e-12) for a, b in pairs)


def main():
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("--veltane", required=True, help="the built command")
    parser.add_argument("root", type=pathlib.Path, help="the folder with the documents")
    arguments = parser.parse_args()

    documents = [arguments.root / "README.md", *sorted((arguments.root / "docs").rglob("*.md"))]
    # The Python that runs this has what the examples import.
    found_first = f"{pathlib.Path(arguments.veltane).resolve().parent}:" \
                  f"{pathlib.Path(sys.executable).parent}:{os.environ['PATH']}"
    count = failures = 0
    for document in documents:
        with tempfile.TemporaryDirectory() as folder:
            for entry in arguments.root.resolve().iterdir():
                (pathlib.Path(folder) / entry.name).symlink_to(entry)
            for command, expected in examples(document.read_text(encoding="utf-8")):
                count += 1
                run = subprocess.run(
                    as_built(command), shell=True, cwd=folder, encoding="utf-8",
                    env={**os.environ, "PATH": found_first}, stdout=subprocess.PIPE,
                    stderr=subprocess.STDOUT, check=False)
                if not same(run.stdout, expected):
                    failures += 1
                    print(f"{document.relative_to(arguments.root)}: '{command}' prints\n"
                          f"{run.stdout}and not\n{expected}")
    print(f"{count} commands in {len(documents)} documents, {failures} differ")
    return 1 if failures or count == 0 else 0


if __name__ == "__main__":
    sys.exit(main())
