"""One host a process: threads, forks and new interpreters."""

import os
import subprocess
import sys
import threading
from concurrent.futures import ThreadPoolExecutor

import numpy as np

import veltane

SETTINGS = {"topology": "chebyshev-1", "order": 6, "frequency": 700}


def test_every_thread_designs():
    expected = veltane.design(**SETTINGS).sos
    designs = threading.Barrier(4)

    def design_many(_):
        designs.wait()
        return [veltane.design(**SETTINGS).sos for _ in range(50)]

    with ThreadPoolExecutor(4) as pool:
        for found in pool.map(design_many, range(4)):
            assert all(np.array_equal(sos, expected) for sos in found)
    assert np.array_equal(veltane.design(**SETTINGS).sos, expected)


def test_a_filter_of_one_thread_answers_in_another():
    f = veltane.design(**SETTINGS)
    with ThreadPoolExecutor(1) as pool:
        assert pool.submit(lambda: f.check().sound and len(f.b)).result() == 7


def test_a_signal_leaves_the_interpreter_to_others():
    f = veltane.design(topology="butterworth", order=20, frequency=1000)
    x = np.ones(2_000_000)
    done = threading.Event()
    with ThreadPoolExecutor(1) as pool:
        run = pool.submit(lambda: (f.apply(x), done.set()))
        count = 0
        while not done.is_set():
            veltane.design(order=2)
            count += 1
        run.result()
    assert count > 10


def child_status(work):
    """What came of work in a child that was made by a fork: 0 if all was well."""
    child = os.fork()
    if child == 0:
        status = 1
        try:
            work()
            status = 0
        finally:
            os._exit(status)
    return os.waitstatus_to_exitcode(os.waitpid(child, 0)[1])


def test_a_forked_child_designs_and_leaves_the_parent_alone():
    expected = veltane.design(**SETTINGS).sos

    def work():
        assert np.array_equal(veltane.design(**SETTINGS).sos, expected)
        assert veltane.design(**SETTINGS).check().sound

    assert child_status(work) == 0
    assert np.array_equal(veltane.design(**SETTINGS).sos, expected)


def test_a_child_forked_by_another_thread_designs():
    expected = veltane.design(**SETTINGS).sos

    def work():
        assert np.array_equal(veltane.design(**SETTINGS).sos, expected)

    with ThreadPoolExecutor(1) as pool:
        assert pool.submit(child_status, work).result() == 0


def test_a_failed_child_is_noticed():
    def work():
        raise AssertionError

    assert child_status(work) == 1


def test_an_interpreter_ends_in_silence():
    run = subprocess.run([sys.executable, "-c", "import veltane; f = veltane.design(); f.check()"],
                         capture_output=True, check=False)
    assert (run.returncode, run.stdout, run.stderr) == (0, b"", b"")


def test_the_extension_exports_its_start_alone():
    symbols = subprocess.run(["nm", "-D", "--defined-only", veltane._core.__file__], check=True,
                             capture_output=True, text=True).stdout
    assert [line.split()[-1] for line in symbols.splitlines()] == ["PyInit__core"]
