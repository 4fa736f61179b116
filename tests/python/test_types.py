"""The annotations: consistent, and those of the extension true."""

import os
import pathlib
import subprocess
import sys

import pytest

import veltane

PACKAGE = pathlib.Path(veltane.__file__).parent
USE = """
import veltane
from numpy import float64
from numpy.typing import NDArray

f: veltane.Filter = veltane.design(topology="butterworth", order=4, frequency=[300, 3400])
sos: NDArray[float64] = f.sos
sound: bool = f.check().sound
order: int = veltane.estimate(1000, 1500, ripple=1, attenuation=60)[0].order
"""


def mypy(*arguments, folder):
    """The checker of the system, beside the package that is tested."""
    environment = {**os.environ, "MYPYPATH": str(PACKAGE.parent), "MYPY_CACHE_DIR": str(folder)}
    environment.pop("PYTHONPATH", None)
    return subprocess.run(["/usr/bin/mypy", "--strict", *arguments], cwd=folder, env=environment,
                          capture_output=True, text=True, check=False)


@pytest.fixture
def use(tmp_path):
    return tmp_path / "use.py"


def test_a_user_of_the_package_is_checked(use, tmp_path):
    use.write_text(USE, encoding="utf-8")
    run = mypy(str(use), folder=tmp_path)
    assert run.returncode == 0, run.stdout + run.stderr


def test_a_wrong_use_is_found(use, tmp_path):
    use.write_text(USE + "f.order = 'many'\n", encoding="utf-8")
    assert 'has no attribute "order"' in mypy(str(use), folder=tmp_path).stdout


def test_the_stubs_name_what_the_extension_has():
    stubs = (PACKAGE / "_core.pyi").read_text(encoding="utf-8")
    core = sys.modules["veltane._core"]
    named = {line.split("def ")[1].split("(")[0] for line in stubs.splitlines() if "def " in line}
    public = {name for holder in (core, core.Filter) for name in vars(holder)
              if not name.startswith("_")} - {"Filter"}
    assert named == public
