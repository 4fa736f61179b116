"""Pictures of a filter: a small one that a notebook shows by itself, and those of Matplotlib."""

from __future__ import annotations

import math
from html import escape
from typing import TYPE_CHECKING, Any, NamedTuple

import numpy
from numpy.typing import NDArray

if TYPE_CHECKING:
    from .filter import Filter

WIDTH, HEIGHT = 640, 240
LEFT, RIGHT, TOP, BOTTOM = 56, 16, 10, 40
TICKS_UP = 6


class LevelCurve(NamedTuple):
    """The level over frequency, and the ranges that show it."""

    frequencies: NDArray[numpy.float64]
    """In Hz."""
    levels: NDArray[numpy.float64]
    """In dB."""
    across: tuple[float, float]
    logarithmic: bool
    up: tuple[float, float]
    cutoffs: list[float]
    """In Hz."""


def _hertz(frequency: float) -> str:
    return f"{frequency / 1000:g}k" if frequency >= 1000 else f"{frequency:g}"


def _frequency_ticks(curve: LevelCurve) -> list[float]:
    low, high = curve.across
    if not curve.logarithmic:
        return _even_ticks(low, high)
    decades = range(math.floor(math.log10(low)), math.ceil(math.log10(high)) + 1)
    steps = (1, 2, 5) if len(decades) <= 4 else (1,)
    ticks = [step * 10.0**decade for decade in decades for step in steps]
    return [tick for tick in ticks if low <= tick <= high]


def _even_ticks(low: float, high: float) -> list[float]:
    rough = (high - low) / TICKS_UP
    power = 10.0 ** math.floor(math.log10(rough))
    step = next(factor * power for factor in (1, 2, 5, 10) if factor * power >= rough)
    first, last = math.ceil(low / step), math.floor(high / step)
    return [place * step for place in range(first, last + 1)]


def svg_of(curve: LevelCurve) -> str:
    """The level as a picture by itself, with the cutoffs."""
    low, high = curve.across
    bottom, top = curve.up

    def x_of(frequency: float) -> float:
        part = (
            math.log(frequency / low) / math.log(high / low)
            if curve.logarithmic
            else (frequency - low) / (high - low)
        )
        return LEFT + part * (WIDTH - LEFT - RIGHT)

    def y_of(level: float) -> float:
        part = (min(max(level, bottom), top) - bottom) / (top - bottom)
        return HEIGHT - BOTTOM - part * (HEIGHT - TOP - BOTTOM)

    right, foot = WIDTH - RIGHT, HEIGHT - BOTTOM
    parts = [
        f'<svg xmlns="http://www.w3.org/2000/svg" width="{WIDTH}" height="{HEIGHT}" '
        f'viewBox="0 0 {WIDTH} {HEIGHT}" role="img" font-family="sans-serif" font-size="11" '
        'fill="currentColor">',
        "<title>level in dB over frequency in Hz</title>",
    ]
    for tick in _frequency_ticks(curve):
        x = x_of(tick)
        parts.append(f'<path d="M{x:.1f} {TOP}V{foot}" stroke="#8884"/>')
        parts.append(f'<text x="{x:.1f}" y="{foot + 14}" text-anchor="middle">{_hertz(tick)}</text>')
    for tick in _even_ticks(bottom, top):
        y = y_of(tick)
        parts.append(f'<path d="M{LEFT} {y:.1f}H{right}" stroke="#8884"/>')
        parts.append(f'<text x="{LEFT - 6}" y="{y + 4:.1f}" text-anchor="end">{tick:g}</text>')
    for cutoff in curve.cutoffs:
        if low <= cutoff <= high:
            x = x_of(cutoff)
            parts.append(
                f'<path d="M{x:.1f} {TOP}V{foot}" stroke="#c60" stroke-dasharray="4 3"/>'
            )
    points = " ".join(
        f"{x_of(f):.1f},{y_of(level):.1f}"
        for f, level in zip(curve.frequencies.tolist(), curve.levels.tolist())
        if not math.isnan(level)
    )
    parts.append(f'<polyline points="{points}" fill="none" stroke="#06c" stroke-width="1.5"/>')
    middle = (LEFT + right) / 2
    parts.append(f'<text x="{middle}" y="{HEIGHT - 8}" text-anchor="middle">frequency in Hz</text>')
    parts.append(
        f'<text transform="translate(14 {(TOP + foot) / 2}) rotate(-90)" text-anchor="middle">'
        "level in dB</text></svg>"
    )
    return "".join(parts)


def html_of(filter: Filter) -> str:
    """The filter in one line, and its level; where nothing can be drawn, why."""
    try:
        drawn = svg_of(filter._level_curve())
    except ValueError as refused:
        drawn = f"<p>{escape(str(refused))}</p>"
    return f"<div><p>{escape(filter.title)}</p>{drawn}</div>"


def draw_level(filter: Filter, axes: Any) -> Any:
    """The level on an axes of Matplotlib, which is returned."""
    curve = filter._level_curve()
    axes.plot(curve.frequencies, curve.levels)
    for cutoff in curve.cutoffs:
        axes.axvline(cutoff, linestyle="--", linewidth=0.8, color="tab:orange")
    axes.set(
        xscale="log" if curve.logarithmic else "linear",
        xlim=curve.across,
        ylim=curve.up,
        xlabel="frequency in Hz",
        ylabel="level in dB",
    )
    axes.grid(True, which="both", alpha=0.3)
    return axes


def figure_of(filter: Filter) -> Any:
    """A figure of Matplotlib: level, phase, group delay, zeros and poles."""
    try:
        from matplotlib import pyplot  # type: ignore[import]
    except ImportError as missing:
        raise ImportError(
            "plot() draws with Matplotlib, which is not installed; "
            "'veltane plot' draws the same filter without it"
        ) from missing
    figure, ((level, roots), (phase, delay)) = pyplot.subplots(
        2, 2, figsize=(10, 7), constrained_layout=True
    )
    figure.suptitle(filter.title)
    draw_level(filter, level)
    low, high = level.get_xlim()
    at = numpy.minimum(numpy.geomspace(low, high, 1000), filter.fs / 2)
    found = filter.response(at)
    for axes, values, label in (
        (phase, found.phase_deg, "phase in degrees"),
        (delay, found.delay, "group delay in samples"),
    ):
        axes.plot(at, values)
        axes.set(xscale=level.get_xscale(), xlim=(low, high), xlabel="frequency in Hz", ylabel=label)
        axes.grid(True, which="both", alpha=0.3)
    around = numpy.exp(1j * numpy.linspace(0, 2 * numpy.pi, 361))
    roots.plot(around.real, around.imag, linewidth=0.8, color="gray")
    roots.plot(filter.z.real, filter.z.imag, "o", fillstyle="none", label="zeros")
    roots.plot(filter.p.real, filter.p.imag, "x", label="poles")
    roots.set(aspect="equal", xlabel="real part", ylabel="imaginary part")
    roots.legend()
    return figure
