"""Runs exported files in the programs that they are for, on an impulse.

Each function of the table takes files, their names for the filter, a sample rate and a
count, and returns the impulse responses in the same order.
"""

import csv
import functools
import json
import os
import pathlib
import runpy
import shutil
import subprocess
import warnings

import numpy
import scipy.io.wavfile
import scipy.signal

HERE = pathlib.Path(__file__).resolve().parent


class Missing(Exception):
    """A program is not installed."""


def run(*command, **options):
    """What a program prints on standard output. What it complains is the exception's text."""
    words = [str(word) for word in command]
    if shutil.which(words[0]) is None:
        raise Missing(f"{words[0]} is missing, which tries the export: "
                      "'script/setup export' installs it")
    done = subprocess.run(words, stdin=subprocess.DEVNULL, stdout=subprocess.PIPE,
                          stderr=subprocess.PIPE, text=True, timeout=300, check=False, **options)
    if done.returncode != 0:
        raise RuntimeError(f"{' '.join(words)} ended with {done.returncode}:\n"
                           f"{done.stdout}{done.stderr}")
    return done.stdout


def samples(text):
    return [float(line) for line in text.split()]


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


@one_by_one
def scipy_source(file, _name, samplerate, count):
    module = runpy.run_path(str(file))
    if module["samplerate"] != samplerate:
        raise ValueError(f"samplerate is {module['samplerate']}")
    return scipy.signal.sosfilt(module["sos"], impulse(count))


@one_by_one
def csv_table(file, _name, _samplerate, count):
    with open(file, encoding="utf-8", newline="") as lines:
        rows = list(csv.DictReader(line for line in lines if not line.startswith("#")))
    return sections_filtered(
        [[float(row[key]) for key in ("b0", "b1", "b2", "a1", "a2")] for row in rows], count)


@one_by_one
def json_document(file, _name, samplerate, count):
    document = json.loads(file.read_text(encoding="utf-8"))
    if document["samplerate"] != samplerate or document["feedback"] != "subtracted":
        raise ValueError("samplerate or feedback is not as it should be")
    column = document["columns"].index
    order = [column(key) for key in ("b0", "b1", "b2", "a1", "a2")]
    return sections_filtered([[row[i] for i in order] for row in document["sections"]], count)


@one_by_one
def octave(file, _name, samplerate, count):
    # The loop is the one that the file's comment shows.
    script = f"""
      source('{file}'); assert(samplerate, {samplerate}); x = [1 zeros(1, {count - 1})];
      y = x; for k = 1:size(sos, 1), y = filter(sos(k, 1:3), sos(k, 4:6), y); end
      printf('%.17g\\n', y);"""
    return samples(run("octave-cli", "--norc", "--eval", script))


STRICT = ("-Wall", "-Wextra", "-Wpedantic", "-Wshadow", "-Wconversion", "-Werror", "-O1",
          "-ffp-contract=off")


def compiled(compiler, standard, source, file, count, **macros):
    program = file.with_suffix(".program")
    run(compiler, standard, *STRICT, f'-DHEADER="{file}"',
        *(f"-D{key}={value}" for key, value in macros.items()), HERE / source, "-o", program)
    return samples(run(program, count))


def c_header(number):
    return one_by_one(lambda file, name, _samplerate, count: compiled(
        "cc", "-std=c99", "impulse.c", file, count, NAME=name, TYPE=number))


def cpp_header(number):
    return one_by_one(lambda file, name, _samplerate, count: compiled(
        "c++", "-std=c++17", "impulse.cpp", file, count, NAME=name, TYPE=number))


@one_by_one
def cmsis(file, name, _samplerate, count):
    return compiled("cc", "-std=c99", "impulse_df1.c", file, count,
                    COEFFICIENTS=f"{name}_coefficients", STAGES=f"{name.upper()}_STAGES")


@one_by_one
def node(file, name, _samplerate, count):
    return samples(run("node", HERE / "impulse.mjs", file, name, count))


@one_by_one
def faust(file, _name, samplerate, count):
    translation = file.with_suffix(".faust.c")
    program = file.with_suffix(".program")
    run("faust", "-double", "-lang", "c", file, "-o", translation)
    run("cc", "-O1", "-ffp-contract=off", f'-DPROGRAM="{translation}"', HERE / "impulse_faust.c",
        "-o", program, "-lm")
    return samples(run(program, count, samplerate))


