"""Times filters that run over signals, beside SciPy's sosfilt, and a file of two hours."""

import re
import subprocess
import sys
import tempfile
import time
import wave
from pathlib import Path

import numpy
from scipy import signal

ORDERS = (5, 40)
CHANNELS = (1, 2, 8)
FRAMES = 1 << 18
CUTOFF = 0.25
RATE = 48000
HOURS = 2.0


def samples(count):
    """The same signal as in bench_signals.cpp."""
    i = numpy.arange(count, dtype=numpy.uint64)
    return ((i * numpy.uint64(2654435761)) & numpy.uint64(0xFFFFFFFF)) / 2147483648.0 - 1.0


def ours(build, sos, channels, rounds):
    """Nanoseconds a frame, and the last frame."""
    lines = "".join(" ".join(f"{x:.17g}" for x in (*row[:3], *row[4:])) + "\n" for row in sos)
    run = subprocess.run([f"{build}/bin/bench-signals", str(channels), str(FRAMES), str(rounds)],
                         input=lines, check=True, capture_output=True, text=True)
    time_of_frame, *last = map(float, run.stdout.split())
    return time_of_frame, last


def scipys(sos, channels, rounds):
    """The same of sosfilt, whose channels lie one after the other, which suits it best."""
    x = numpy.ascontiguousarray(samples(FRAMES * channels).reshape(FRAMES, channels).T)
    least, last = float("inf"), None
    for _ in range(rounds):
        begin = time.perf_counter()
        y = signal.sosfilt(sos, x, axis=1)
        least = min(least, time.perf_counter() - begin)
        last = y[:, -1]
    return least / FRAMES * 1e9, last


def measure_speed(build, rounds, quick):
    found = []
    for order in ORDERS:
        sos = signal.butter(order, CUTOFF, output="sos")
        for channels in CHANNELS[:1] if quick else CHANNELS:
            print(f"filtering: order {order}, channels: {channels}", file=sys.stderr)
            # In turn, so that other work on the machine meets both.
            veltane, scipy = [], []
            for _ in range(rounds):
                veltane.append(ours(build, sos, channels, 3))
                scipy.append(scipys(sos, channels, 3))
            if not numpy.allclose(veltane[0][1], scipy[0][1], rtol=0, atol=1e-9):
                raise RuntimeError(f"order {order}: veltane and sosfilt disagree")
            found.append({"order": order, "channels": channels, "rounds": rounds,
                          "veltane": min(one for one, _ in veltane),
                          "SciPy": min(one for one, _ in scipy)})
    return found


def write_noise(path, seconds):
    """A stereo file of 16 bits; the same second again and again."""
    second = (samples(2 * RATE) * 16384).astype("<i2").tobytes()
    with wave.open(str(path), "wb") as file:
        file.setnchannels(2)
        file.setsampwidth(2)
        file.setframerate(RATE)
        for _ in range(seconds):
            file.writeframesraw(second)


def most_memory(process):
    """The most memory in MB that a process has had so far; 0 once it has ended.

    Its rusage would count what this process had when the other was made from it.
    """
    status = Path(f"/proc/{process}/status").read_text(encoding="utf-8")
    found = re.search(r"^VmHWM:\s+(\d+) kB$", status, flags=re.M)
    return int(found.group(1)) * 1024 / 1e6 if found else 0.0


def resident(command):
    """Seconds, and the most memory in MB that a process had at a time."""
    begin, most = time.perf_counter(), 0.0
    with subprocess.Popen(command) as process:
        while process.poll() is None:
            most = max(most, most_memory(process.pid))
            time.sleep(0.02)
    if process.returncode != 0:
        raise RuntimeError(f"{' '.join(command)} ended with {process.returncode}")
    return {"seconds": time.perf_counter() - begin, "MB": most}


def measure_memory(build, quick):
    seconds = 20 if quick else int(HOURS * 3600)
    with tempfile.TemporaryDirectory() as folder:
        file, out = Path(folder) / "in.wav", Path(folder) / "out.wav"
        print(f"filtering: a file of {seconds} s", file=sys.stderr)
        write_noise(file, seconds)
        command = [f"{build}/bin/veltane", "apply", "--topology", "butterworth", "--order", "5",
                   "--frequency", "1000", str(file), "-o", str(out)]
        found = {"seconds": seconds, "bytes": file.stat().st_size, "forwards": resident(command),
                 "both ways": resident([*command, "--zero-phase"])}
        if out.stat().st_size < file.stat().st_size:
            raise RuntimeError("the output is shorter than the input")
        return found


def speed_lines(found):
    lines = ["| order | channels | veltane | sosfilt | ratio |", "|---:|---:|---:|---:|---:|"]
    for one in found:
        lines.append(f"| {one['order']} | {one['channels']} | {one['veltane']:.3g} ns "
                     f"| {one['SciPy']:.3g} ns | {one['SciPy'] / one['veltane']:.2g} |")
    return lines


def memory_lines(found):
    def line(what, run):
        return (f"- {what}: {run['MB']:.1f} MB of memory at most, {run['seconds']:.0f} s, "
                f"{found['seconds'] / run['seconds']:,.0f} times as fast as it sounds")
    return [f"- the file: {found['seconds'] / 3600:g} hours of stereo at {RATE} Hz, 16 bits, "
            f"{found['bytes'] / 1e9:.2f} GB",
            line("forwards", found["forwards"]), line("`--zero-phase`", found["both ways"])]
