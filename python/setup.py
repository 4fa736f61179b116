"""Builds the wheel: CMake makes the extension, from the sources that this folder lies in."""

import os
import re
import subprocess
import sys
from pathlib import Path

from setuptools import Extension, setup
from setuptools.command.build_ext import build_ext

ROOT = Path(__file__).resolve().parent.parent


def version():
    project = (ROOT / "CMakeLists.txt").read_text(encoding="utf-8")
    return re.search(r"project\(veltane VERSION ([\d.]+)", project).group(1)


class BuildWithCMake(build_ext):
    def build_extension(self, ext):
        build = os.environ.get("VELTANE_PYTHON_BUILD", str(ROOT / "build" / "python"))
        subprocess.run(
            ["cmake", "--preset", "python", "-B", build, f"-DPython_EXECUTABLE={sys.executable}"],
            cwd=ROOT, check=True)
        subprocess.run(["cmake", "--build", build, "--target", "veltane-python"], check=True)
        built = next((Path(build) / "python" / "veltane").glob("_core.*.so"))
        target = Path(self.get_ext_fullpath(ext.name))
        target.parent.mkdir(parents=True, exist_ok=True)
        self.copy_file(str(built), str(target))
        for terms in ("LICENSE", "THIRD-PARTY.md"):
            self.copy_file(str(ROOT / terms), str(target.parent / terms))
        subprocess.run(["strip", "--strip-unneeded", str(target)], check=True)


setup(
    version=version(),
    packages=["veltane"],
    package_data={"veltane": ["py.typed", "*.pyi"]},
    ext_modules=[Extension("veltane._core", sources=[])],
    cmdclass={"build_ext": BuildWithCMake},
    zip_safe=False,
)
