"""Settings in, a filter out."""

from __future__ import annotations

import warnings
from collections.abc import Sequence
from typing import Any, NamedTuple, Union

import numpy
from numpy.typing import ArrayLike, NDArray

from . import _core, picture
from .verdict import Verdict, judge

Doubles = NDArray[numpy.float64]
Complexes = NDArray[numpy.complex128]

# Evenly spaced from 0 to half the sample rate, without that itself, as `scipy.signal.freqz` has it.
POINTS = 512


class SettingWarning(UserWarning):
    """A setting was changed to one that can be used; the sentence says which."""


class Response(NamedTuple):
    """What a filter does to sines of these frequencies, in Hz."""

    frequencies: Doubles
    h: Complexes
    """The complex response."""
    level_db: Doubles
    phase_deg: Doubles
    """Continuous but for a rise of 180 degrees at each zero on the unit circle."""
    delay: Doubles
    """The group delay, in samples."""


class Filter:
    """A designed filter, as `design` returns it.

    Every array is new and belongs to the caller. `z`, `p`, `k`, `sos`, `b` and `a` follow SciPy's
    conventions: a row of `sos` is b0 b1 b2 1 a1 a2, `b` and `a` begin with the highest power of z.
    """

    __slots__ = ("_core",)

    def __init__(self, core: _core.Filter) -> None:
        self._core = core

    @property
    def z(self) -> Complexes:
        """The zeros."""
        return self._core.zeros()

    @property
    def p(self) -> Complexes:
        """The poles."""
        return self._core.poles()

    @property
    def k(self) -> float:
        """The gain."""
        return self._core.gain()

    @property
    def sos(self) -> Doubles:
        """The second-order sections in the order in which the module publishes them.

        `arranged` is the better one to run; `apply` does that.
        """
        return self._core.sections()

    @property
    def arranged(self) -> Doubles:
        """The same sections in the order, and with the gains, that round least."""
        return self._core.arranged()

    @property
    def b(self) -> Doubles:
        """The numerator of the transfer function, which is of use at low orders only."""
        return self._core.transfer()[0]

    @property
    def a(self) -> Doubles:
        """The denominator of the transfer function, which is of use at low orders only."""
        return self._core.transfer()[1]

    @property
    def fs(self) -> float:
        """The sample rate, in Hz."""
        return self._core.samplerate()

    @property
    def title(self) -> str:
        """The filter in one line."""
        return self._core.title()

    @property
    def settings(self) -> dict[str, Any]:
        """All settings as the box holds them, after clipping."""
        return self._core.settings()

    @property
    def remarks(self) -> tuple[str, ...]:
        """A sentence for each setting that was changed."""
        return tuple(self._core.remarks())

    def response(self, frequencies: ArrayLike | None = None) -> Response:
        """What the filter does to sines.

        `frequencies` are in Hz, from 0 to half the sample rate; by default 512 of them, evenly
        spaced. Raises ValueError for others.

        >>> lowpass = design(topology="butterworth", order=4, frequency=1000, fs=48000)
        >>> lowpass.response([100, 1000]).level_db.round(4) + 0.0
        array([ 0.    , -3.0103])
        """
        if frequencies is None:
            at = numpy.arange(POINTS) * (self.fs / 2 / POINTS)
        else:
            at = numpy.array(frequencies, dtype=numpy.float64)
        h, level, phase, delay = self._core.response(at.ravel())
        shape = at.shape
        return Response(
            at, h.reshape(shape), level.reshape(shape), phase.reshape(shape), delay.reshape(shape)
        )

    def check(self) -> Verdict:
        """Whether the filter is what its settings ask for, in the words of `veltane check`."""
        return judge(self._core)

    def export(
        self,
        target: str,
        *,
        normalise: bool = False,
        as_published: bool = False,
        spread_gain: bool = False,
        structure: str | None = None,
        anyway: bool = False,
        name: str | None = None,
    ) -> str:
        """The filter as a file of another program: the bytes that `veltane export` writes.

        `targets` lists the programs. The other arguments are the options of the command; `name` is
        what its `-o` would be called, without ending. What the target cannot hold raises ValueError;
        remarks become warnings.

        >>> lowpass = design(topology="butterworth", order=2, frequency=1000, fs=48000)
        >>> print(lowpass.export("csv").splitlines()[-1])  # doctest: +ELLIPSIS
        0.0039...,0.0078...,0.0039...,-1.81...,0.83...
        """
        text, remarks = self._core.export(
            target, normalise, as_published, spread_gain, anyway, structure, name
        )
        _warn(remarks)
        return text

    def apply(self, x: ArrayLike, axis: int = -1, *, zero_phase: bool = False) -> Doubles:
        """The signal `x` after the filter, which begins at rest, along an axis.

        The sections run in the order that rounds least, in doubles, whatever the type of `x`. With
        `zero_phase` the signal goes forwards and then backwards, with the edges of SciPy's
        `sosfiltfilt`. Raises ValueError for samples that are not finite and for a filter that is not
        stable, TypeError for complex ones.

        >>> highpass = design(topology="butterworth", response="highpass", order=2, frequency=100)
        >>> bool(abs(highpass.apply([1.0] * 48000)[-1]) < 1e-12)
        True
        """
        given = numpy.asarray(x)
        if numpy.iscomplexobj(given):
            raise TypeError("a signal is real; filter the real and the imaginary part by themselves")
        frames = numpy.moveaxis(given.astype(numpy.float64), axis, 0)
        channels = frames.size // frames.shape[0] if frames.shape[0] else 0
        run = self._core.apply_in_both_directions if zero_phase else self._core.apply
        done = run(numpy.ascontiguousarray(frames.reshape(frames.shape[0], channels)))
        return numpy.ascontiguousarray(numpy.moveaxis(done.reshape(frames.shape), 0, axis))

    def plot(self, axes: Any = None) -> Any:
        """Draws level, phase, group delay, zeros and poles with Matplotlib.

        Returns the figure. With `axes`, an axes of Matplotlib, the level alone is drawn there, and
        the axes is returned. Raises ImportError without Matplotlib.
        """
        if axes is not None:
            return picture.draw_level(self, axes)
        return picture.figure_of(self)

    def _level_curve(self) -> picture.LevelCurve:
        return picture.LevelCurve(*self._core.level_curve())

    def _repr_html_(self) -> str:
        return picture.html_of(self)

    def __repr__(self) -> str:
        return f"<veltane.Filter: {self.title}>"

    def __reduce__(self) -> tuple[Any, ...]:
        return (_designed_anew, (self._core.requested(),))


