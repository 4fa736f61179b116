#!/usr/bin/python3
"""Runs the blocks of docs/sweeps.md, and compares each way of splitting with one batch.

A block that is run stands below a line `<!-- run: NAME -->`. "veltane" is the command of the build.
Each way runs in a folder of its own, with the lines and a link to the examples.
"""

import argparse
import contextlib
import filecmp
import os
import pathlib
import re
import shutil
import signal
import subprocess
import sys
import tempfile
import time

import machines

ROOT = pathlib.Path(__file__).resolve().parents[2]
PAGE = ROOT / "docs" / "sweeps.md"
sys.path.insert(0, str(ROOT / "bench"))
import document  # noqa: E402
import machine  # noqa: E402

# What the blocks on the page are run after and before, and where.
WAYS = {
    "processes": (["processes"], None),
    "ssh": (["ssh"], machines.ssh),
    "pieces": (["split", "pieces", "join"], None),
    "pieces-ssh": (["split", "pieces-ssh", "join"], machines.ssh),
    "slurm": (["split", "slurm", "join"], machines.slurm),
    "dask": (["split", "dask", "join"], None),
    "dask-cluster": (["split", "dask-cluster", "join"], machines.dask),
    "killed": (["split", "pieces", "join"], None),
}

# Those that leave pieces with results alone, as the page says.
KEEPING = {"slurm", "dask", "dask-cluster"}

PIECE = 10000  # lines, on the page


class Failure(Exception):
    """Something that is not as the page says."""


def blocks(page):
    found = re.findall(r"^<!-- run: ([\w-]+) -->\n```sh\n(.*?)^```", page, flags=re.M | re.S)
    return dict(found)


class Bench:
    """A folder with one batch that others are compared with."""

    def __init__(self, folder, veltane, count, piece):
        self.folder = folder
        self.count = count
        self.path = f"{pathlib.Path(veltane).resolve().parent}:{os.environ['PATH']}"
        self.blocks = {name: self.sized(block, piece) for name, block in
                       blocks(PAGE.read_text(encoding="utf-8")).items()}

    def sized(self, block, piece):
        """A block for the sizes that are asked for, which the page has as a million and 10000."""
        sizes = {"1000000": self.count, "10000": piece, "9999": piece - 1}
        return re.sub(r"\b(1000000|10000|9999)\b", lambda found: str(sizes[found[0]]), block)

    def start(self, name, folder, environment=None):
        """Starts a block in a session of its own."""
        return subprocess.Popen(["bash", "-euo", "pipefail", "-c", self.blocks[name]], cwd=folder,
                                stdin=subprocess.DEVNULL, start_new_session=True,
                                env={**os.environ, "PATH": self.path, **(environment or {})})

    def run(self, name, folder, environment=None):
        """Runs a block. Returns the seconds it took, those of the processors, and the most memory
        of a process in bytes."""
        begin = time.monotonic()
        process = self.start(name, folder, environment)
        _, status, used = os.wait4(process.pid, 0)
        process.returncode = os.waitstatus_to_exitcode(status)
        if process.returncode != 0:
            raise Failure(f"{name}: ends with {process.returncode}")
        return (time.monotonic() - begin, used.ru_utime + used.ru_stime, used.ru_maxrss * 1024)

    def reference(self):
        self.run("lines", self.folder)
        used = self.run("batch", self.folder)
        with (self.folder / "results.jsonl").open("rb") as results:
            count = sum(1 for _ in results)
        if count != self.count:
            raise Failure(f"one batch of {self.count} lines has {count} results")
        return used

    @contextlib.contextmanager
    def place(self, way):
        """A folder for a way, with the lines in it."""
        place = self.folder / way
        place.mkdir()
        (place / "lines.jsonl").symlink_to(self.folder / "lines.jsonl")
        (place / "examples").symlink_to(ROOT / "examples")
        (place / "machines").write_text("machine-1\nmachine-2\n", encoding="utf-8")
        yield place
        shutil.rmtree(place)

    def compare(self, way, place):
        if not filecmp.cmp(place / "results.jsonl", self.folder / "results.jsonl", shallow=False):
            raise Failure(f"{way}: the results are not those of one batch")


def kill_session(leader):
    """Ends a block and all that it started, at once, as when the machine goes off."""
    leader.send_signal(signal.SIGSTOP)  # so that it starts nothing more meanwhile
    for process in pathlib.Path("/proc").iterdir():
        if not process.name.isdigit():
            continue
        with contextlib.suppress(ProcessLookupError, FileNotFoundError):
            if os.getsid(int(process.name)) == leader.pid:
                os.kill(int(process.name), signal.SIGKILL)
    leader.wait()