CSOUND = """<CsoundSynthesizer>
<CsOptions>
-n -m0 -d
</CsOptions>
<CsInstruments>
sr = {samplerate}
ksmps = 1
nchnls = 1
0dbfs = 1
#include "{file}"
instr 1
  ksample init 0
  aimpulse = (ksample == 0 ? 1 : 0)
  afiltered {name} aimpulse
  kfiltered downsamp afiltered
  fprintks "{output}", "%.17g\\n", kfiltered
  ksample += 1
endin
</CsInstruments>
<CsScore>
i1 0 {seconds}
</CsScore>
</CsoundSynthesizer>
"""


@one_by_one
def csound(file, name, samplerate, count):
    output = file.with_suffix(".samples")
    document = file.with_suffix(".csd")
    document.write_text(CSOUND.format(samplerate=samplerate, file=file, name=name, output=output,
                                      seconds=(count + 10) / samplerate), encoding="utf-8")
    run("csound", document)
    return samples(output.read_text(encoding="utf-8"))[:count]


def supercollider(files, names, samplerate, count):
    """One run of the language writes a score for each file; the server renders them.

    The server shows its units the first sample twice, once to set them up; so the impulse
    comes after a silence.
    """
    folder = files[0].parent
    silence = 100
    source = folder / "impulse.wav"
    scipy.io.wavfile.write(source, samplerate, numpy.concatenate(
        [numpy.zeros(silence), impulse(count)]).astype(numpy.float32))
    scores = "".join(f"""
      "{file}".load;
      Score([
        [0.0, [\\d_recv, SynthDef(\\filter, {{ |out| Out.ar(out, ~{name}.(SoundIn.ar(0))) }}).asBytes]],
        [0.0, [\\s_new, \\filter, 1000, 0, 0]],
        [{(silence + count + 100) / samplerate}, [\\c_set, 0, 0]]
      ]).writeOSCFile("{file}.osc");""" for file, name in zip(files, names))
    driver = folder / "driver.scd"
    driver.write_text(f"({scores}\n0.exit;\n)\n", encoding="utf-8")
    # The language's window toolkit wants a place of its own, and no sandbox where the
    # user is root; without --no-sandbox it ends at once there.
    environment = {**os.environ, "QT_QPA_PLATFORM": "offscreen", "HOME": str(folder),
                   "XDG_RUNTIME_DIR": str(folder), "QTWEBENGINE_CHROMIUM_FLAGS": "--no-sandbox"}
    said = run("sclang", driver, env=environment)
    if "ERROR" in said:
        raise RuntimeError(said)
    responses = []
    for file in files:
        sound = file.with_suffix(".wav")
        run("scsynth", "-N", f"{file}.osc", source, sound, samplerate, "WAV", "float", "-i", 1,
            "-o", 1, env=environment)
        with warnings.catch_warnings():  # of the chunk that says where the peak is
            warnings.simplefilter("ignore", scipy.io.wavfile.WavFileWarning)
            rate, signal = scipy.io.wavfile.read(sound)
        if rate != samplerate:
            raise ValueError(f"rendered at {rate} Hz")
        responses.append(signal[silence:silence + count].astype(float))
    return responses


# By target: the ending of its files, the function, and how far a sample may be from the
# expected one, as a fraction of the largest. Rounding leaves 1e-16 of a double and 6e-8 of
# a float; lists for a single node multiply that by some thousands, sections by some tens.
DOUBLES = 1e-12
FLOATS = 1e-5
TARGETS = {
    "scipy": (".py", scipy_source, DOUBLES),
    "octave": (".m", octave, DOUBLES),
    "c": (".h", c_header("double"), DOUBLES),
    "c-float": (".h", c_header("float"), FLOATS),
    "cpp": (".hpp", cpp_header("double"), DOUBLES),
    "cpp-float": (".hpp", cpp_header("float"), FLOATS),
    "cmsis": (".h", cmsis, FLOATS),
    "webaudio": (".mjs", node, DOUBLES),
    "webaudio-sections": (".mjs", node, DOUBLES),
    "faust": (".dsp", faust, DOUBLES),
    "csound": (".udo", csound, DOUBLES),
    "supercollider": (".scd", supercollider, FLOATS),
    "csv": (".csv", csv_table, DOUBLES),
    "json": (".json", json_document, DOUBLES),
}
