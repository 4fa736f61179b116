"""butter, cheby1 and cheby2 beside SciPy's."""

import inspect
import math

import numpy as np
import pytest
from conftest import pairing
from scipy import signal

import veltane

FUNCTIONS = {"butter": (), "cheby1": (1.5,), "cheby2": (55.0,)}
BANDS = [("low", 0.3), ("high", 0.3), ("bandpass", [0.2, 0.45]), ("bandstop", [0.2, 0.45])]
EDGES = [0.0005, 0.02, 0.3, 0.97]


def both(name, N, Wn, btype, output, fs=None):
    arguments = (N, *FUNCTIONS[name], Wn)
    keywords = {"btype": btype, "output": output, "fs": fs}
    return (getattr(veltane, name)(*arguments, **keywords),
            getattr(signal, name)(*arguments, **keywords))


def level_of(sos, w):
    return signal.sosfreqz(sos, np.atleast_1d(w) * math.pi)[1]


@pytest.mark.parametrize("name", FUNCTIONS)
@pytest.mark.parametrize("btype, Wn", BANDS)
@pytest.mark.parametrize("N", [2, 3, 4, 5, 8, 13])
def test_zeros_poles_and_gain_are_scipys(name, btype, Wn, N):
    (z, p, k), (their_z, their_p, their_k) = both(name, N, Wn, btype, "zpk")
    # Zeros of a bandstop are multiple, and those of SciPy are off by the root of the rounding.
    assert pairing(z, their_z) < 1e-7
    assert pairing(p, their_p) < 1e-11
    assert k == pytest.approx(their_k, rel=1e-10)


@pytest.mark.parametrize("name", FUNCTIONS)
@pytest.mark.parametrize("btype, Wn", BANDS + [("low", w) for w in EDGES]
                         + [("high", w) for w in EDGES])
@pytest.mark.parametrize("N", [2, 3, 6, 7])
def test_sections_have_scipys_response(name, btype, Wn, N):
    ours, theirs = both(name, N, Wn, btype, "sos")
    assert ours.shape == theirs.shape
    assert (ours[:, 3] == 1).all()
    w = np.linspace(0.001, 0.999, 400)
    # SciPy's sections have rounded coefficients as well: near 0 that moves their levels.
    tolerance = 1e-10 if np.min(Wn) > 0.01 else 1e-6
    assert np.abs(level_of(ours, w) - level_of(theirs, w)).max() < tolerance


@pytest.mark.parametrize("name", FUNCTIONS)
@pytest.mark.parametrize("btype, Wn", BANDS)
@pytest.mark.parametrize("N", [2, 3, 4])
def test_polynomials_are_scipys_and_the_usual_output(name, btype, Wn, N):
    (b, a), (their_b, their_a) = both(name, N, Wn, btype, "ba")
    assert np.allclose(b, their_b, rtol=1e-9, atol=1e-12)
    assert np.allclose(a, their_a, rtol=1e-9, atol=1e-12)
    usual = getattr(veltane, name)(N, *FUNCTIONS[name], Wn, btype)
    assert np.array_equal(usual[0], b) and np.array_equal(usual[1], a)


@pytest.mark.parametrize("name", FUNCTIONS)
def test_signatures_are_scipys(name):
    ours = inspect.signature(getattr(veltane, name)).parameters.values()
    theirs = inspect.signature(getattr(signal, name)).parameters.values()
    assert [(p.name, p.default, p.kind) for p in ours] == [(p.name, p.default, p.kind) for p in theirs]


@pytest.mark.parametrize("btype", ["low", "lowpass", "lp", "l", "LOW", "high", "highpass", "hp", "h"])
@pytest.mark.parametrize("fs", [None, 44100, 22050.5])
def test_words_and_rates_are_scipys(btype, fs):
    Wn = 0.25 if fs is None else 5000
    ours, theirs = both("butter", 4, Wn, btype, "zpk", fs)
    assert pairing(ours[1], theirs[1]) < 1e-12


@pytest.mark.parametrize("btype", ["band", "pass", "bandpass", "bp", "stop", "bands", "bandstop", "bs"])
def test_words_of_bands_are_scipys(btype):
    ours, theirs = both("cheby1", 4, (300.0, 3400.0), btype, "zpk", 48000)
    assert pairing(ours[1], theirs[1]) < 1e-11


@pytest.mark.parametrize("N", [2, 3, 10, 11])
def test_a_butterworth_has_lost_half_its_power_at_the_cutoff(N):
    sos = veltane.butter(N, 0.37, output="sos")
    assert 20 * math.log10(abs(level_of(sos, 0.37)[0])) == pytest.approx(-10 * math.log10(2), abs=1e-9)
    assert abs(level_of(sos, 0.0)[0]) == pytest.approx(1, abs=1e-12)


@pytest.mark.parametrize("N", [2, 3, 10, 11])
def test_a_ripple_is_touched_and_not_exceeded(N):
    sos = veltane.cheby1(N, 2.0, 0.37, output="sos")
    levels = 20 * np.log10(np.abs(level_of(sos, np.linspace(0, 0.37, 20001))))
    assert levels.max() == pytest.approx(0.0, abs=1e-5)
    assert levels.min() == pytest.approx(-2.0, abs=1e-5)


