"""Translates the program to C with Faust, and compiles that."""

from programs import DOUBLES, TARGETS, one_by_one, run, samples

ENDING = ".dsp"
TOLERANCE = DOUBLES


@one_by_one
def impulse_responses(file, _name, samplerate, count):
    translation = file.with_suffix(".faust.c")
    program = file.with_suffix(".program")
    run("faust", "-double", "-lang", "c", file, "-o", translation)
    run("cc", "-O1", "-ffp-contract=off", f'-DPROGRAM="{translation}"', TARGETS / "faust_impulse.c",
        "-o", program, "-lm")
    return samples(run(program, count, samplerate))