def kill_and_resume(bench, place):
    """Kills the sweep half-way, and runs it again."""
    bench.run("split", place)
    pieces = sorted(place.glob("piece.????"))
    sweep = bench.start("pieces", place)
    while len(list(place.glob("piece.????.results"))) < len(pieces) // 2:
        if sweep.poll() is not None:
            raise Failure("killed: it ended before it could be killed")
        time.sleep(0.002)
    kill_session(sweep)
    done = {path: path.stat().st_mtime_ns for path in place.glob("piece.????.results")}
    logged = (place / "sweep.log").read_text(encoding="utf-8").count("\n") - 1
    if len(done) == len(pieces):
        raise Failure("killed: nothing was left to resume")
    used = bench.run("pieces", place)
    untouched = sum(path.stat().st_mtime_ns == before for path, before in done.items())
    # One that was done but not logged yet is done again; no more than there are processors.
    if untouched < logged or logged < len(done) - os.cpu_count():
        raise Failure(f"killed: {len(done)} pieces were done, {logged} logged, {untouched} kept")
    bench.run("join", place)
    bench.compare("killed", place)
    print(f"killed: {len(done)} of {len(pieces)} pieces were done, and the others followed",
          flush=True)
    return used


def design_one_again(bench, way, place, environment):
    """Takes the results of one piece away, and has the others left alone."""
    done = sorted(place.glob("piece.????.results"))
    before = {path: path.stat().st_mtime_ns for path in done}
    done[0].unlink()
    bench.run(way, place, environment)
    bench.run("join", place)
    bench.compare(f"{way}, run again", place)
    changed = [path.name for path in done if path.stat().st_mtime_ns != before[path]]
    if changed != [done[0].name]:
        raise Failure(f"{way}, run again: {', '.join(changed)} were designed")


def run_way(bench, way, folder):
    steps, server = WAYS[way]
    with bench.place(way) as place:
        if way == "killed":
            return kill_and_resume(bench, place)
        with server(folder, bench.path) if server else contextlib.nullcontext({}) as environment:
            used = [bench.run(step, place, environment) for step in steps]
            bench.compare(way, place)
            if way in KEEPING:
                design_one_again(bench, way, place, environment)
    return (sum(u[0] for u in used), sum(u[1] for u in used), max(u[2] for u in used))


LABELS = {"processes": "parallel, 10,000 lines a part", "pieces": "parallel, a file a piece",
          "killed": "the second half, after the kill"}


def figures(count, measured, size, load):
    """Rows for the page."""
    rows = [f"- {machine.processor()}, {os.cpu_count()} cores, with a load of {load:.1f} by other "
            f"work when it began", f"- {count:,} lines became {size / 1e9:.2f} GB of results", "",
            "| how | wall time | processor time | memory |",
            "|---|---:|---:|---:|"]
    for way, (seconds, busy, memory) in measured.items():
        # Servers are no children of the command: what they use is not counted.
        served = way in WAYS and WAYS[way][1] is not None
        rest = "| | |" if served else f"| {busy:.0f} s | {memory / 1e6:.0f} MB |"
        rows.append(f"| {LABELS.get(way, way)} | {seconds:.0f} s {rest}")
    return rows


def main():
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("--veltane", required=True, help="the built command")
    parser.add_argument("--count", type=int, default=50000, help="lines of the sweep")
    parser.add_argument("--piece", type=int, default=PIECE, help="lines of a piece")
    parser.add_argument("--write", action="store_true", help="put the figures into the page")
    parser.add_argument("ways", nargs="*", metavar="WAY", help=", ".join(WAYS))
    arguments = parser.parse_args()
    for way in arguments.ways:
        if way not in WAYS:
            parser.error(f"there is no way '{way}'; choose {', '.join(WAYS)}")
    if arguments.piece != PIECE and not set(arguments.ways) <= {"processes", "pieces", "killed"}:
        parser.error(f"the examples take pieces of {PIECE} lines")

    load = os.getloadavg()[0]
    with tempfile.TemporaryDirectory() as name:
        folder = pathlib.Path(name)
        folder.chmod(0o711)  # servers look after their sockets
        bench = Bench(folder, arguments.veltane, arguments.count, arguments.piece)
        failures = 0
        try:
            measured = {"one batch": bench.reference()}
        except Failure as failure:
            print(failure)
            return 1
        for way in arguments.ways or WAYS:
            servers = folder / f"servers-{way}"
            servers.mkdir(mode=0o711)
            try:
                measured[way] = run_way(bench, way, servers)
                print(f"{way}: equal to one batch", flush=True)
            except (Failure, TimeoutError) as failure:
                failures += 1
                print(failure)
                for log in servers.glob("*/log"):
                    print(log.read_text(encoding="utf-8", errors="replace")[-2000:])
        rows = figures(arguments.count, measured, (folder / "results.jsonl").stat().st_size, load)
        print("\n".join(rows))
        if arguments.write and not failures:
            filled = document.filled(PAGE.read_text(encoding="utf-8"), {"million": rows})
            PAGE.write_text(filled, encoding="utf-8")
    return 1 if failures else 0


if __name__ == "__main__":
    sys.exit(main())
