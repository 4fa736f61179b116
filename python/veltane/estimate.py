"""The least order that meets a demand."""

from __future__ import annotations

from collections.abc import Sequence
from dataclasses import dataclass, field
from typing import Any

from . import _core
from .filter import Filter, design


@dataclass(frozen=True)
class Candidate:
    """The filter of least order of one family.

    `ripple` and `attenuation` are what the filter reaches, in dB; `noise_db` is the rounding noise
    of its sections in doubles, in dB of the output's peak. Where a family cannot meet the demand,
    `impossible` says why, and `settings` is empty.
    """

    topology: str
    response: str
    order: int
    poles: int
    frequency: tuple[float, ...]
    ripple: float
    attenuation: float
    noise_db: float
    recommended: bool
    impossible: str
    settings: dict[str, Any] = field(repr=False)

    def design(self) -> Filter:
        """The filter itself. Raises ValueError where the family cannot meet the demand."""
        if self.impossible:
            raise ValueError(self.impossible)
        settings = dict(self.settings)
        settings["fs"] = settings.pop("samplerate")
        return design(**settings)


def _edges(given: float | Sequence[float]) -> list[float]:
    try:
        return [float(edge) for edge in given]  # type: ignore[union-attr]
    except TypeError:
        return [float(given)]  # type: ignore[arg-type]


def estimate(
    passband: float | Sequence[float],
    stopband: float | Sequence[float],
    *,
    ripple: float,
    attenuation: float,
    fs: float = 48000,
    topology: str | None = None,
) -> tuple[Candidate, ...]:
    """The filter of least order of each family, or of one, that meets a demand.

    One edge each for a lowpass or highpass, two each for a bandpass or bandstop, in Hz. The filter
    loses at most `ripple` dB in the passband and at least `attenuation` dB in the stopband.

    >>> import veltane
    >>> for c in veltane.estimate(1000, 1500, ripple=1, attenuation=60):
    ...     print(c.topology, c.order, c.recommended)
    butterworth 19 False
    chebyshev-1 9 False
    chebyshev-2 9 True

    Raises ValueError with a sentence for a demand that makes no sense.
    """
    found = _core.estimate(_edges(passband), _edges(stopband), ripple, attenuation, fs, topology)
    return tuple(
        Candidate(*one[:4], tuple(one[4]), *one[5:])  # type: ignore[arg-type]
        for one in found
    )
