"""Digital Butterworth and Chebyshev filters, designed by the module `veltane`.

>>> import veltane
>>> lowpass = veltane.design(topology="butterworth", order=4, frequency=1000, fs=48000)
>>> lowpass
<veltane.Filter: butterworth lowpass of order 4, cutoff 1000 Hz, at 48000 Hz>
>>> lowpass.sos.shape
(2, 6)
>>> lowpass.check().sound
True

`butter`, `cheby1` and `cheby2` take the arguments of SciPy's functions of these names.
"""

from ._core import __version__
from .dropin import butter, cheby1, cheby2
from .estimate import Candidate, estimate
from .filter import Filter, Response, SettingWarning, design, targets
from .verdict import Finding, Verdict

__all__ = [
    "Candidate",
    "Filter",
    "Finding",
    "Response",
    "SettingWarning",
    "Verdict",
    "__version__",
    "butter",
    "cheby1",
    "cheby2",
    "design",
    "estimate",
    "targets",
]
