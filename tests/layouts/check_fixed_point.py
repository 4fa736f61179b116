#!/usr/bin/python3
"""Exports filters in fixed point, runs them in a model of the arithmetic, and holds what they do
against what their comments say: no overflow for any input, the noise, the limit cycles, the level.
Then looks for the cutoff from which on a filter is refused.

  check_fixed_point.py --veltane PROGRAM cmsis-q31|cmsis-q15
  check_fixed_point.py --veltane PROGRAM --table cmsis-q31|cmsis-q15
"""

import argparse
import json
import pathlib
import subprocess
import sys
import tempfile

import numpy
import scipy.signal

import fixed_point

SAMPLERATE = 48000

# family, response, order, cutoffs in Hz, further options
CASES = [
    ("butterworth", "lowpass", 2, (1000,), ()),
    ("butterworth", "lowpass", 2, (6000,), ()),
    ("butterworth", "lowpass", 6, (5000,), ("--as-published",)),
    ("butterworth", "lowpass", 12, (9000,), ()),
    ("butterworth", "highpass", 3, (4000,), ()),
    ("butterworth", "bandpass", 2, (4000, 9000), ()),
    ("butterworth", "bandpass", 6, (3400, 20000), ()),
    ("butterworth", "bandstop", 2, (5000, 6000), ()),
    ("chebyshev-1", "lowpass", 2, (20000,), ()),
    ("chebyshev-1", "lowpass", 10, (6500,), ()),
    ("chebyshev-1", "highpass", 8, (7000,), ("--normalise",)),
    ("chebyshev-1", "bandpass", 4, (3400, 8800), ()),
    ("chebyshev-2", "lowpass", 11, (6000,), ()),
    ("chebyshev-2", "highpass", 10, (5000,), ()),
    ("chebyshev-2", "bandstop", 3, (7000, 9000), ()),
    # Low cutoffs, which 16 bits do not hold.
    ("butterworth", "lowpass", 2, (30,), ()),
    ("butterworth", "lowpass", 12, (300,), ()),
    ("butterworth", "bandpass", 3, (60, 120), ()),
    ("chebyshev-1", "highpass", 5, (100,), ()),
    ("chebyshev-2", "bandstop", 2, (49, 51), ()),
]
FEWEST = {"cmsis-q31": 20, "cmsis-q15": 12}
MOST_NOISE = {"cmsis-q31": 60, "cmsis-q15": 40}  # dB below the peak, from which on it is refused


def settings(case):
    family, response, order, cutoffs, options = case
    return ["--topology", family, "--response", response, "--order", str(order), "--frequency",
            *map(str, cutoffs), "--samplerate", str(SAMPLERATE), "--passband-ripple", "0.5",
            "--stopband-attenuation", "60", *options]


def decibels(ratio):
    return 20 * numpy.log10(ratio)


