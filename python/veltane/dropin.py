"""SciPy's functions of these names, for those filters that veltane designs.

What SciPy designs and veltane does not is refused with a ValueError, never replaced by another
filter: analog filters, orders outside 2 to 200, cutoffs outside 0.0001 to 0.9999 of half the sample
rate, ripples and attenuations outside the ranges of the box.
"""

from __future__ import annotations

import math
from collections.abc import Sequence
from typing import Any

import numpy
from numpy.typing import ArrayLike, NDArray

from . import _core

BUTTERWORTH, CHEBYSHEV_1, CHEBYSHEV_2 = "butterworth", "chebyshev-1", "chebyshev-2"

RESPONSES = {
    "lowpass": ("lowpass", "low", "lp", "l"),
    "highpass": ("highpass", "high", "hp", "h"),
    "bandpass": ("bandpass", "band", "pass", "bp"),
    "bandstop": ("bandstop", "bands", "stop", "bs"),
}

# A design that is off by more, in dB, is not the filter that was asked for.
TOLERANCE_DB = 0.01


def butter(
    N: int,
    Wn: ArrayLike,
    btype: str = "low",
    analog: bool = False,
    output: str = "ba",
    fs: float | None = None,
) -> Any:
    """`scipy.signal.butter`: the level is 3.01 dB down at `Wn`.

    >>> sos = butter(4, 1000, fs=48000, output="sos")
    >>> sos.shape
    (2, 6)
    """
    asked = _Asked(BUTTERWORTH, N, Wn, btype, analog, output, fs, edge_db=-10 * math.log10(2))
    return asked.designed(None, None)


def cheby1(
    N: int,
    rp: float,
    Wn: ArrayLike,
    btype: str = "low",
    analog: bool = False,
    output: str = "ba",
    fs: float | None = None,
) -> Any:
    """`scipy.signal.cheby1`: the level leaves the ripple, `rp` dB below its top at 0 dB, at `Wn`.

    >>> z, p, k = cheby1(3, 1, [0.2, 0.4], "bandpass", output="zpk")
    >>> len(z), len(p)
    (6, 6)
    """
    asked = _Asked(CHEBYSHEV_1, N, Wn, btype, analog, output, fs, edge_db=-rp)
    _check_range("rp", "passband_ripple", rp)
    return asked.designed(rp, None)


def cheby2(
    N: int,
    rs: float,
    Wn: ArrayLike,
    btype: str = "low",
    analog: bool = False,
    output: str = "ba",
    fs: float | None = None,
) -> Any:
    """`scipy.signal.cheby2`: the stopband, at least `rs` dB down, begins at `Wn`.

    >>> b, a = cheby2(2, 40, 0.5)
    >>> len(b), len(a)
    (3, 3)
    """
    asked = _Asked(CHEBYSHEV_2, N, Wn, btype, analog, output, fs, edge_db=-rs)
    _check_range("rs", "stopband_attenuation", rs)
    return asked.designed(None, rs)


def _check_range(name: str, attribute: str, value: float) -> None:
    lowest, highest = _core.range(attribute)
    if not lowest <= value <= highest:
        raise ValueError(f"{name} is from {lowest:g} to {highest:g}, not {value}")


def _response_named(btype: str) -> str:
    for response, words in RESPONSES.items():
        if str(btype).lower() in words:
            return response
    known = ", ".join(word for words in RESPONSES.values() for word in words)
    raise ValueError(f"btype cannot be '{btype}'; it is one of {known}")


def _fractions(Wn: ArrayLike, response: str, fs: float | None) -> list[float]:
    """The cutoffs as fractions of half the sample rate."""
    given = numpy.atleast_1d(numpy.asarray(Wn, dtype=numpy.float64))
    wanted = 2 if response.startswith("band") else 1
    if given.shape != (wanted,):
        raise ValueError(f"a {response} has {wanted} cutoff{'s'[:wanted - 1]}: Wn gives {given.size}")
    if fs is not None and not fs > 0:
        raise ValueError(f"fs is above 0, not {fs}")
    fractions = [float(w) for w in (given if fs is None else 2 * given / float(fs))]
    lowest, highest = _core.range("frequency")
    for asked, fraction in zip(given, fractions):
        if not lowest <= fraction <= highest:
            unit = "half the sample rate"
            raise ValueError(
                f"Wn is from {lowest:g} to {highest:g} of {unit}, not {asked:g}"
                + ("" if fs is None else f", which is {fraction:g} of it")
            )
    if wanted == 2 and not fractions[0] < fractions[1]:
        raise ValueError(f"Wn gives the lower cutoff first, not {given[0]:g} and {given[1]:g}")
    return fractions


class _Asked:
    """A filter as SciPy's functions are asked for it."""

    def __init__(
        self,
        topology: str,
        N: int,
        Wn: ArrayLike,
        btype: str,
        analog: bool,
        output: str,
        fs: float | None,
        *,
        edge_db: float,
    ) -> None:
        if analog:
            raise ValueError("veltane designs digital filters: analog=True is refused")
        if output not in ("ba", "zpk", "sos"):
            raise ValueError(f"output cannot be '{output}'; it is one of ba, zpk, sos")
        lowest, highest = _core.range("order")
        if int(N) != N or not lowest <= N <= highest:
            raise ValueError(f"N is a whole number from {lowest:g} to {highest:g}, not {N}")
        self.topology = topology
        self.order = int(N)
        self.response = _response_named(btype)
        self.cutoffs = _fractions(Wn, self.response, fs)
        self.output = output
        self.edge_db = edge_db

    def designed(self, ripple: float | None, attenuation: float | None) -> Any:
        core = _core.design(
            self.topology,
            self.response,
            self.order,
            self.cutoffs,
            "normalized",
            None,
            ripple,
            attenuation,
        )
        if core.has_remarks():
            raise ValueError(core.remarks()[0])
        if self.output == "sos":
            self._check(core, core.levels_of_sections(self._places()))
            return core.arranged()
        self._check(core, core.levels_of_roots(self._places()))
        zeros, poles, gain = core.zeros(), core.poles(), core.gain()
        if self.output == "zpk":
            return zeros, poles, gain
        return gain * _polynomial(zeros), _polynomial(poles)

    def _places(self) -> list[float]:
        """Where the level is known: the place of the lowpass prototype's DC, and the cutoffs."""
        if self.response == "bandpass":
            low, high = (math.tan(w * math.pi / 2) for w in self.cutoffs)
            centre = math.atan(math.sqrt(low * high)) * 2 / math.pi
        else:
            centre = 1.0 if self.response == "highpass" else 0.0
        return [centre, *self.cutoffs]

    def _check(self, core: _core.Filter, levels: Sequence[float]) -> None:
        """Refuses a filter that rounding has made another one. The top of a ripple is at 0 dB."""
        even_ripple = self.topology == CHEBYSHEV_1 and self.order % 2 == 0
        asked = [self.edge_db if even_ripple else 0.0, *[self.edge_db] * len(self.cutoffs)]
        near = all(abs(level - db) <= TOLERANCE_DB for level, db in zip(levels, asked))
        if not (near and core.is_stable()):
            raise ValueError(
                f"{core.title()}: this filter does not come out as asked for in doubles; "
                "a lower order or a wider band may"
            )


def _polynomial(roots: NDArray[numpy.complex128]) -> NDArray[numpy.float64]:
    return numpy.real(numpy.poly(roots))  # conjugates leave imaginary parts of rounding only
