"""What the measurements were made on and with."""

import os
import re
import subprocess
from pathlib import Path

PACKAGES = ("g++-12", "libc6", "libeigen3-dev", "libbenchmark-dev", "libliquid-dev", "python3",
            "python3-numpy", "python3-scipy")


def processor():
    for line in Path("/proc/cpuinfo").read_text(encoding="utf-8").splitlines():
        if line.startswith("model name"):
            return line.partition(":")[2].strip()
    return "unknown"


def cached(build, variable):
    """What the build was configured with."""
    cache = (Path(build) / "CMakeCache.txt").read_text(encoding="utf-8")
    found = re.search(rf"^{variable}:\w+=(.*)$", cache, flags=re.M)
    return found.group(1) if found else ""


def compiler(build):
    run = subprocess.run([cached(build, "CMAKE_CXX_COMPILER"), "--version"], check=True,
                         capture_output=True, text=True)
    return run.stdout.splitlines()[0]


def versions():
    """The packages with their versions; none without dpkg."""
    try:
        run = subprocess.run(["dpkg-query", "-W", "-f", "${Package} ${Version}\n", *PACKAGES],
                             check=False, capture_output=True, text=True)
    except FileNotFoundError:
        return []
    return run.stdout.splitlines()


def description(build):
    """Lines of a list."""
    return [
        f"- processor: {processor()}, {os.cpu_count()} cores",
        f"- compiler: {compiler(build)}, {cached(build, 'CMAKE_CXX_FLAGS_RELEASE')}",
        f"- packages: {', '.join(versions()) or 'unknown'}",
    ]