class Case:
    """A header that runs, and what its comment says."""

    def __init__(self, file, bits, designed):
        self.header = fixed_point.Header(file, bits)
        self.program = self.header.compiled()
        self.sections, self.designed = self.header.sections, designed
        self.full_scale = self.header.full_scale
        slowest = max(abs(numpy.roots(row[3:])).max() for row in self.sections)
        self.ringing = int(200 + 40 / (1 - slowest))

    def run(self, samples):
        return fixed_point.run(self.program, samples)

    def overflows(self):
        """Full scale with the signs that add up at the output of each section, then noise."""
        impulse, found = numpy.eye(1, self.ringing)[0], 0
        for row in self.sections:
            impulse = scipy.signal.lfilter(row[:3], row[3:], impulse)
            signs = numpy.where(impulse[::-1] < 0, -1, 1)
            for sign in (1, -1):
                worst = signs * sign * self.full_scale
                found += self.run(numpy.minimum(worst, self.full_scale - 1))[1]
        return found

    def noise_failure(self):
        said, measured, worst_sine = self.header.said(
            r"Rounding: noise ([\d.]+) dB .*\(measured: ([\d.]+) dB.*\), ([\d.]+) dB for the worst")
        random = numpy.random.default_rng(5)
        samples = random.integers(-self.full_scale, self.full_scale, self.ringing + 60000)
        output, overflows = self.run(samples)
        wanted = scipy.signal.sosfilt(self.sections, samples.astype(float))
        error = (output - wanted)[self.ringing:]
        rms = numpy.sqrt(numpy.mean(wanted[self.ringing:] ** 2))
        found = -decibels(numpy.sqrt(numpy.mean(error ** 2)) / (4 * rms))
        self.noise = (said, found, worst_sine)
        if overflows:
            return "noise overflows"
        if abs(found - said) > 6 or abs(found - measured) > 1.5:
            return f"noise {found:.1f} dB down, said are {said} and {measured}"
        return None

    def limit_cycle_failure(self):
        bound, seen = self.header.said(
            r"stays within (\d+) units .*; it stayed within (\d+) after noise")
        random, largest = numpy.random.default_rng(6), 0
        sound = self.ringing + 5000
        for samples in (numpy.full(sound, self.full_scale - 1), numpy.full(sound, -self.full_scale),
                        random.integers(-self.full_scale, self.full_scale, sound)):
            silence = numpy.zeros(2 * self.ringing)
            output, _overflows = self.run(numpy.concatenate([samples, silence]))
            largest = max(largest, abs(output[-self.ringing // 2:]).max())
        self.limit_cycle = (bound, largest)
        if largest > bound:
            return f"a limit cycle of {largest:.0f}, {bound:.0f} are the bound"
        if seen > bound or not 0.5 * seen - 4 <= largest <= 1.5 * seen + 4:
            return f"a limit cycle of {largest:.0f}, said are {seen:.0f}"
        return None

    def level_failure(self):
        worst, floor = self.header.said(r"the level by at most (\S+) dB where it is above -(\d+) dB")
        w = numpy.unique(numpy.concatenate(
            [numpy.linspace(0, numpy.pi, 20000), numpy.geomspace(1e-4, numpy.pi, 20000)]))
        with numpy.errstate(divide="ignore"):
            wanted, found = (decibels(abs(scipy.signal.sosfreqz(rows, w)[1]))
                             for rows in (self.designed, self.sections))
        found += decibels(2.0 ** self.header.output_shift)
        heard = wanted > wanted.max() - floor
        self.level = worst
        difference = abs(found[heard] - wanted[heard]).max()
        if difference > worst + 1e-6:
            return f"the level is off by {difference:.3g} dB, said are {worst}"
        below = found[~heard].max(initial=-numpy.inf)
        if below > wanted.max() - floor + worst + 1e-6:
            return f"the level is {below:.1f} dB where it should be low"
        exponent = self.header.said(r"2\^(-?\d+), which changes")[0]
        if exponent != self.header.postshift + 1 - self.header.bits:
            return "the comment has another postshift"
        return None

    def failure(self):
        if overflows := self.overflows():
            return f"{overflows} overflows"
        return self.noise_failure() or self.limit_cycle_failure() or self.level_failure()


def title(case):
    family, response, order, cutoffs, _options = case
    return f"{family} {response} {order}, {' to '.join(map(str, cutoffs))} Hz"


def print_table(veltane, target, bits, folder):
    print("| filter | below the level | level off by | noise said | noise here | worst sine | "
          "cycle at most | cycle here |\n|---|--:|--:|--:|--:|--:|--:|--:|")
    for case in CASES:
        file = pathlib.Path(folder) / "case.h"
        if export(veltane, target, case, file):
            print(f"| {title(case)} | refused | | | | | | |")
            continue
        ran = Case(file, bits, sections_of(veltane, case))
        if failure := ran.failure():
            raise RuntimeError(failure)
        said, found, sine = ran.noise
        bound, cycle = ran.limit_cycle
        print(f"| {title(case)} | {decibels(2.0 ** ran.header.output_shift):.0f} dB | "
              f"{ran.level:.2g} dB | -{said:.0f} dB | -{found:.0f} dB | -{sine:.0f} dB | "
              f"{bound:.0f} | {cycle:.0f} |")


def sections_of(veltane, case):
    """What was designed, at the level that was asked for."""
    out = subprocess.run([veltane, "export", "--for", "json", *settings(case)], check=True,
                         stdout=subprocess.PIPE, text=True).stdout
    rows = json.loads(out)["sections"]
    return numpy.array([[b0, b1, b2, 1, a1, a2] for b0, b1, b2, a1, a2 in rows])


def export(veltane, target, case, file, *options):
    """What the command says if it refuses."""
    done = subprocess.run([veltane, "export", "--for", target, *settings(case), *options, "-o",
                           str(file)], stderr=subprocess.PIPE, text=True, check=False)
    if done.returncode not in (0, 2):
        raise RuntimeError(done.stderr)
    return done.stderr if done.returncode == 2 else None


def louder(file, factor):
    """The header with its first stage louder, in another file."""
    text = file.read_text(encoding="utf-8")
    start = text.index("= {\n") + 4
    end = text.index("\n", start)
    words = text[start:end].rstrip("};, ").split(",")
    for i in range(len(words) - 2):
        words[i] = str(int(int(words[i]) * factor))
    rest = text[end:] if text[end - 1] != ";" else "};" + text[end:]
    changed = file.with_name(f"louder_{file.name}")
    comma = "," if text[end - 1] == "," else ""
    changed.write_text(text[:start] + ",".join(words) + comma + rest, encoding="utf-8")
    return changed


def check_cases(veltane, target, bits, folder):
    failures = tried = would_overflow = 0
    for number, case in enumerate(CASES):
        file = pathlib.Path(folder) / f"case{number}.h"
        name = title(case)
        if refusal := export(veltane, target, case, file):
            print(f"refused: {name}: {refusal.strip()}")
            continue
        tried += 1
        designed = sections_of(veltane, case)
        failure = Case(file, bits, designed).failure()
        failures += failure is not None
        print(f"WRONG: {name}: {failure}" if failure else f"good: {name}")
        # The same with more gain, to see that an overflow is noticed.
        would_overflow += Case(louder(file, 1.6), bits, designed).overflows() > 0
    print(f"{target}: {tried} filters, {failures} wrong; "
          f"with more gain {would_overflow} of them overflow")
    return failures == 0 and tried >= FEWEST[target] and would_overflow >= tried // 2


def check_threshold(veltane, target, bits, folder):
    """Between a cutoff that is taken and one that is refused, the noise is that of the threshold."""
    file = pathlib.Path(folder) / "threshold.h"

    def case(cutoff):
        return ("butterworth", "lowpass", 3, (cutoff,), ())

    taken, refused = 8000.0, 3.0
    if export(veltane, target, case(taken), file) or not export(veltane, target, case(refused), file):
        print("WRONG: no threshold")
        return False
    while taken / refused > 1.0005:
        middle = (taken * refused) ** 0.5
        if export(veltane, target, case(middle), file):
            refused = middle
        else:
            taken = middle
    limit = MOST_NOISE[target]
    sentence = export(veltane, target, case(refused), file)
    export(veltane, target, case(taken), file)
    said = fixed_point.Header(file, bits).said(
        r"Rounding: noise ([\d.]+) dB .*\), ([\d.]+) dB for the worst")
    anyway = export(veltane, target, case(refused), file, "--anyway")
    # Rounded coefficients take a part of what is allowed.
    fine = (anyway is None and f"and {limit} dB are the limit" in sentence and
            "(--anyway writes it)" in sentence and
            limit <= min(said) + 0.05 and min(said) < limit + 6)
    print(f"{'good' if fine else 'WRONG'}: {taken:.1f} Hz is taken, {min(said)} dB; "
          f"{refused:.1f} Hz is refused: {sentence.strip()}")
    return fine


def check_unstable(veltane, target, folder):
    """What is unstable is refused even so."""
    case = {"cmsis-q15": ("chebyshev-1", "lowpass", 12, (100,), ("--anyway",)),
            "cmsis-q31": ("chebyshev-2", "lowpass", 2, (2.7,), ("--anyway",))}[target]
    refusal = export(veltane, target, case, pathlib.Path(folder) / "unstable.h") or ""
    fine = "in which this filter is unstable" in refusal
    print(f"{'good' if fine else 'WRONG'}: {refusal.strip() or 'an unstable filter is written'}")
    return fine


def main():
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("--veltane", required=True, help="the built command")
    parser.add_argument("--table", action="store_true", help="print a table for the documents")
    parser.add_argument("target", choices=MOST_NOISE)
    arguments = parser.parse_args()
    bits = 32 if arguments.target == "cmsis-q31" else 16
    with tempfile.TemporaryDirectory() as folder:
        if arguments.table:
            print_table(arguments.veltane, arguments.target, bits, folder)
            return 0
        fine = [check_cases(arguments.veltane, arguments.target, bits, folder),
                check_threshold(arguments.veltane, arguments.target, bits, folder),
                check_unstable(arguments.veltane, arguments.target, folder)]
    return 0 if all(fine) else 1


if __name__ == "__main__":
    sys.exit(main())
