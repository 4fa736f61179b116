"""Runs filters on signals, in doubles and in floats, and says how far their outputs are off.

Each filter is designed by `veltane design --batch`. Its sections run as they are published, as
`analysis` arranges them, and as SciPy's zpk2sos makes them of the published zeros, poles and gain.
"""

import json
import math
import random
import statistics
import subprocess
import sys
import tempfile
from pathlib import Path

import numpy
from scipy import signal

from report import significant, table, verdict

FAMILIES = ("butterworth", "chebyshev-1", "chebyshev-2")
RESPONSES = ("lowpass", "highpass", "bandpass", "bandstop")
SAMPLERATE = 48000
LOWEST, HIGHEST = 10.0, 23000.0
# Orders, how many filters, and the seed that draws them.
SETS = {"low orders": ((2, 40), 1000, 1), "high orders": ((41, 200), 120, 2)}
QUICK_COUNT = 12

CASCADES = {"published": "as published", "arranged": "arranged", "scipy": "SciPy"}
# The structure that a file has which leaves the choice to `veltane export`.
EXPORTED = "as exported"
STRUCTURES = ("direct form II transposed", "direct form I", "state variable")
ARITHMETICS = ("doubles", "floats")
LIMITS = (1e-9, 1e-4, 1e-3, 1e-2)
# Of limits below these nothing is said: every output is off by more.
LEAST_LIMIT = {"doubles": 0, "floats": 1e-6}
WORST_NAMED = 5


