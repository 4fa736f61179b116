"""What the tests share."""

import os

import pytest


@pytest.fixture
def command():
    """The command of the same build, which has to say what the package says."""
    path = os.environ.get("VELTANE_COMMAND")
    if not path:
        pytest.skip("there is no command beside an installed wheel")
    return path


def pairing(found, expected):
    """The largest distance when each number takes the nearest that is left; both are sets."""
    rest = list(expected)
    assert len(found) == len(rest)
    worst = 0.0
    for one in found:
        nearest = min(rest, key=lambda other: abs(other - one))
        worst = max(worst, abs(nearest - one))
        rest.remove(nearest)
    return worst
