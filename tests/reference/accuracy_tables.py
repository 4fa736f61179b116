"""The tables of docs/accuracy.md, from what measure_accuracy.py measured."""

import math

from designs import FAMILIES, RESPONSES, SETTINGS, is_band
from measures import SMALLEST_GAIN

SAFE_DB = 0.01
MAP_ORDERS = (4, 8, 16, 32, 64, 128, 200)
NYQUIST_HZ = 24000


def table(heading, rows):
    lines = [heading, ["---"] * len(heading), *rows]
    return "\n".join("| " + " | ".join(map(str, line)) + " |" for line in lines)


def figure(value, infinite="∞"):
    if value == math.inf:
        return infinite
    return f"{value:.0e}" if value else "0"


def hertz(cutoffs):
    return "–".join(f"{w * NYQUIST_HZ:g}" for w in cutoffs) + " Hz"


def chosen(results, **wanted):
    """The errors of the designs with these fields; `setting` is one too."""
    def matches(setting, design):
        fields = {"setting": setting, **design._asdict()}
        return all(fields[name] == value for name, value in wanted.items())
    return [errors for setting, design, errors in results if matches(setting, design)]


def safe_order(results, form, family, response, setting):
    """The last measured order up to which a form is safe, and why it ends there."""
    orders = sorted({design.order for _, design, _ in results})
    last = "–"
    for order in orders:
        errors, = chosen(results, family=family, response=response, setting=setting, order=order)
        if not (errors[form] <= SAFE_DB and errors[f"{form} stable"]):
            if form == "transfer":
                return last
            return f"{last} u" if errors["true gain"] < SMALLEST_GAIN else last
        last = str(order)
    return last


def safe_tables(results, form):
    """Two tables, since the bands have cutoffs of their own."""
    parts = []
    for band in (False, True):
        responses = [response for response in RESPONSES if is_band(response) == band]
        heading = ["", *(hertz(cutoffs[band]) for cutoffs in SETTINGS.values())]
        parts.append(table(heading, [
            [f"{family} {response}",
             *(safe_order(results, form, family, response, setting) for setting in SETTINGS)]
            for family in FAMILIES for response in responses]))
    return "\n\n".join(parts)


def map_table(results, family):
    rows = []
    for response in RESPONSES:
        for order in MAP_ORDERS:
            found = chosen(results, family=family, response=response, order=order)

            def ours(name):
                return figure(max(errors[name] for errors in found))

            def scipy(name):
                return figure(max(errors["scipy"][name] for errors in found), "none")

            rows.append([
                response, order, ours("poles"), scipy("poles"), ours("zeros"), ours("den"),
                scipy("den"), ours("num"), ours("gain"), scipy("gain"), ours("sections"),
                scipy("sections")])
    return table(["response", "order", "poles", "SciPy", "zeros", "denominator", "SciPy",
                  "numerator", "gain", "SciPy", "sections, dB", "SciPy"], rows)


def numerator_table(results):
    settings = ("low", "narrow", "middle")
    rows = []
    for order in (2, 3, 4, 5, 6, 8):
        for family in ("butterworth", "chebyshev-1"):
            row = [f"{family} lowpass", order]
            for setting in settings:
                errors, = chosen(results, family=family, response="lowpass", setting=setting,
                                 order=order)
                row += [figure(errors["scale"]), f"{figure(errors['sections'])} dB"]
            rows.append(row)
    cutoffs = [hertz(SETTINGS[setting][False]) for setting in settings]
    return table(["filter", "order", *(text for cutoff in cutoffs
                                       for text in (f"numerator, {cutoff}", "sections"))], rows)


def beyond(texts):
    if not texts:
        return "No filter measured is beyond these limits."
    return "Beyond the limits are (`num` is the numerator, `whole` the response in dB):\n\n```\n" + "\n".join(texts) + "\n```"
