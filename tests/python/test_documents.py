"""What docstrings and docs/python.md show is what comes out."""

import doctest
import importlib
import pathlib
import re

import pytest

import veltane

DOCUMENT = pathlib.Path(__file__).resolve().parents[2] / "docs" / "python.md"


@pytest.mark.parametrize("name", ["", ".dropin", ".estimate", ".filter"])
def test_docstrings(name):
    module = importlib.import_module("veltane" + name)
    failed, tried = doctest.testmod(module)
    assert tried > 0 and failed == 0


def test_the_document():
    # The fences around the examples are no output.
    text = re.sub(r"^```.*$", "", DOCUMENT.read_text(encoding="utf-8"), flags=re.MULTILINE)
    examples = doctest.DocTestParser().get_doctest(text, {}, DOCUMENT.name, str(DOCUMENT), 0)
    failed, tried = doctest.DocTestRunner().run(examples)
    assert tried > 10 and failed == 0


def test_all_that_is_public_is_described():
    for name in veltane.__all__:
        assert name == "__version__" or getattr(veltane, name).__doc__
    for name, member in vars(veltane.Filter).items():
        assert name.startswith("_") or member.__doc__, name
