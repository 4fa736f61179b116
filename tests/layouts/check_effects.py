#!/usr/bin/python3
"""Exports filters as effects, and runs them in their program on noise at full scale and on the
input that gets loudest: nothing clips that is said not to, and the noise is what is said.

  check_effects.py --veltane PROGRAM sox|ffmpeg
"""

import argparse
import json
import pathlib
import re
import subprocess
import sys
import tempfile

import numpy
import scipy.io.wavfile
import scipy.signal

import programs

SAMPLERATE = 48000
COUNT = 48000
FULL_SCALE = 2.0 ** 31

CASES = [
    ["butterworth", "bandpass", 8, 20, 20000],
    ["butterworth", "lowpass", 2, 30],
    ["butterworth", "bandstop", 10, 900, 1100],
    ["chebyshev-1", "lowpass", 12, 3000],
    ["chebyshev-1", "lowpass", 40, 2000],
    ["chebyshev-1", "highpass", 7, 100],
    ["chebyshev-2", "bandpass", 6, 300, 3400],
]


def settings(case):
    family, response, order, *cutoffs = case
    return ["--topology", family, "--response", response, "--order", str(order), "--frequency",
            *map(str, cutoffs), "--samplerate", str(SAMPLERATE)]


def exported(veltane, target, case, *options):
    return programs.run(veltane, "export", "--for", target, *settings(case), *options)


def sections_of(veltane, case):
    rows = json.loads(exported(veltane, "json", case))["sections"]
    return numpy.array([[b0, b1, b2, 1, a1, a2] for b0, b1, b2, a1, a2 in rows])


def decibels(ratio):
    return 20 * numpy.log10(ratio)


def noise_below_peak(found, wanted):
    error, rms = numpy.sqrt(numpy.mean((found - wanted) ** 2)), numpy.sqrt(numpy.mean(wanted ** 2))
    return -decibels(error / (4 * rms))


class Sox:
    """Files of 32 bits, and what SoX says on its way."""

    def __init__(self, folder):
        self.folder = folder

    def run(self, file, signal):
        """The output, and how many samples clipped in any effect."""
        source, output = self.folder / "in.wav", self.folder / "out.wav"
        integers = numpy.clip(numpy.floor(signal * FULL_SCALE), -FULL_SCALE, FULL_SCALE - 1)
        scipy.io.wavfile.write(source, SAMPLERATE, integers.astype(numpy.int32))
        done = subprocess.run(["sox", "-D", source, output, *programs.graph_of(file).split()],
                              stderr=subprocess.PIPE, text=True, check=True)
        clipped = sum(map(int, re.findall(r"clipped (\d+) samples", done.stderr)))
        return scipy.io.wavfile.read(output)[1] / FULL_SCALE, clipped

    def failure(self, veltane, case, options=()):
        file = self.folder / "effects.txt"
        file.write_text(exported(veltane, "sox", case, *options), encoding="utf-8")
        text, sections = file.read_text(encoding="utf-8"), sections_of(veltane, case)
        room = float((re.search(r"multiplied by ([\d.]+) or less", text) or (0, 1))[1])
        noise = numpy.random.default_rng(3).uniform(-1, 1, COUNT) * room
        noise = numpy.floor(noise * FULL_SCALE) / FULL_SCALE
        found, clipped = self.run(file, noise)
        worst = scipy.signal.sosfilt(sections, programs.impulse(COUNT))[::-1]
        clipped += self.run(file, numpy.where(worst < 0, -1, 1) * room)[1]
        if clipped:
            return f"{clipped} samples clip"
        if room < 1 and not self.run(file, numpy.where(worst < 0, -1, 1) * room * 1.05)[1]:
            return "there is more room than is said"
        said = float(re.search(r"noise (\d+) dB below", text)[1])
        # The noise of the integers stays the same when there is less of the signal.
        wanted = scipy.signal.sosfilt(sections, noise)
        below = noise_below_peak(found, wanted) - decibels(room)
        self.row = f"-{said:.0f} dB | -{below:.0f} dB | {room:.2f}"
        if not -2 < below - said < 20:
            return f"noise {below:.0f} dB down, said are {said:.0f}"
        return None

    def other_failure(self, veltane):
        """Published sections clip in the middle unless their gain is made to fit; and 16 bits are
        dithered, as the comment says, unless SoX is told not to."""
        if failure := self.failure(veltane, CASES[3], ["--as-published"]):
            return failure
        outputs = []
        for options in ["-D"], []:
            output = self.folder / "short.wav"
            programs.run("sox", *options, self.folder / "in.wav", "-b", "16", output)
            outputs.append(scipy.io.wavfile.read(output)[1].astype(int))
        dither = abs(outputs[0] - outputs[1]).max()
        return None if 1 <= dither <= 4 else f"the dither is {dither} units"


class Ffmpeg:
    """Files of doubles, and of 16 bits."""

    def __init__(self, folder):
        self.folder = folder

    def run(self, file, signal, codec):
        source, output = self.folder / "in.wav", self.folder / "out.wav"
        scipy.io.wavfile.write(source, SAMPLERATE, signal)
        programs.run("ffmpeg", "-nostdin", "-y", "-loglevel", "error", "-i", source, "-af",
                     programs.graph_of(file), *codec, output)
        return scipy.io.wavfile.read(output)[1]

    def failure(self, veltane, case):
        file = self.folder / "graph.txt"
        file.write_text(exported(veltane, "ffmpeg", case), encoding="utf-8")
        sections = sections_of(veltane, case)
        noise = numpy.random.default_rng(3).uniform(-1, 1, COUNT)
        short = numpy.rint(noise * 32767).astype(numpy.int16)
        for signal, values in (noise, noise), (short, short / 32768):
            found = self.run(file, signal, ("-c:a", "pcm_f64le"))
            off = abs(found - scipy.signal.sosfilt(sections, values)).max()
            self.row = f"{off:.0e}"
            if off > 1e-9:
                return f"{signal.dtype} is off by {off:.1e}"
        return None

    def other_failure(self, veltane):
        """What the comment says of the default: 16 bits, which clip."""
        file = self.folder / "graph.txt"
        file.write_text(exported(veltane, "ffmpeg", CASES[1]), encoding="utf-8")
        found = self.run(file, numpy.full(COUNT, 1.5), ())
        if found.dtype != numpy.int16 or found[-1] != 32767:
            return f"1.5 comes out as {found[-1]}, {found.dtype}"
        return None


def main():
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("--veltane", required=True, help="the built command")
    parser.add_argument("--table", action="store_true", help="print rows for the documents")
    parser.add_argument("target", choices=("sox", "ffmpeg"))
    arguments = parser.parse_args()
    failures = 0
    with tempfile.TemporaryDirectory() as name:
        program = {"sox": Sox, "ffmpeg": Ffmpeg}[arguments.target](pathlib.Path(name))
        for case in CASES:
            failure = program.failure(arguments.veltane, case)
            failures += failure is not None
            name = f"{case[0]} {case[1]} {case[2]}, {' to '.join(map(str, case[3:]))} Hz"
            if arguments.table and not failure:
                print(f"| {name} | {program.row} |")
            else:
                print(f"WRONG: {name}: {failure}" if failure else f"good: {name}")
        if failure := program.other_failure(arguments.veltane):
            failures += 1
            print(f"WRONG: {failure}")
    print(f"{arguments.target}: {len(CASES)} filters, {failures} wrong")
    return 1 if failures else 0


if __name__ == "__main__":
    sys.exit(main())
