"""What was measured, as the lines of a document: Markdown that reads well in a terminal."""

import analysis

DEFAULT_FASTER_THAN_SCIPY = 30
DEFAULT_SLOWER_THAN_LIQUID = 20
# The order up to which SciPy is to take longer, by family.
AHEAD_TO = {"butterworth": 200, "chebyshev-1": 200, "chebyshev-2": 32}


def significant(value, digits=3):
    """A number with so many digits and no exponent."""
    return f"{float(f'{value:.{digits}g}'):,.10g}"


def table(header, rows, texts):
    """A Markdown table; the first `texts` columns to the left, the others to the right."""
    widths = [max(len(row[i]) for row in [header, *rows]) for i in range(len(header))]
    def line(cells):
        return "| " + " | ".join(
            cell.ljust(width) if i < texts else cell.rjust(width)
            for i, (cell, width) in enumerate(zip(cells, widths))) + " |"
    rule = "|" + "|".join("-" * (width + 2) if i < texts else "-" * (width + 1) + ":"
                          for i, width in enumerate(widths)) + "|"
    return [line(header), rule, *map(line, rows)]


def ratio(design, other):
    """How many times the other's time ours is; None when the other refused."""
    run = design["runs"][other]
    return None if "refused" in run else design["runs"]["veltane"]["us"] / run["us"]


def time_cell(run):
    if "refused" in run:
        return "refused"
    return significant(run["us"]) + ("" if run["right"] else "*")


def ratio_cell(design, other):
    value = ratio(design, other)
    return "" if value is None else significant(value, 2)


def grid(results):
    """The designs by family and response, in the order of their orders."""
    lines = {}
    for design in results["designs"]:
        if design["name"] != "default":
            lines.setdefault((design["family"], design["response"]), []).append(design)
    return lines


def times(results):
    header = ["family", "response", "order", "ours us", "SciPy us", "liquid us", "ours/SciPy",
              "ours/liquid", "allocations", "bytes"]
    rows = []
    for design in results["designs"]:
        runs = design["runs"]
        rows.append([
            design["family"] + (" (a new box)" if design["name"] == "default" else ""),
            design["response"], str(design["order"]),
            *(time_cell(runs[program]) for program in ("veltane", "SciPy", "liquid-dsp")),
            ratio_cell(design, "SciPy"), ratio_cell(design, "liquid-dsp"),
            f"{runs['veltane']['allocations']:,.0f}", f"{runs['veltane']['bytes']:,.0f}"])
    return table(header, rows, texts=2)


def verdict(met):
    return "met" if met else "MISSED"


def aims(results):
    default = next(d for d in results["designs"] if d["name"] == "default")
    ours = default["runs"]["veltane"]["us"]
    faster = 1 / ratio(default, "SciPy")
    lines = [f"- the default design takes {significant(ours)} us, SciPy {significant(faster)} times"
             f" as long; aim: at least {DEFAULT_FASTER_THAN_SCIPY} times:"
             f" {verdict(faster >= DEFAULT_FASTER_THAN_SCIPY)}"]
    if "trusting" in results:
        lines.append("- in a host that leaves blocks of memory out of its book it takes"
                     f" {significant(results['trusting']['us'])} us")
    slower = ratio(default, "liquid-dsp")
    if slower is not None:
        lines.append(f"- it takes {significant(slower)} times as long as liquid-dsp; aim: at most"
                     f" {DEFAULT_SLOWER_THAN_LIQUID} times:"
                     f" {verdict(slower <= DEFAULT_SLOWER_THAN_LIQUID)}")
    for family, limit in AHEAD_TO.items():
        behind = [f"{d['response']} {d['order']}" for d in results["designs"]
                  if d["family"] == family and d["order"] <= limit and ratio(d, "SciPy") >= 1]
        measured = max(d["order"] for d in results["designs"] if d["order"] <= limit)
        reason = f", behind at {', '.join(behind)}" if behind else ""
        lines.append(f"- {family}: ahead of SciPy at every order to {measured}:"
                     f" {verdict(not behind)}{reason}")
    return lines


def crossings(results):
    rows = []
    for (family, response), line in grid(results).items():
        orders = [design["order"] for design in line]
        at = analysis.first_crossing(orders, [ratio(design, "SciPy") for design in line])
        rows.append([family, response, f"no crossing to {orders[-1]}" if at is None
                     else f"below {orders[0]}" if at <= orders[0] else f"{at:.0f}"])
    return table(["family", "response", "SciPy is faster from order"], rows, texts=2)


def growth(results):
    rows = []
    for program in ("veltane", "SciPy"):
        for (family, response), line in grid(results).items():
            orders = [design["order"] for design in line]
            exponents = analysis.exponents(
                orders, [design["runs"][program]["us"] for design in line])
            rows.append([program, family, response, *(f"{e:.1f}" for e in exponents)])
    steps = [f"{n} to {m}" for n, m in zip(orders, orders[1:])]
    return table(["program", "family", "response", *steps], rows, texts=3)


def burst(results):
    run = results["burst"]
    return [f"- {run['changes']:,.0f} changes of the cutoff and the {run['designs']:.0f} design that"
            f" follows: {run['us'] / 1000:,.0f} ms, {significant(1000 * run['us'] / run['changes'])}"
            f" ns a change"]


def batch(run):
    return [f"- {run['count']:,} designs of order {run['order']}: {significant(run['wall'])} s on"
            f" {run['cores']} cores, {significant(run['count'] / run['wall'])} designs a second",
            f"- CPU time: {significant(run['cpu'])} s,"
            f" {significant(1e6 * run['cpu'] / run['count'])} us a design",
            f"- it read {significant(run['input'] / 1e6)} MB of settings and wrote"
            f" {significant(run['output'] / 1e6)} MB of results"]


def wrong_filters(results):
    """Which of the filters miss the textbook's levels, a line for each program."""
    lines = []
    for program in ("veltane", "SciPy", "liquid-dsp"):
        texts = []
        for (family, response), line in grid(results).items():
            refused = [d["order"] for d in line if "refused" in d["runs"][program]]
            wrong = [d["order"] for d in line if not d["runs"][program].get("right", True)]
            if refused:
                texts.append(f"{family} {response} {', '.join(map(str, refused))} refused")
            if wrong:
                texts.append(f"{family} {response} {', '.join(map(str, wrong))}")
        lines.append(f"- {program}: {'; '.join(texts) or 'none'}")
    return lines
