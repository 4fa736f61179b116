"""The impulse response of a filter, computed without the program that exports it."""

import pathlib
import sys

from mpmath import mp, mpf

sys.path.append(str(pathlib.Path(__file__).resolve().parents[1] / "reference"))
import closed_form  # noqa: E402


def impulse_response(family, response, order, cutoffs, samplerate, ripple_db, attenuation_db,
                     count):
    """The first `count` samples, from roots in closed form, in 50 digits.

    One root after the other: y[n] = x[n] - zero x[n-1] + pole y[n-1].
    """
    with mp.workdps(50):
        edges = [mpf(2) * mpf(f) / samplerate for f in cutoffs]
        zeros, poles, gain = closed_form.design(
            family, response, order, *edges, ripple_db=mpf(ripple_db),
            attenuation_db=mpf(attenuation_db))
        if len(zeros) != len(poles):
            raise ValueError("a digital filter here has as many zeros as poles")
        signal = [gain] + [mpf(0)] * (count - 1)
        for zero, pole in zip(zeros, poles):
            x_before = y_before = mpf(0)
            for n, x in enumerate(signal):
                y_before = x - zero * x_before + pole * y_before
                x_before = x
                signal[n] = y_before
        return [float(mp.re(y)) for y in signal]