Cutoffs = Union[float, str, Sequence[float], Doubles]


def _warn(remarks: Sequence[str]) -> None:
    for remark in remarks:
        warnings.warn(remark, SettingWarning, stacklevel=3)


def design(
    *,
    topology: str | None = None,
    response: str | None = None,
    order: int | None = None,
    frequency: Cutoffs | None = None,
    fs: float | None = None,
    units: str | None = None,
    passband_ripple: float | None = None,
    stopband_attenuation: float | None = None,
) -> Filter:
    """Designs a filter from the settings of the box `veltane`.

    What is not given is as in a new box: a chebyshev-2 lowpass of order 5, cutoff 3000 Hz, with
    96 dB of attenuation, at 48000 Hz.

    - `topology`: "butterworth", "chebyshev-1", "chebyshev-2"
    - `response`: "lowpass", "highpass", "bandpass", "bandstop"
    - `order`: 2 to 200, of the lowpass that the filter is made from: a bandpass has twice as many
      poles
    - `frequency`: one cutoff, two for a bandpass or bandstop
    - `fs`: the sample rate, a whole number of Hz
    - `units`: "hertz", or "normalized" for fractions of half the sample rate
    - `passband_ripple` of a chebyshev-1, `stopband_attenuation` of a chebyshev-2, in dB

    A setting that is refused raises ValueError; one that is clipped gives a `SettingWarning`.

    >>> design(topology="chebyshev-1", response="bandpass", order=3, frequency=[300, 3400])
    <veltane.Filter: chebyshev-1 bandpass of order 3, cutoffs 300 and 3400 Hz, ripple 0.5 dB, at 48000 Hz>
    >>> design(topology="bessel")
    Traceback (most recent call last):
    ...
    ValueError: topology cannot be 'bessel'; it is one of butterworth, chebyshev-1, chebyshev-2
    """
    core = _core.design(
        topology,
        response,
        order,
        frequency,
        units,
        fs,
        passband_ripple,
        stopband_attenuation,
    )
    if core.has_remarks():
        _warn(core.remarks())
    return Filter(core)


def _designed_anew(requested: dict[str, Any]) -> Filter:
    """Unpickles: the same settings make the same filter."""
    settings = dict(requested)
    settings["fs"] = settings.pop("samplerate", None)
    with warnings.catch_warnings():
        warnings.simplefilter("ignore", SettingWarning)
        return design(**settings)


def targets() -> tuple[str, ...]:
    """The names that `Filter.export` takes."""
    return _core.target_names()
