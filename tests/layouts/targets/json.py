"""Reads the document and filters with SciPy."""

import json

from programs import DOUBLES, one_by_one, sections_filtered

ENDING = ".json"
TOLERANCE = DOUBLES


@one_by_one
def impulse_responses(file, _name, samplerate, count):
    document = json.loads(file.read_text(encoding="utf-8"))
    if document["samplerate"] != samplerate or document["feedback"] != "subtracted":
        raise ValueError("samplerate or feedback is not as it should be")
    column = document["columns"].index
    order = [column(key) for key in ("b0", "b1", "b2", "a1", "a2")]
    return sections_filtered([[row[i] for i in order] for row in document["sections"]], count)
