"""Runs the three programs on the same designs, in turn, and keeps the least of their times.

Load of others on the machine only ever adds time. Times are CPU time of the
process, and each program comes round several times, so that the least is that of
an undisturbed run.
"""

import json
import subprocess
import sys
from pathlib import Path

import designs
import levels

BENCH = Path(__file__).parent
PYTHON = "/usr/bin/python3"  # the one that Debian's packages are installed for
PROGRAMS = ("veltane", "SciPy", "liquid-dsp")
MICROSECONDS = {"ns": 1e-3, "us": 1.0, "ms": 1e3, "s": 1e6}
LEVELS = ("passband_level", "cutoff_level")


def command(program, build, designs_file, min_time):
    google = ["--benchmark_format=json", f"--benchmark_min_time={min_time}"]
    return {
        "veltane": [f"{build}/bin/bench-veltane", f"{build}/lib/veltane/veltane.so", designs_file,
                    *google],
        "SciPy": [PYTHON, BENCH / "bench_scipy.py", designs_file, "--min-time", str(min_time)],
        "liquid-dsp": [f"{build}/bin/bench-liquid", designs_file, *google],
    }[program]


def runs(program, build, designs_file, min_time):
    """What one program measured, by the names of the designs."""
    done = subprocess.run(command(program, build, designs_file, min_time), check=True,
                          stdout=subprocess.PIPE)
    entries = json.loads(done.stdout)["benchmarks"]
    return {entry["name"].split("/iterations")[0]: entry for entry in entries}


def microseconds(run):
    return run["cpu_time"] * MICROSECONDS[run["time_unit"]]


def least(found, name):
    """The run with the least time. A program that refused a design gives none."""
    refused = [run[name]["error_message"] for run in found if run[name].get("error_occurred")]
    if refused:
        return {"refused": refused[0]}
    best = min((run[name] for run in found), key=microseconds)
    return {**best, "us": microseconds(best)}


def measure(build, rounds, min_time, quick):
    """The designs, each with what every program measured, the burst, and a host that trusts."""
    plan = designs.designs(quick)
    designs_file = Path(build) / "designs.json"
    designs_file.write_text(json.dumps(plan), encoding="utf-8")
    found = {program: [] for program in PROGRAMS}
    for number in range(rounds):
        for program in PROGRAMS:
            print(f"round {number + 1} of {rounds}: {program}", file=sys.stderr)
            found[program].append(runs(program, build, designs_file, min_time))

    settings = plan["passband_ripple"], plan["stopband_attenuation"]
    for design in plan["designs"]:
        design["runs"] = {}
        for program in PROGRAMS:
            run = least(found[program], design["name"])
            if "refused" not in run:
                run["right"] = levels.is_right(design, *settings, [run[key] for key in LEVELS])
            elif program == "veltane":
                raise RuntimeError(f"{design['name']}: {run['refused']}")
            design["runs"][program] = run
    burst = least(found["veltane"], "burst")
    if "refused" in burst:
        raise RuntimeError(f"burst: {burst['refused']}")
    trusting = least(found["veltane"], "default/trusting")
    if "refused" in trusting:
        raise RuntimeError(f"default/trusting: {trusting['refused']}")
    return {**plan, "burst": burst, "trusting": trusting, "rounds": rounds}
