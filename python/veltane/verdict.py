"""Whether a filter is what its settings ask for."""

from __future__ import annotations

from dataclasses import dataclass
from typing import Any

from . import _core


@dataclass(frozen=True)
class Finding:
    """One thing that was found.

    `about` is what it is about, such as "cutoff"; `weight` is "fact", "note" or "problem". Problems
    and notes have a `change`, in words; `remedies` are those changes that can be said in settings,
    each enough by itself: the design with `design(**{**settings, **remedy})` does not have it.
    """

    about: str
    weight: str
    text: str
    change: str
    remedies: tuple[dict[str, Any], ...]

    def __str__(self) -> str:
        line = f"{self.about}: {self.text}"
        return f"{line}\n  change: {self.change}" if self.change else line


@dataclass(frozen=True)
class Verdict:
    """What was found, in the order of the checks, and `measured`, the numbers behind it by name."""

    title: str
    findings: tuple[Finding, ...]
    measured: dict[str, Any]

    @property
    def problems(self) -> tuple[Finding, ...]:
        """The findings that say that the filter is not what was asked for."""
        return tuple(finding for finding in self.findings if finding.weight == "problem")

    @property
    def sound(self) -> bool:
        """Whether there are no problems."""
        return not self.problems

    def __str__(self) -> str:
        count = len(self.problems)
        headline = {0: "sound", 1: "1 problem"}.get(count, f"{count} problems")
        lines = [f"{headline}: {self.title}"]
        for weight, mark in (("problem", "PROBLEM: "), ("note", "note: "), ("fact", "")):
            lines += [f"{mark}{one}" for one in self.findings if one.weight == weight]
        return "\n".join(lines)


def judge(design: _core.Filter) -> Verdict:
    title, findings, measured = design.verdict()
    return Verdict(title, tuple(Finding(*finding) for finding in findings), measured)
