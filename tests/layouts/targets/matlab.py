"""Runs the script in Octave, and there the loop that its comment shows, for a signal in each
column; it must do what sosfilt does."""

import re

import numpy

from programs import DOUBLES, one_by_one, run, samples

ENDING = ".m"
TOLERANCE = DOUBLES


@one_by_one
def impulse_responses(file, _name, samplerate, count):
    loop = re.search(r"^% +(y = x; for .* end)$", file.read_text(encoding="utf-8"), re.M)[1]
    script = f"""
      source('{file}'); assert(fs, {samplerate}); assert(g, 1); assert(columns(sos), 6);
      x = [1 0; zeros({count - 1}, 2)]; x(:, 2) = 2 * x(:, 1); {loop}
      pkg load signal; assert(y, sosfilt(sos, x), 1e-13 * max(abs(y(:))));
      printf('%.17g\\n', y);"""
    both = numpy.array(samples(run("octave-cli", "--norc", "--eval", script)))
    first, second = both.reshape(2, count)
    if not numpy.array_equal(second, 2 * first):
        raise ValueError("the columns are not filtered one by one")
    return first
