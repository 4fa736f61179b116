"""What the tests of all targets share: running programs, filtering an impulse, tolerances."""

import functools
import pathlib
import re
import shutil
import subprocess

import numpy
import scipy.signal

TARGETS = pathlib.Path(__file__).resolve().parent / "targets"

# How far a sample may be from the expected one, as a fraction of the largest. Rounding leaves
# 1e-16 of a double and 6e-8 of a float; lists for a single node multiply that by some thousands,
# sections by some tens.
DOUBLES = 1e-12
FLOATS = 1e-5


class Missing(Exception):
    """A program is not installed."""


def run(*command, text="", **options):
    """What a program prints when it reads a text. Raises what it wrote when it failed."""
    words = [str(word) for word in command]
    if shutil.which(words[0]) is None:
        raise Missing(f"{words[0]} is missing, which tries the export: "
                      "'script/setup export' installs it")
    done = subprocess.run(words, input=text, stdout=subprocess.PIPE, stderr=subprocess.PIPE,
                          text=True, timeout=300, check=False, **options)
    if done.returncode != 0:
        raise RuntimeError(f"{' '.join(words)} ended with {done.returncode}:\n"
                           f"{done.stdout}{done.stderr}")
    return done.stdout


def samples(text):
    return [float(line) for line in text.split()]


def graph_of(file):
    """What a file of effects holds without its comment, as its comment says to take it."""
    return run("grep", "-v", "^#", file)


def impulse(count):
    return numpy.eye(1, count)[0]


def sections_filtered(rows, count):
    """SciPy's filter for rows of b0 b1 b2 a1 a2."""
    sos = [[b0, b1, b2, 1.0, a1, a2] for b0, b1, b2, a1, a2 in rows]
    return scipy.signal.sosfilt(sos, impulse(count))


def one_by_one(function):
    """Makes a function for many files out of one for a single file."""
    @functools.wraps(function)
    def many(files, names, samplerate, count):
        return [function(file, name, samplerate, count) for file, name in zip(files, names)]
    return many


STRICT = ("-Wall", "-Wextra", "-Wpedantic", "-Wshadow", "-Wconversion", "-Werror", "-O1",
          "-ffp-contract=off")


def build(compiler, standard, source, file, **macros):
    """The program that a source and an exported header make."""
    program = file.with_suffix(".program")
    run(compiler, standard, *STRICT, f'-DHEADER="{file}"',
        *(f"-D{key}={value}" for key, value in macros.items()), TARGETS / source, "-o", program)
    return program


def compiled(compiler, standard, source, file, count, **macros):
    return samples(run(build(compiler, standard, source, file, **macros), count))


class Header:
    """An exported header for C or C++, in the smallest program that filters with it."""

    def __init__(self, file, name, number):
        text = file.read_text(encoding="utf-8")
        if file.suffix == ".hpp":
            self.program = build("c++", "-std=c++17", "cpp_filter.cpp", file, NAME=name, TYPE=number)
        else:
            # As the comment says.
            zeros = re.search(f"Use: {name}_state state = (.*?);", text)[1]
            self.program = build("cc", "-std=c99", "c_filter.c", file, NAME=name, TYPE=number,
                                 ZEROS=zeros)
        noise = re.search("Rounding: (?:noise ([0-9]+) dB below|as much noise as signal)", text)
        self.noise_db = -float(noise[1] or 0)

    def filter(self, signal):
        text = "".join(f"{float(x)!r}\n" for x in signal)
        return numpy.array(samples(run(self.program, text=text)))