def settings(orders, count, seed):
    """As many random designs, all families and responses in turn."""
    draw = random.Random(seed)
    def frequency():
        return round(LOWEST * (HIGHEST / LOWEST) ** draw.random(), 3)
    for i in range(count):
        response = RESPONSES[i // len(FAMILIES) % len(RESPONSES)]
        cutoffs = sorted(frequency() for _ in range(2 if response.startswith("band") else 1))
        yield {"topology": FAMILIES[i % len(FAMILIES)], "response": response,
               "order": draw.randint(*orders), "samplerate": SAMPLERATE,
               "frequency": cutoffs if response.startswith("band") else cutoffs[0],
               "passband-ripple": round(0.05 * 60 ** draw.random(), 3),
               "stopband-attenuation": round(draw.uniform(20, 120), 2)}


def name_of(used):
    """What a reader needs to design the filter again; from the settings that were used."""
    frequencies = used["frequency"]
    edges = frequencies if isinstance(frequencies, list) else [frequencies]
    name = (f"{used['topology']} {used['response']} of order {used['order']}, "
            f"{' to '.join(f'{edge:g}' for edge in edges)} Hz")
    if used["topology"] == "chebyshev-1":
        name += f", {used['passband_ripple']:g} dB"
    if used["topology"] == "chebyshev-2":
        name += f", {used['stopband_attenuation']:g} dB"
    return name


def scipys_sections(dictionary):
    """b0 b1 b2 a1 a2, b0 ... of the published zeros, poles and gain; None if SciPy fails."""
    zeros, poles = (numpy.array(dictionary[key]).reshape(-1, 2) @ [1, 1j]
                    for key in ("zeroes", "poles"))
    try:
        sections = signal.zpk2sos(zeros, poles, dictionary["gain"])
    except ValueError:
        return None
    return sections[:, [0, 1, 2, 4, 5]].ravel().tolist()


def is_silent(cascade):
    """Whether a gain too small for a double has left a numerator of zeros."""
    return any(not any(cascade[i:i + 3]) for i in range(0, len(cascade), 5))


def cascades(build, wanted):
    """The designed filters as (name, published, SciPy's), and how many are silent."""
    lines = "".join(json.dumps(one) + "\n" for one in wanted)
    run = subprocess.run([f"{build}/bin/veltane", "design", "--batch", "-"], input=lines,
                         check=True, stdout=subprocess.PIPE, text=True)
    designed = [json.loads(line) for line in run.stdout.splitlines()]
    if len(designed) != lines.count("\n"):
        raise RuntimeError(f"{lines.count(chr(10))} lines gave {len(designed)} results")
    found = []
    for one in designed:
        dictionary = one["dictionary"]
        if not is_silent(dictionary["cascade"]):
            found.append({"name": name_of(one["settings"]), "published": dictionary["cascade"],
                          "scipy": scipys_sections(dictionary), "zeros": dictionary["zeroes"],
                          "poles": dictionary["poles"], "gain": dictionary["gain"]})
    return found, len(designed) - len(found)


def measure_set(build, orders, count, seed):
    """What bench-running measured for each filter of a set, and how many are silent."""
    filters, silent = cascades(build, settings(orders, count, seed))
    with tempfile.TemporaryDirectory() as folder:
        path = Path(folder) / "cascades"
        path.write_text("".join(json.dumps(one) + "\n" for one in filters), encoding="utf-8")
        run = subprocess.run([f"{build}/bin/bench-running", path], check=True,
                             stdout=subprocess.PIPE, text=True)
    runs = [json.loads(line) for line in run.stdout.splitlines()]
    if len(runs) != len(filters):
        raise RuntimeError(f"{len(filters)} filters gave {len(runs)} results")
    return {"orders": orders, "drawn": count, "silent": silent, "runs": runs}


def measure(build, quick):
    """All sets by their names."""
    results = {}
    for name, (orders, count, seed) in SETS.items():
        print(f"running: {name}", file=sys.stderr)
        results[name] = measure_set(build, orders, QUICK_COUNT if quick else count, seed)
    return results


def errors(one_set, cascade, structure, arithmetic):
    """(error, name) of each filter, the worst first. What is not finite counts as infinite."""
    found = []
    for run in one_set["runs"]:
        if cascade in run:
            error = run[cascade][structure][arithmetic]
            found.append((math.inf if error is None else error, run["name"]))
    return sorted(found, reverse=True)


def beyond(found, limit):
    return sum(error > limit for error, _ in found)


def percent(count, total):
    return f"{100 * count / total:.1f} %" if count else "0"


def power_of_ten(error):
    return "infinite" if math.isinf(error) else f"{error:.0e}"


def shares(one_set):
    """The table of the filters whose output is off by more than each limit."""
    header = ["in", "structure", "sections", "filters",
              *(f"beyond {limit:.0e}" for limit in LIMITS), "worst"]
    rows = []
    kinds = [*((structure, cascade, words) for structure in STRUCTURES
               for cascade, words in CASCADES.items()), (EXPORTED, "exported", "arranged")]
    for arithmetic in ARITHMETICS:
        for structure, cascade, words in kinds:
            found = errors(one_set, cascade, structure, arithmetic)
            rows.append([arithmetic, structure, words, str(len(found)),
                         *(percent(beyond(found, limit), len(found))
                           if limit >= LEAST_LIMIT[arithmetic] else "" for limit in LIMITS),
                         power_of_ten(found[0][0])])
    return table(header, rows, texts=3)


def aims(results):
    """What arranged filters of low orders are to reach."""
    low = results["low orders"]
    doubles = errors(low, "arranged", "direct form II transposed", "doubles")
    floats = errors(low, "arranged", "state variable", "floats")
    within = len(floats) - beyond(floats, 1e-4)
    exported = errors(low, "exported", EXPORTED, "floats")
    exported_within = len(exported) - beyond(exported, 1e-4)
    return [
        "- doubles, direct form II transposed: all within 1e-9: "
        f"{verdict(beyond(doubles, 1e-9) == 0)}; the worst is off by {power_of_ten(doubles[0][0])}",
        f"- floats, state variable: 99 % within 1e-4: {verdict(within >= 0.99 * len(floats))}; "
        f"{percent(within, len(floats))} are",
        "- floats, state variable: all within 1e-3: "
        f"{verdict(beyond(floats, 1e-3) == 0)}; {beyond(floats, 1e-3)} of {len(floats)} are not",
        "- floats as exported, state variable where that is quieter: 99 % within 1e-4, all within "
        f"1e-3: {verdict(exported_within >= 0.99 * len(exported) and beyond(exported, 1e-3) == 0)}; "
        f"{percent(exported_within, len(exported))} and all but {beyond(exported, 1e-3)} are",
    ]


def worst(results):
    """The arranged filters that are off most, in floats and state-variable sections."""
    lines = []
    for name, one_set in results.items():
        for error, filter_name in errors(one_set, "arranged", "state variable",
                                         "floats")[:WORST_NAMED]:
            lines.append(f"- {name}, {power_of_ten(error)}: {filter_name}")
    return lines


def sets(results):
    """How many filters there are, and what the reference was worth."""
    lines = []
    for one_set in results.values():
        low, high = one_set["orders"]
        silent = one_set["silent"]
        left_out = f"; {silent} of them silent, their gain too small for a double" if silent else ""
        lines.append(f"- orders {low} to {high}: {one_set['drawn']} filters{left_out}")
    judged = [run["reference"] for one_set in results.values() for run in one_set["runs"]
              if "reference" in run]
    lines.append(f"- the reference in 64 bits is within {max(judged):.0e} of the same in 113 bits, "
                 f"in {len(judged)} of the filters")
    return lines


def times(results):
    """How long arranging takes."""
    lines = []
    for one_set in results.values():
        low, high = one_set["orders"]
        found = [run["microseconds"] for run in one_set["runs"]]
        lines.append(f"- orders {low} to {high}: {significant(statistics.median(found), 2)} us in "
                     f"the middle, {significant(max(found), 2)} us at most")
    return lines


def parts(results, machine):
    """The lines of each part, by the name it has in the document."""
    return {"machine": machine, "sets": sets(results), "aims": aims(results),
            "low orders": shares(results["low orders"]),
            "high orders": shares(results["high orders"]), "worst": worst(results),
            "times": times(results)}
