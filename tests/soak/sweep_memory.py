#!/usr/bin/python3
"""Refuses the memory that the command asks for, one allocation after the other.

Each case is a command line. It runs undisturbed first; then once for each of its
allocations with that one refused, and once with that one and all after it refused, as by
a machine that has no more. However it ends, it must

- end by itself, without a signal, and leave no process behind that holds its output,
- end as the undisturbed run did, with the same output, sentences and files, or with
  status 3 and one sentence more, which says that memory ran out,
- with status 3, have printed nothing but whole lines of the undisturbed output, and left
  each file as it was or as the undisturbed run leaves it (when all is written, something
  may still fail in tidying up),
- leave no temporary file behind.

    sweep_memory.py --veltane FILE --refuse FILE [--sample COUNT] [CASE ...]

--sample takes that many allocations of each case instead of all of them. Cases are chosen
by words that their names hold.
"""

import argparse
import concurrent.futures
import itertools
import os
import pathlib
import re
import shutil
import signal
import struct
import subprocess
import sys
import tempfile
import threading

SECONDS = 120
EVER = 2**62
LAST = 4
GOLDEN_RATIO = (5**0.5 - 1) / 2
OLD = b"what was there before\n"
SENTENCE = re.compile(rb"veltane: [^\n]*(out of memory|Cannot allocate memory)[^\n]*\n")

LINES = """{"order": 4, "topology": "butterworth"}
{"response": "bandpass", "frequency": [300, 3400], "tf-output": "on"}
{"units": "normalized", "frequency": 0.3}
"""

INPUTS = {
    "lines": LINES,
    "wrong-lines": LINES + '{"order": "five"}\n[1]\n',
    "broken.json": '{"settings": {"order": ',
    "no-design.json": '{"order": 4}',
}

BAND = "--response bandpass --frequency 300 3400"
TARGETS = ("scipy octave c c-float cpp cpp-float cmsis cmsis-q31 cmsis-q15 webaudio "
           "webaudio-sections faust csound supercollider sox ffmpeg csv json").split()


def cases():
    """Pairs of a name and a command line. `new` is not a file yet, `old` already is."""
    yield "help", "--help"
    yield "manual", "--man"
    yield "version", "--version"
    for subcommand in "design check plot export estimate".split():
        yield f"{subcommand} help", f"{subcommand} --help"
    yield "design text", f"design {BAND} --order 4 --tf-output on"
    yield "design json", "design --topology chebyshev-1 --order 5 --format json"
    yield "design clipped", "design --order 300 --topology butterworth --zpk-output off"
    yield "design new file", "design --format json -o new"
    yield "design old file", "design -o old"
    yield "design from", "design --from saved.json --order 6"
    yield "batch", "design --batch lines"
    yield "batch file", "design --batch lines -o old --order 3"
    yield "batch errors", "design --batch wrong-lines"
    yield "check", "check --topology butterworth --order 4 --frequency 1000"
    yield "check problem", "check --response bandpass --frequency 3400 300 --format json"
    yield "check saved", "check saved.json -o new"
    yield "estimate", "estimate --passband 1000 --stopband 1500 --ripple 1 --attenuation 60"
    yield "estimate json", ("estimate --passband 300 3400 --stopband 200 4000 --ripple 0.5 "
                            "--attenuation 40 --format json")
    for target in TARGETS:
        yield f"export {target}", f"export --for {target} {BAND} --order 3 -o new.{target}"
    yield "export normalised", f"export --for c {BAND} --normalise --spread-gain"
    yield "plot svg", "plot -o new.svg --order 3"
    yield "plot png", "plot -o old.png --from saved.json"
    yield "plot compared", "plot -o new.svg --order 3 --compare saved.json"
    for number, wrong in enumerate((
            "", "nope", "design --ordr 5", "design --order five", "design -o nowhere/file",
            "design --from missing", "design --from broken.json", "check no-design.json",
            "design --response bandpass --frequency 3", "export --for nope",
            "export --for csv --spread-gain=1", "estimate --passband 1000",
            "design --module missing.so", "plot -o new.txt"), start=1):
        yield f"wrong {number}", wrong


class Outcome:
    """How a run ended: status, what it printed and said, and the files in its folder."""

    def __init__(self, status, printed, said, files, count):
        self.status, self.printed, self.said = status, printed, said
        self.files, self.count = files, count

    def __eq__(self, other):
        return (self.status, self.printed, self.said, self.files) == \
            (other.status, other.printed, other.said, other.files)


class Place:
    """A folder to run in, with a folder for temporary files beside it."""

    def __init__(self, top, veltane, refuse, saved):
        self.folder = pathlib.Path(tempfile.mkdtemp(dir=top))
        self.work, self.temporary = self.folder / "work", self.folder / "temporary"
        self.counter = self.folder / "counter"
        self.veltane, self.refuse = veltane, refuse
        self.inputs = {name: text.encode() for name, text in INPUTS.items()}
        self.inputs.update({"saved.json": saved, "old": OLD, "old.png": OLD})
        self.temporary.mkdir()
        self.tidy()

    def tidy(self):
        shutil.rmtree(self.work, ignore_errors=True)
        self.work.mkdir()
        for name, text in self.inputs.items():
            (self.work / name).write_bytes(text)

    def files(self):
        found = {f"{path.parent.name}/{path.name}": path.read_bytes()
                 for path in itertools.chain(self.work.iterdir(), self.temporary.iterdir())}
        if found != {f"work/{name}": text for name, text in self.inputs.items()}:
            self.tidy()
        return found

    def run(self, line, first, last, unnamed):
        self.counter.write_bytes(bytes(8))
        environment = {**os.environ, "LD_PRELOAD": self.refuse, "TMPDIR": str(self.temporary),
                       "REFUSE_COUNTER": str(self.counter), "REFUSE_FIRST": str(first),
                       "REFUSE_LAST": str(last)}
        if not unnamed:
            environment["REFUSE_UNNAMED"] = "1"
        # Its own session, so that what hangs can be ended with all that it has started.
        with subprocess.Popen([self.veltane, *line.split()], cwd=self.work, env=environment,
                              stdin=subprocess.DEVNULL, stdout=subprocess.PIPE,
                              stderr=subprocess.PIPE, start_new_session=True) as process:
            try:
                printed, said = process.communicate(timeout=SECONDS)
            except subprocess.TimeoutExpired:
                os.killpg(process.pid, signal.SIGKILL)
                printed, said = process.communicate()
                said += b"(ended: it went on for ever)"
        count = struct.unpack("=Q", self.counter.read_bytes())[0]
        return Outcome(process.returncode, printed, said, self.files(), count)


