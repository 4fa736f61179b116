"""Pictures for notebooks."""

import builtins
import re
import xml.etree.ElementTree as ET

import pytest

import veltane

BANDPASS = {"topology": "chebyshev-1", "response": "bandpass", "order": 4, "frequency": [300, 3400]}


def svg_in(html):
    return ET.fromstring(re.search(r"<svg.*</svg>", html).group(0))


def test_a_notebook_shows_the_level_and_the_cutoffs():
    f = veltane.design(**BANDPASS)
    html = f._repr_html_()
    assert f.title in html
    svg = svg_in(html)
    name = "{http://www.w3.org/2000/svg}"
    points = [tuple(map(float, point.split(","))) for point in svg.find(name + "polyline")
              .get("points").split()]
    assert len(points) > 500
    assert all(56 <= x <= 624 and 10 <= y <= 200 for x, y in points)
    assert [x for x, _ in points] == sorted(x for x, _ in points)
    dashed = [path for path in svg.iter(name + "path") if path.get("stroke-dasharray")]
    assert len(dashed) == 2
    # Highest between the cutoffs.
    edges = [float(path.get("d")[1:].split()[0]) for path in dashed]
    assert edges[0] < min(points, key=lambda point: point[1])[0] < edges[1]


@pytest.mark.parametrize("settings", [{}, {"order": 200}, {"frequency": 10},
                                      {"response": "bandstop", "frequency": [1000, 1001]}])
def test_any_filter_has_a_picture(settings):
    assert "</div>" in veltane.design(**settings)._repr_html_()


def test_plot_says_what_it_needs(monkeypatch):
    real = builtins.__import__

    def without_matplotlib(name, *arguments, **keywords):
        if name.startswith("matplotlib"):
            raise ImportError(name)
        return real(name, *arguments, **keywords)

    monkeypatch.setattr(builtins, "__import__", without_matplotlib)
    with pytest.raises(ImportError, match="Matplotlib, which is not installed"):
        veltane.design().plot()


def test_plot_draws_four_axes():
    matplotlib = pytest.importorskip("matplotlib")
    matplotlib.use("Agg")
    from matplotlib import pyplot
    f = veltane.design(**BANDPASS)
    figure = f.plot()
    assert len(figure.axes) == 4
    assert len(figure.axes[3].lines) == 3 or len(figure.axes[1].lines) == 3
    own, axes = pyplot.subplots()
    assert f.plot(axes) is axes
    pyplot.close(figure)
    pyplot.close(own)
