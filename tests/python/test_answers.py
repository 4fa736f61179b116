"""check(), export() and estimate() beside the command's."""

import json
import subprocess
import warnings

import pytest
from test_design import DESIGNS, words

import veltane

REVERSED = {"topology": "butterworth", "response": "bandpass", "frequency": [3400, 300]}


def output(command, *arguments):
    return subprocess.run([command, *arguments], capture_output=True, text=True, check=False).stdout


@pytest.mark.parametrize("settings", [*DESIGNS, REVERSED])
def test_a_verdict_is_the_commands(command, settings):
    verdict = veltane.design(**settings).check()
    said = json.loads(output(command, "check", *words(settings), "--format", "json"))
    assert verdict.title == said["title"]
    assert verdict.sound == said["sound"]
    assert [[f.about, f.weight, f.text, f.change] for f in verdict.findings] == [
        [f["about"], f["weight"], f["text"], f["change"]] for f in said["findings"]]
    assert verdict.measured == said["measured"]


def test_a_remedy_makes_a_filter_sound():
    bad = veltane.design(**REVERSED).check()
    assert not bad.sound
    assert str(bad).startswith("2 problems: butterworth bandpass")
    remedy = next(f for f in bad.problems if f.about == "cutoff").remedies[0]
    assert remedy == {"frequency": [300, 3400]}
    assert veltane.design(**{**REVERSED, **remedy}).check().sound


@pytest.mark.parametrize("settings", DESIGNS)
def test_exported_files_are_the_commands_to_the_byte(command, settings):
    f = veltane.design(**settings)
    for target in veltane.targets():
        said = output(command, "export", "--for", target, *words(settings))
        try:
            with warnings.catch_warnings():
                warnings.simplefilter("ignore", veltane.SettingWarning)
                text = f.export(target)
        except ValueError:
            assert said == ""
            continue
        assert without_command(text) == without_command(said)


def without_command(text):
    """The settings of the command that made it may be given in another order."""
    return [line for line in text.splitlines()
            if "veltane export" not in line and '"command": ["veltane"' not in line]


def test_wishes_for_a_layout_are_kept(command):
    settings = {"topology": "butterworth", "order": 6, "frequency": 500}
    f = veltane.design(**settings)
    for wish, option in [("normalise", "--normalise"), ("as_published", "--as-published")]:
        said = output(command, "export", "--for", "scipy", *words(settings), option)
        assert without_command(f.export("scipy", **{wish: True})) == without_command(said)
    state_variable = f.export("c", structure="state-variable")
    assert "state-variable sections" in state_variable
    assert "veltane_hum_filter" in f.export("c", name="hum filter")


@pytest.mark.parametrize("wrong, sentence", [
    ({"target": "fortran"}, "fortran"),
    ({"target": "c", "structure": "lattice"}, "structure cannot be 'lattice'; it is one of "
     "direct-2-transposed, direct-1, state-variable"),
])
def test_a_layout_that_does_not_exist_is_refused(wrong, sentence):
    with pytest.raises(ValueError, match=sentence):
        veltane.design().export(**wrong)


@pytest.mark.parametrize("edges", [(1000, 1500), (1500, 1000), ([300, 3400], [200, 4000]),
                                   ([200, 4000], [300, 3400])])
def test_an_estimate_is_the_commands(command, edges):
    found = veltane.estimate(*edges, ripple=1, attenuation=60, fs=44100)
    texts = [[str(e) for e in (edge if isinstance(edge, list) else [edge])] for edge in edges]
    said = json.loads(output(command, "estimate", "--passband", *texts[0], "--stopband", *texts[1],
                             "--ripple", "1", "--attenuation", "60", "--samplerate", "44100",
                             "--format", "json"))
    theirs = said["families"]
    assert [c.topology for c in found] == [c["family"] for c in theirs]
    assert [c.order for c in found] == [c["order"] for c in theirs]
    assert [c.topology for c in found if c.recommended] == [said["recommended"]]
    assert {c.response for c in found} == {said["response"]}


def test_a_candidate_does_what_was_demanded():
    for candidate in veltane.estimate(1000, 1500, ripple=1, attenuation=60):
        f = candidate.design()
        assert f.settings["order"] == candidate.order
        levels = f.response([0, 500, 1000, 1500, 2000]).level_db
        assert levels[:3].min() >= -1.0001
        assert levels[3:].max() <= -59.9999


def test_one_family_can_be_asked_for():
    (only,) = veltane.estimate(1000, 1500, ripple=1, attenuation=60, topology="butterworth")
    assert only.topology == "butterworth" and only.order == 19


@pytest.mark.parametrize("demand", [
    {"passband": 1000, "stopband": 1000}, {"passband": 1000, "stopband": 30000},
    {"passband": [1000, 2000], "stopband": 500}, {"passband": float("nan"), "stopband": 500},
    {"ripple": 0}, {"ripple": float("nan")}, {"attenuation": 0.5}, {"attenuation": 2000},
    {"fs": 0}, {"fs": 44100.5}, {"topology": "bessel"},
])
def test_a_demand_without_sense_is_refused(demand):
    usual = {"passband": 1000, "stopband": 1500, "ripple": 1, "attenuation": 60}
    with pytest.raises(ValueError):
        veltane.estimate(**{**usual, **demand})
