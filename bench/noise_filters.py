"""Random filters to measure noise with: all families and responses, orders to 200."""

import json
import random
import subprocess

SEED = 20
FAMILIES = ("butterworth", "chebyshev-1", "chebyshev-2")
RESPONSES = ("lowpass", "highpass", "bandpass", "bandstop")
# Section-samples of a run; what rings for longer is drawn anew and counted.
LONGEST_RUN = 4_000_000


def logarithmic(draw, low, high):
    return low * (high / low) ** draw.random()


def settings(draw, number):
    """Families and responses in turn; orders and cutoffs spread evenly over their logarithms."""
    response = RESPONSES[number // len(FAMILIES) % len(RESPONSES)]
    low = logarithmic(draw, 1e-4, 0.98)
    high = min(0.999, low * (1 + logarithmic(draw, 0.05, 20)))
    return {
        "topology": FAMILIES[number % len(FAMILIES)], "response": response, "units": "normalized",
        "order": round(logarithmic(draw, 2, 200)),
        "frequency": [low, high] if response.startswith("band") else low,
        "passband_ripple": round(logarithmic(draw, 0.1, 6), 3),
        "stopband_attenuation": round(logarithmic(draw, 20, 120), 1),
    }


def sections_of(result):
    return result["dictionary"]["cascade"]


def margin(a1, a2):
    """How far the outer pole of a section is from the circle."""
    square = a1 * a1 - 4 * a2
    if square < 0:
        return (1 - a2) / (1 + a2 ** 0.5)
    return 1 - (abs(a1) + square ** 0.5) / 2


def run_length(sections):
    """Section-samples of a run, as measured_noise.h makes them; infinite for no stable filter."""
    rows = [sections[i:i + 5] for i in range(0, len(sections), 5)]
    least = min(margin(row[3], row[4]) for row in rows)
    if not least > 0:
        return float("inf")
    return len(rows) * (1000 + 8 / least + max(20000, 20 / least))


def shuffled(draw, sections):
    rows = [sections[i:i + 5] for i in range(0, len(sections), 5)]
    draw.shuffle(rows)
    return [value for row in rows for value in row]


def design(veltane, lines):
    text = "".join(json.dumps(one) + "\n" for one in lines)
    run = subprocess.run([veltane, "design", "--batch", "-"], input=text, text=True,
                         stdout=subprocess.PIPE, check=True)
    return [json.loads(line) for line in run.stdout.splitlines()]


def filters(veltane, count, longest_run):
    """Settings with sections, every other time in another order, and how many were drawn."""
    draw = random.Random(SEED)
    found, drawn = [], 0
    while len(found) < count:
        lines = [settings(draw, drawn + i) for i in range(count)]
        for line, result in zip(lines, design(veltane, lines)):
            if len(found) == count:
                break
            drawn += 1
            sections = sections_of(result)
            if run_length(sections) > longest_run:
                continue
            if len(found) % 2:
                sections = shuffled(draw, sections)
            found.append({"settings": line, "sections": sections})
    return found, drawn
