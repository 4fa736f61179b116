"""Signals through a filter, beside SciPy's."""

import math

import numpy as np
import pytest
from scipy import signal

import veltane


@pytest.fixture
def lowpass():
    return veltane.design(topology="chebyshev-1", order=5, frequency=2000)


def noise(*shape):
    return np.random.default_rng(7).standard_normal(shape)


@pytest.mark.parametrize("shape, axis", [((400,), -1), ((400,), 0), ((3, 400), -1), ((400, 3), 0),
                                         ((2, 50, 3), 1), ((2, 50, 3), -2), ((9, 400), 1)])
def test_the_output_is_scipys_along_any_axis(lowpass, shape, axis):
    x = noise(*shape)
    y = lowpass.apply(x, axis=axis)
    assert y.shape == shape and y.flags.c_contiguous
    assert np.abs(y - signal.sosfilt(lowpass.sos, x, axis=axis)).max() < 1e-12


def test_the_input_stays_as_it_is(lowpass):
    x = noise(100)
    kept = x.copy()
    lowpass.apply(x)
    lowpass.apply(x, zero_phase=True)
    assert np.array_equal(x, kept)


@pytest.mark.parametrize("kind", [np.float32, np.int16, np.uint8, bool])
def test_any_real_type_is_filtered_in_doubles(lowpass, kind):
    x = (noise(100) * 50).astype(kind)
    y = lowpass.apply(x)
    assert y.dtype == np.float64
    assert np.array_equal(y, lowpass.apply(x.astype(float)))


def test_views_and_lists_are_signals(lowpass):
    x = noise(200)
    assert np.array_equal(lowpass.apply(x[::-2]), lowpass.apply(x[::-2].tolist()))


@pytest.mark.parametrize("shape", [(0,), (3, 0), (0, 3)])
def test_nothing_in_is_nothing_out(lowpass, shape):
    assert lowpass.apply(np.zeros(shape)).shape == shape


@pytest.mark.parametrize("shape, axis", [((400,), -1), ((400, 2), 0)])
def test_both_directions_are_scipys(lowpass, shape, axis):
    x = noise(*shape)
    y = lowpass.apply(x, axis=axis, zero_phase=True)
    assert np.abs(y - signal.sosfiltfilt(lowpass.sos, x, axis=axis)).max() < 1e-9


def test_a_signal_too_short_for_both_directions_is_refused(lowpass):
    with pytest.raises(ValueError):
        lowpass.apply(np.ones(4), zero_phase=True)


def test_a_sine_at_the_cutoff_of_a_butterworth_loses_3_db():
    f = veltane.design(topology="butterworth", order=4, frequency=1000)
    t = np.arange(9600) / f.fs
    y = f.apply(np.sin(2 * math.pi * 1000 * t))[4800:]
    assert math.sqrt(2 * np.mean(y**2)) == pytest.approx(math.sqrt(0.5), rel=1e-9)


@pytest.mark.parametrize("wrong", [math.nan, math.inf])
def test_samples_that_are_not_finite_are_refused(lowpass, wrong):
    with pytest.raises(ValueError, match="^the signal has a sample that is not finite$"):
        lowpass.apply([0.0, wrong])


def test_complex_signals_and_scalars_are_refused(lowpass):
    with pytest.raises(TypeError):
        lowpass.apply([1j])
    with pytest.raises(np.AxisError):
        lowpass.apply(1.0)
    with pytest.raises(np.AxisError):
        lowpass.apply([1.0], axis=1)


def test_a_filter_that_is_not_stable_is_refused():
    f = veltane.design(topology="butterworth", response="bandpass", frequency=[3400, 300])
    with pytest.raises(ValueError, match="^this filter is not stable"):
        f.apply(np.ones(10))
