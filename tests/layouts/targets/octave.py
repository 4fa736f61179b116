"""Runs the script in Octave and filters there."""

from programs import DOUBLES, one_by_one, run, samples

ENDING = ".m"
TOLERANCE = DOUBLES


@one_by_one
def impulse_responses(file, _name, samplerate, count):
    # Both ways that the file's comment shows.
    script = f"""
      source('{file}'); assert(samplerate, {samplerate}); x = [1 zeros(1, {count - 1})];
      y = x; for k = 1:size(sos, 1), y = filter(sos(k, 1:3), sos(k, 4:6), y); end
      pkg load signal; assert(y, sosfilt(sos, x), 1e-13 * max(abs(y)));
      printf('%.17g\\n', y);"""
    return samples(run("octave-cli", "--norc", "--eval", script))
