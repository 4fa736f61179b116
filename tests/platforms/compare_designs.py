#!/usr/bin/python3
"""Compares what the command designs here with what it designs on another machine.

  compare_designs.py --native build/release/bin/veltane -- RUNNER... VELTANE

Both get the same random settings as one batch. Printed is how many of the designs are the same to
the last bit, and how far the others are apart: poles and zeros by their distance, the gain and the
level at three frequencies relatively. It fails where a filter is further off than rounding explains,
or where not both design it.
"""

import argparse
import cmath
import json
import math
import random
import subprocess
import sys

FAMILIES = ("butterworth", "chebyshev-1", "chebyshev-2")
RESPONSES = ("lowpass", "highpass", "bandpass", "bandstop")
# Far above what rounding does, far below what anybody could hear or measure.
MOST_APART = 1e-9
MOST_OFF = 1e-6


def settings(choose):
    """One line of settings, of orders up to 12 (1 becomes 2), at cutoffs that make a filter worth having."""
    response = choose.choice(RESPONSES)
    low = 24000 * 10 ** choose.uniform(-2, -0.4)
    edges = [low] if response in ("lowpass", "highpass") else [low, min(low * 1.8, 23000)]
    return {"topology": choose.choice(FAMILIES), "response": response,
            "order": choose.randint(1, 12), "frequency": [round(edge, 3) for edge in edges],
            "passband_ripple": round(choose.uniform(0.05, 3), 3),
            "stopband_attenuation": round(choose.uniform(20, 120), 3), "tf_output": 1}


def results(command, lines):
    done = subprocess.run([*command, "design", "--batch", "-"], input=lines, capture_output=True,
                          text=True, encoding="utf-8", timeout=1800, check=False)
    if done.returncode not in (0, 1):
        sys.exit(f"{command[-1]} ended with status {done.returncode}: {done.stderr}")
    return [json.loads(line) for line in done.stdout.splitlines()]


def points(pairs):
    return sorted((complex(*pair) for pair in zip(pairs[::2], pairs[1::2])),
                  key=lambda z: (round(z.real, 6), z.imag))


def farthest(these, those):
    """How far each of these is from the nearest of those, at the most."""
    return max((min(abs(a - b) for b in those) for a in these), default=0.0)


def level(cascade, angle):
    z = cmath.exp(-1j * angle)
    total = 1
    for at in range(0, len(cascade), 5):
        b0, b1, b2, a1, a2 = cascade[at:at + 5]
        total *= (b0 + b1 * z + b2 * z * z) / (1 + a1 * z + a2 * z * z)
    return abs(total)


def relative(a, b, scale):
    return abs(a - b) / max(scale, 1e-300)


def main():
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("--native", required=True)
    parser.add_argument("--count", type=int, default=1000)
    parser.add_argument("command", nargs="+")
    arguments = parser.parse_args()
    choose = random.Random("platforms")
    lines = "".join(json.dumps(settings(choose)) + "\n" for _ in range(arguments.count))
    here, there = results([arguments.native], lines), results(arguments.command, lines)
    if len(here) != arguments.count or len(there) != arguments.count:
        sys.exit(f"{arguments.count} lines, {len(here)} results here, {len(there)} there")
    same, apart, off, gains, problems = 0, 0.0, 0.0, 0.0, []
    for number, (ours, theirs) in enumerate(zip(here, there), 1):
        if "error" in ours or "error" in theirs:
            problems.append(f"line {number}: it is not designed by both")
            continue
        if ours == theirs:
            same += 1
            continue
        a, b = ours["dictionary"], theirs["dictionary"]
        moved = max(max(farthest(points(a[key]), points(b[key])),
                        farthest(points(b[key]), points(a[key]))) for key in ("zeroes", "poles"))
        changed = relative(a["gain"], b["gain"], abs(a["gain"]))
        heights = [(level(a["cascade"], at), level(b["cascade"], at)) for at in (0.1, 0.5, 1.5)]
        differs = max(relative(x, y, max(1.0, x)) for x, y in heights)
        apart, gains, off = max(apart, moved), max(gains, changed), max(off, differs)
        # Not a number is further off than anything.
        if not moved <= MOST_APART or not differs <= MOST_OFF:
            problems.append(f"line {number}: roots {moved:.2g} apart, levels {differs:.2g} off")
    print(f"{arguments.count} designs: {same} the same to the last bit; of the others zeros and "
          f"poles at most {apart:.1e} apart, gains {gains:.1e} and levels {off:.1e} off")
    for problem in problems[:20]:
        print(problem)
    return 1 if problems or math.isnan(apart + off) else 0


if __name__ == "__main__":
    sys.exit(main())
