"""Times `veltane design --batch` over many lines, with all processors."""

import json
import os
import resource
import subprocess
import sys
import tempfile
import time
from pathlib import Path

COUNT = 100_000
ORDER = 5
FAMILIES = ("butterworth", "chebyshev-1", "chebyshev-2")
RESPONSES = ("lowpass", "highpass", "bandpass", "bandstop")


def settings(count):
    """As many different designs, all families and responses in turn."""
    for i in range(count):
        low = 50.0 + 10000.0 * i / count
        response = RESPONSES[i // len(FAMILIES) % len(RESPONSES)]
        yield {"topology": FAMILIES[i % len(FAMILIES)], "response": response, "order": ORDER,
               "frequency": [low, 2.0 * low] if response.startswith("band") else low}


def check(results, count):
    """Raises RuntimeError unless there is a filter for each line, in order."""
    number = 0
    for number, line in enumerate(results, 1):
        result = json.loads(line)
        if result["line"] != number or len(result["dictionary"]["poles"]) < 2 * ORDER:
            raise RuntimeError(f"line {number} of the batch is not its design: {line[:200]}")
    if number != count:
        raise RuntimeError(f"{count} lines gave {number} results")


def cpu_seconds():
    used = resource.getrusage(resource.RUSAGE_CHILDREN)
    return used.ru_utime + used.ru_stime


def measure(build, rounds, quick):
    """The least wall time and the least CPU time of a batch."""
    count = COUNT // 100 if quick else COUNT
    with tempfile.TemporaryDirectory() as folder:
        lines, out = Path(folder) / "lines", Path(folder) / "results"
        lines.write_text("".join(json.dumps(one) + "\n" for one in settings(count)),
                         encoding="utf-8")
        command = [f"{build}/bin/veltane", "design", "--batch", str(lines), "-o", str(out)]
        walls, cpus = [], []
        for number in range(rounds):
            print(f"batch: round {number + 1} of {rounds}", file=sys.stderr)
            cpu, wall = cpu_seconds(), time.perf_counter()
            subprocess.run(command, check=True)
            walls.append(time.perf_counter() - wall)
            cpus.append(cpu_seconds() - cpu)
        with out.open(encoding="utf-8") as results:
            check(results, count)
        return {"count": count, "order": ORDER, "rounds": rounds, "cores": os.cpu_count(),
                "wall": min(walls), "cpu": min(cpus), "input": lines.stat().st_size,
                "output": out.stat().st_size}
