#!/usr/bin/python3
"""Designs the pieces of a sweep with Dask, and looks at the results.

  with_dask.py piece.????                          processes of this machine
  with_dask.py --scheduler tcp://HOST:8786 ...     the workers of a cluster

All workers see the same folder. A piece that has results is not designed again.
"""

import argparse
import json
import math
import pathlib
import subprocess

import dask
from dask import bag

LINES_OF_A_PIECE = 10000


def design(piece, index):
    """Writes the results of a piece, whole or not at all.

    Returns the file that they are in.
    """
    results = f"{piece}.results"
    if not pathlib.Path(results).exists():
        run = subprocess.run(
            ["veltane", "design", "--batch", piece, "-o", results,
             "--first-line", str(index * LINES_OF_A_PIECE + 1)],
            check=False, capture_output=True, text=True)
        if run.returncode not in (0, 1):  # 1: some lines failed, and say so in their results
            raise RuntimeError(run.stderr)
    return results


def largest_pole(line):
    """The radius of the pole nearest to the unit circle; 0 of a line that failed."""
    poles = json.loads(line).get("dictionary", {}).get("poles", [])
    return max((math.hypot(*pole) for pole in zip(poles[::2], poles[1::2])), default=0.0)


def main():
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("--scheduler", help="the address of a cluster")
    parser.add_argument("pieces", nargs="+", type=lambda name: str(pathlib.Path(name).resolve()))
    arguments = parser.parse_args()
    if arguments.scheduler:
        from dask.distributed import Client  # only a cluster needs it
        Client(arguments.scheduler)
    else:
        dask.config.set(scheduler="processes")

    pieces = bag.from_sequence(enumerate(arguments.pieces), npartitions=len(arguments.pieces))
    results = pieces.starmap(lambda index, piece: design(piece, index)).compute()
    radius = bag.read_text(results).map(largest_pole).max().compute()
    print(f"{len(results)} pieces; the pole nearest to the unit circle has the radius {radius:.9f}")


if __name__ == "__main__":
    main()
