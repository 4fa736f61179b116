"""Exported headers in fixed point, compiled with a model of the arithmetic and run."""

import re
import subprocess

import numpy

import programs

# What a stage holds: the numbers of a header's rows that are b0, b1, b2, -a1 and -a2.
COLUMNS = {32: (0, 1, 2, 3, 4), 16: (0, 2, 3, 4, 5)}


def macro(text, name):
    return int(re.search(rf"#define \w+_{name} (-?\d+)", text)[1])


class Header:
    """The integers of a header, and what its comment says."""

    def __init__(self, file, bits):
        self.file, self.bits = file, bits
        self.text = file.read_text(encoding="utf-8")
        rows = re.search(r"_coefficients\[.*?= \{(.*?)\};", self.text, re.DOTALL)[1]
        table = numpy.array([int(word) for word in rows.replace(",", " ").split()], dtype=float)
        table = table.reshape(macro(self.text, "STAGES"), -1)
        if bits == 16 and (table[:, 1] != 0).any():
            raise ValueError(f"{file}: no zero between b0 and b1")
        self.postshift = macro(self.text, "POSTSHIFT")
        self.output_shift = macro(self.text, "OUTPUT_SHIFT")
        values = table[:, COLUMNS[bits]] * 2.0 ** (self.postshift - bits + 1)
        self.sections = numpy.ascontiguousarray(numpy.column_stack(
            [values[:, :3], numpy.ones(len(values)), -values[:, 3], -values[:, 4]]))
        self.full_scale = 2 ** (bits - 1)

    def said(self, pattern):
        """The numbers of the comment's sentence that looks like this."""
        found = re.search(pattern, self.text)
        if not found:
            raise ValueError(f"{self.file} does not say {pattern}")
        return tuple(map(float, found.groups()))

    def compiled(self):
        program = self.file.with_suffix(".program")
        names = re.search(r"#define (\w+)_STAGES", self.text)[1]
        programs.run("cc", "-std=c99", *programs.STRICT, f'-DHEADER="{self.file}"',
                     f"-DCOEFFICIENTS={names.lower()}_coefficients", f"-DSTAGES={names}_STAGES",
                     f"-DPOSTSHIFT={names}_POSTSHIFT", f"-DBITS={self.bits}",
                     programs.TARGETS / "cmsis_fixed.c", "-o", program)
        return program


def run(program, samples):
    """The output for integers, and how many results of a stage did not fit."""
    text = "\n".join(str(int(sample)) for sample in samples)
    done = subprocess.run([str(program)], input=text, stdout=subprocess.PIPE, text=True, check=True,
                          timeout=300)
    lines = done.stdout.splitlines()
    return numpy.array(lines[:-1], dtype=float), int(lines[-1].split()[1])


def impulse_responses(files, bits, count):
    """The responses to 1, at the level that the headers name."""
    responses = []
    for file in files:
        header = Header(file, bits)
        highest = header.full_scale - 1
        output, overflows = run(header.compiled(), programs.impulse(count) * highest)
        if overflows:
            raise ValueError(f"{file}: an impulse overflows")
        responses.append(output / highest * 2.0 ** header.output_shift)
    return responses
