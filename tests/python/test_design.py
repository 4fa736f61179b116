"""What design() returns, beside what the command prints and what SciPy says of the same filter."""

import json
import math
import pickle
import subprocess
import warnings

import numpy as np
import pytest
from scipy import signal

import veltane

DESIGNS = [
    {},
    {"topology": "butterworth", "order": 4, "frequency": 1000},
    {"topology": "chebyshev-1", "response": "highpass", "order": 7, "passband_ripple": 2.5, "fs": 44100},
    {"topology": "chebyshev-2", "response": "bandpass", "order": 3, "frequency": [300, 3400]},
    {"topology": "butterworth", "response": "bandstop", "order": 2, "frequency": [0.1, 0.3],
     "units": "normalized"},
]


def words(settings):
    """The settings as options of the command."""
    for name, value in settings.items():
        yield "--" + {"fs": "samplerate"}.get(name, name).replace("_", "-")
        yield from map(str, value if isinstance(value, list) else [value])


def run(command, *arguments):
    return subprocess.run([command, *arguments], capture_output=True, text=True, check=False)


@pytest.mark.parametrize("settings", DESIGNS)
def test_arrays_are_what_the_command_prints_to_the_bit(command, settings):
    found = veltane.design(**settings)
    printed = json.loads(run(command, "design", *words(settings), "--tf-output", "on", "--format",
                             "json").stdout)["dictionary"]
    assert np.array_equal(found.z.view(float), printed["zeroes"])
    assert np.array_equal(found.p.view(float), printed["poles"])
    assert found.k == printed["gain"]
    assert np.array_equal(found.sos[:, [0, 1, 2, 4, 5]].ravel(), printed["cascade"])
    assert (found.sos[:, 3] == 1).all()
    assert np.array_equal(found.b, printed["numerator"])
    assert np.array_equal(found.a, printed["denominator"])


@pytest.mark.parametrize("settings", DESIGNS)
def test_forms_are_one_filter_to_scipy(settings):
    f = veltane.design(**settings)
    w = np.linspace(0.01, 0.99, 300) * math.pi
    from_roots = signal.freqz_zpk(f.z, f.p, f.k, w)[1]
    for h in (signal.sosfreqz(f.sos, w)[1], signal.sosfreqz(f.arranged, w)[1],
              f.response(w / math.pi * f.fs / 2).h):
        assert np.abs(h - from_roots).max() < 1e-10
    # Poles of a low band lie close together, where the polynomial cancels.
    assert np.abs(signal.freqz(f.b, f.a, w)[1] - from_roots).max() < 1e-6


def test_arrays_belong_to_the_caller():
    f = veltane.design()
    sos = f.sos
    sos[:] = 0
    assert f.sos[0, 0] != 0
    for array in (f.z, f.p):
        assert array.dtype == np.complex128
    for array in (f.sos, f.b, f.a):
        assert array.dtype == np.float64
    assert isinstance(f.k, float)


@pytest.mark.parametrize("settings", [
    {"topology": "bessel"},
    {"response": "comb"},
    {"order": "two"},
    {"order": math.nan},
    {"frequency": math.inf},
    {"frequency": [1, 2, 3]},
    {"response": "bandpass", "frequency": 1000},
    {"units": "radians"},
    {"passband_ripple": "loud"},
])
def test_refusals_are_the_commands(command, settings):
    with pytest.raises(ValueError) as refused:
        veltane.design(**settings)
    said = run(command, "design", *words(settings))
    assert said.returncode == 2
    # The command names options by their dashes where it reads the words itself.
    assert said.stderr.replace("--", "").startswith(f"veltane: {refused.value}".replace("--", ""))


@pytest.mark.parametrize("settings", [
    {"order": 1}, {"order": 500}, {"order": 5.5}, {"order": 10**30}, {"stopband_attenuation": 300},
    {"frequency": 30000}, {"frequency": 0}, {"fs": 44100.7}, {"fs": -5},
    {"frequency": [100, 200]},
])
def test_changed_settings_warn_in_the_commands_words(command, settings):
    with warnings.catch_warnings(record=True) as caught:
        warnings.simplefilter("always")
        f = veltane.design(**settings)
    assert caught
    assert all(each.category is veltane.SettingWarning for each in caught)
    assert all(each.filename == __file__ for each in caught)
    said = run(command, "design", *words(settings))
    assert [f"veltane: {each.message}" for each in caught] == said.stderr.splitlines()
    assert f.remarks == tuple(str(each.message) for each in caught)


def test_nothing_warns_without_reason():
    with warnings.catch_warnings():
        warnings.simplefilter("error")
        for settings in DESIGNS:
            assert veltane.design(**settings).remarks == ()


@pytest.mark.parametrize("frequency", [
    (300, 3400), np.array([300, 3400]), np.array([300.0, 3400.0]), ["300", "3400"],
    [np.float32(300), np.int64(3400)],
])
def test_cutoffs_may_be_any_sequence(frequency):
    f = veltane.design(response="bandpass", frequency=frequency)
    assert f.settings["frequency"] == [300, 3400]
    assert np.array_equal(f.p, veltane.design(response="bandpass", frequency=[300, 3400]).p)


@pytest.mark.parametrize("frequency", [1000, 1000.0, np.float32(1000), np.array(1000.0), [1000]])
def test_a_cutoff_may_be_any_number(frequency):
    assert veltane.design(frequency=frequency).settings["frequency"] == [1000]


@pytest.mark.parametrize("wrong", [object(), 1j, {"order": 2}, b"5"])
def test_other_objects_are_no_settings(wrong):
    with pytest.raises((TypeError, ValueError)):
        veltane.design(order=wrong)


def test_decimals_keep_all_their_digits():
    cutoff = 1234.5678901234567
    assert veltane.design(frequency=cutoff).settings["frequency"] == [cutoff]


def test_a_copy_by_pickle_is_the_same_filter():
    for settings in DESIGNS:
        f = veltane.design(**settings)
        copy = pickle.loads(pickle.dumps(f))
        assert copy.settings == f.settings
        assert np.array_equal(copy.sos, f.sos)


def test_responses_are_scipys():
    f = veltane.design(topology="chebyshev-1", order=4, frequency=2000)
    at, h = signal.sosfreqz(f.sos, 512, fs=f.fs)
    found = f.response()
    assert np.allclose(found.frequencies, at)
    assert np.abs(found.h - h).max() < 1e-12
    assert np.allclose(found.level_db, 20 * np.log10(np.abs(h)), atol=1e-9)
    assert np.allclose(np.exp(1j * np.radians(found.phase_deg)), h / np.abs(h), atol=1e-8)
    delay = signal.group_delay((f.b, f.a), found.frequencies[:300], fs=f.fs)[1]
    assert np.allclose(found.delay[:300], delay, rtol=1e-4)


def test_responses_keep_the_shape_that_was_asked_for():
    f = veltane.design()
    assert f.response(1000).h.shape == ()
    assert f.response([[1, 2, 3], [4, 5, 6]]).level_db.shape == (2, 3)
    assert f.response([]).delay.shape == (0,)


@pytest.mark.parametrize("frequency", [-1, 24000.1, math.nan])
def test_frequencies_beyond_half_the_rate_are_refused(frequency):
    with pytest.raises(ValueError, match="^a frequency is from 0 to 24000 Hz"):
        veltane.design().response([10, frequency])
