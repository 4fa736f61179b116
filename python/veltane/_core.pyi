from typing import Any

import numpy
from numpy.typing import NDArray

__version__: str

class Filter:
    def zeros(self) -> NDArray[numpy.complex128]: ...
    def poles(self) -> NDArray[numpy.complex128]: ...
    def gain(self) -> float: ...
    def sections(self) -> NDArray[numpy.float64]: ...
    def arranged(self) -> NDArray[numpy.float64]: ...
    def levels_of_roots(self, w: list[float], /) -> list[float]: ...
    def levels_of_sections(self, w: list[float], /) -> list[float]: ...
    def is_stable(self) -> bool: ...
    def transfer(self) -> tuple[NDArray[numpy.float64], NDArray[numpy.float64]]: ...
    def title(self) -> str: ...
    def samplerate(self) -> float: ...
    def settings(self) -> dict[str, Any]: ...
    def requested(self) -> dict[str, Any]: ...
    def remarks(self) -> list[str]: ...
    def has_remarks(self) -> bool: ...
    def response(
        self, frequencies: NDArray[numpy.float64], /
    ) -> tuple[
        NDArray[numpy.complex128],
        NDArray[numpy.float64],
        NDArray[numpy.float64],
        NDArray[numpy.float64],
    ]: ...
    def level_curve(
        self,
    ) -> tuple[
        NDArray[numpy.float64],
        NDArray[numpy.float64],
        tuple[float, float],
        bool,
        tuple[float, float],
        list[float],
    ]: ...
    def verdict(
        self,
    ) -> tuple[str, list[tuple[str, str, str, str, tuple[dict[str, Any], ...]]], dict[str, Any]]: ...
    def export(
        self,
        target: str,
        normalise: bool,
        as_published: bool,
        spread_gain: bool,
        anyway: bool,
        structure: str | None,
        name: str | None,
        /,
    ) -> tuple[str, list[str]]: ...
    def apply(self, frames: NDArray[numpy.float64], /) -> NDArray[numpy.float64]: ...
    def apply_in_both_directions(
        self, frames: NDArray[numpy.float64], /
    ) -> NDArray[numpy.float64]: ...

def design(
    topology: object,
    response: object,
    order: object,
    frequency: object,
    units: object,
    samplerate: object,
    passband_ripple: object,
    stopband_attenuation: object,
    /,
) -> Filter: ...
def estimate(
    passband: list[float],
    stopband: list[float],
    ripple: float,
    attenuation: float,
    samplerate: float,
    topology: str | None,
    /,
) -> list[
    tuple[
        str, str, int, int, list[float], float, float, float, bool, str, dict[str, Any]
    ]
]: ...
def range(attribute: str, /) -> tuple[float, float]: ...
def target_names() -> tuple[str, ...]: ...