def changed(files, before):
    """The names of files that are not as they were."""
    return {name for name in files.keys() | before.keys() if files.get(name) != before.get(name)}


def problem_of(outcome, right, inputs, may_be_right):
    """What is wrong with how a run ended; None when nothing is."""
    if outcome == right:
        return None if may_be_right else "it runs as if nothing had been refused"
    if outcome.status != 3:
        return f"it ends with {outcome.status}, and the undisturbed run does with {right.status}"
    if outcome.files not in (inputs, right.files):
        return f"files are left or changed: {sorted(changed(outcome.files, inputs))}"
    if not right.printed.startswith(outcome.printed) or outcome.printed[-1:] not in (b"", b"\n"):
        return "it prints what the undisturbed run does not"
    lines = outcome.said.splitlines(keepends=True)
    if not lines or not SENTENCE.fullmatch(lines[-1]):
        return "it does not say that memory ran out"
    if not right.said.startswith(b"".join(lines[:-1])):
        return "it says more than one sentence"
    return None


class Sweep:
    def __init__(self, options, top):
        self.options, self.top = options, top
        saved = subprocess.run([options.veltane, "design", "--format", "json", "--order", "3",
                                "--name", "saved"], capture_output=True, check=True).stdout
        self.saved, self.places = saved, threading.local()
        self.refuse = shutil.copy(options.refuse, top)  # LD_PRELOAD takes no names with spaces
        self.runs, self.problems = 0, 0

    def run(self, line, first, last, unnamed):
        if not hasattr(self.places, "mine"):
            self.places.mine = Place(self.top, self.options.veltane, self.refuse, self.saved)
        place = self.places.mine
        return place.run(line, first, last, unnamed), \
            {f"work/{name}": text for name, text in place.inputs.items()}

    def tell(self, problem):
        self.problems += 1
        print(problem, flush=True)

    def numbers(self, count, shift):
        """The allocations to refuse: all until a run makes fewer; or a sample, evenly spaced,
        with the first and with the last ones, which are made around the output."""
        sample = self.options.sample
        if sample is None:
            return itertools.count(1)
        spread = {1 + int((i + shift) * count / sample) for i in range(sample)}
        return sorted(spread | {1} | set(range(max(1, count - LAST), count + 1)))

    def case(self, pool, name, line, shift):
        right, inputs = self.run(line, 0, 0, True)
        again, _ = self.run(line, 0, 0, True)
        if right != again or not 0 <= right.status <= 2 or right.count == 0:
            self.tell(f"{name}: 'veltane {line}' does not run undisturbed: "
                      f"status {right.status}, {right.said.decode()}")
            return
        writes = "-o" in line.split() and right.status != 2

        def one(number):
            runs = [(number, True), (EVER, True)] + ([(number, False)] if writes else [])
            counts, problems = [], []
            for last, unnamed in runs:
                outcome, _ = self.run(line, number, last, unnamed)
                counts.append(outcome.count)
                # Without any memory nothing can be done.
                if problem := problem_of(outcome, right, inputs, (number, last) != (1, EVER)):
                    how = "and all after it " if last == EVER else ""
                    where = "" if unnamed else ", where all files have names"
                    problems.append(
                        f"{name}: 'veltane {line}' with allocation {number} {how}refused{where}: "
                        f"{problem}; it says {outcome.said.decode(errors='replace')!r}")
            return counts, problems, min(counts) < number

        before = self.runs
        numbers = iter(self.numbers(right.count, shift))
        ended = False
        while not ended and (chunk := list(itertools.islice(numbers, 64))):
            for counts, problems, fewer in pool.map(one, chunk):
                self.runs += len(counts)
                ended = ended or fewer
                for problem in problems:
                    self.tell(problem)
        print(f"{name}: {right.count} allocations, {self.runs - before} runs", flush=True)


def main():
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("--veltane", required=True, type=os.path.abspath)
    parser.add_argument("--refuse", required=True, type=os.path.abspath)
    parser.add_argument("--sample", type=int)
    parser.add_argument("cases", nargs="*")
    options = parser.parse_args()
    chosen = [(name, line) for name, line in cases()
              if not options.cases or any(word in name for word in options.cases)]
    with tempfile.TemporaryDirectory() as top, \
            concurrent.futures.ThreadPoolExecutor(os.cpu_count()) as pool:
        sweep = Sweep(options, top)
        for index, (name, line) in enumerate(chosen):
            # All cases begin alike: what one sample leaves out, another one takes.
            sweep.case(pool, name, line, index * GOLDEN_RATIO % 1)
    print(f"{len(chosen)} cases, {sweep.runs} runs, {sweep.problems} problems")
    return 1 if sweep.problems or not chosen else 0


if __name__ == "__main__":
    sys.exit(main())