@pytest.mark.parametrize("N", [2, 3, 10, 11])
def test_a_stopband_begins_at_the_cutoff(N):
    sos = veltane.cheby2(N, 60, 0.37, output="sos")
    levels = 20 * np.log10(np.abs(level_of(sos, np.linspace(0.37, 1, 20001))) + 1e-30)
    assert levels.max() == pytest.approx(-60, abs=1e-6)
    assert 20 * np.log10(abs(level_of(sos, 0.36)[0])) > -60


@pytest.mark.parametrize("arguments, keywords, sentence", [
    ((1, 0.3), {}, "N is a whole number from 2 to 200, not 1"),
    ((201, 0.3), {}, "N is a whole number from 2 to 200, not 201"),
    ((2.5, 0.3), {}, "N is a whole number from 2 to 200, not 2.5"),
    ((4, 0.3), {"analog": True}, "veltane designs digital filters: analog=True is refused"),
    ((4, 0.3), {"output": "ss"}, "output cannot be 'ss'; it is one of ba, zpk, sos"),
    ((4, 0.3), {"btype": "comb"}, "btype cannot be 'comb'; it is one of lowpass, low, lp, l, "
     "highpass, high, hp, h, bandpass, band, pass, bp, bandstop, bands, stop, bs"),
    ((4, 0.3), {"btype": "band"}, "a bandpass has 2 cutoffs: Wn gives 1"),
    ((4, [0.2, 0.3]), {}, "a lowpass has 1 cutoff: Wn gives 2"),
    ((4, [0.3, 0.2]), {"btype": "stop"}, "Wn gives the lower cutoff first, not 0.3 and 0.2"),
    ((4, 1.0), {}, "Wn is from 0.0001 to 0.9999 of half the sample rate, not 1"),
    ((4, 0.0), {}, "Wn is from 0.0001 to 0.9999 of half the sample rate, not 0"),
    ((4, math.nan), {}, "Wn is from 0.0001 to 0.9999 of half the sample rate, not nan"),
    ((4, 2), {"fs": 48000}, "Wn is from 0.0001 to 0.9999 of half the sample rate, not 2, which is "
     "8.33333e-05 of it"),
    ((4, 2), {"fs": 0}, "fs is above 0, not 0"),
])
def test_what_is_not_scipys_filter_is_refused(arguments, keywords, sentence):
    with pytest.raises(ValueError) as refused:
        veltane.butter(*arguments, **keywords)
    assert str(refused.value) == sentence


def test_ripples_and_attenuations_outside_the_range_are_refused():
    with pytest.raises(ValueError, match=r"^rp is from 0.1 to 48, not 0.05$"):
        veltane.cheby1(4, 0.05, 0.3)
    with pytest.raises(ValueError, match=r"^rs is from 6 to 240, not 5.9$"):
        veltane.cheby2(4, 5.9, 0.3)
    assert len(veltane.cheby1(4, 0.1, 0.3)[0]) == len(veltane.cheby2(4, 6, 0.3)[0]) == 5


def test_the_numbers_are_those_of_a_design():
    z, p, k = veltane.cheby1(4, 1.5, [300, 3400], "band", output="zpk", fs=48000)
    f = veltane.design(topology="chebyshev-1", response="bandpass", order=4, passband_ripple=1.5,
                       units="normalized", frequency=[300 * 2 / 48000, 3400 * 2 / 48000])
    assert np.array_equal(z, f.z) and np.array_equal(p, f.p) and k == f.k
    sos = veltane.cheby1(4, 1.5, [300, 3400], "band", output="sos", fs=48000)
    assert np.array_equal(sos, f.arranged)


@pytest.mark.parametrize("levels, stable", [([0.02, -3.0103], True), ([0, -3.03], True),
                                            ([0, -3.0103], False), ([math.nan, -3.0103], True)])
def test_a_filter_that_rounding_has_changed_is_refused(monkeypatch, levels, stable):
    real = veltane._core.design

    class Off:
        def __init__(self, *settings):
            self.real = real(*settings)

        def levels_of_roots(self, _):
            return levels

        def is_stable(self):
            return stable

        def __getattr__(self, name):
            return getattr(self.real, name)

    monkeypatch.setattr(veltane._core, "design", Off)
    with pytest.raises(ValueError, match="does not come out as asked for"):
        veltane.butter(4, 0.3, output="zpk")


@pytest.mark.parametrize("name", FUNCTIONS)
def test_every_order_is_scipys_or_refused(name):
    """At high orders of narrow bands doubles give out somewhere: then no filter is returned."""
    refused = 0
    for N in (20, 50, 100, 200):
        for btype, Wn in (("low", 0.001), ("low", 0.4), ("band", [0.1, 0.1002]), ("band", [0.2, 0.5])):
            try:
                (z, p, k), theirs = both(name, N, Wn, btype, "zpk")
            except ValueError as why:
                assert "does not come out as asked for" in str(why)
                refused += 1
                continue
            assert len(p) == len(theirs[1])
            assert np.abs(p).max() < 1
            assert pairing(p, theirs[1]) < 1e-6
    assert refused < 16
