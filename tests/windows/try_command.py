#!/usr/bin/python3
"""Tries the command for Windows in wine, as somebody would who has just unpacked it.

  try_command.py INSTALLATION VELTANE PROGRAMS [TEST...]

INSTALLATION is what `cmake --install` has made for Windows; it is copied to a folder whose name has a
blank and letters that no code page of the machine needs to have. VELTANE is the command of this
machine: what both print has to be the same to the byte, but for the numbers, which the mathematics
library of another compiler may make different in their last digits. PROGRAMS is the
folder of gnuplot.exe and reader.exe, which are made of the sources beside this file. WINEPREFIX names wine's folder.
"""

import argparse
import json
import math
import os
import pathlib
import re
import shutil
import signal
import subprocess
import sys
import tempfile
import threading
import time
import unittest

WINE = "/usr/lib/wine/wine64"
WINE_SERVER = "/usr/lib/wine/wineserver64"
ONE_PROCESSOR = ["taskset", "-c", "0"]
PATIENCE = 120  # s, for any run: nothing here takes more than a few
NUMBER = re.compile(r"-?\d+(?:\.\d+)?(?:e[-+]?\d+)?")
FAMILIES = ("butterworth", "chebyshev-1", "chebyshev-2")

exe = here = programs = None  # what the arguments name


def environment(**more):
    return {**os.environ, "WINEDEBUG": "-all", "LC_ALL": "C.UTF-8", **more}


def there_and_here(*words, folder, text=b""):
    """Both commands run with the same words, each in a folder of its own."""
    runs = []
    for name, program in (("there", [WINE, exe]), ("here", [here])):
        (folder / name).mkdir(exist_ok=True)
        runs.append(subprocess.run([*program, *words], cwd=folder / name, input=text,
                                   capture_output=True, env=environment(), timeout=PATIENCE))
    return runs


def near(one, other):
    """Of what is near 0 because larger parts have cancelled, fewer digits are the same."""
    return math.isclose(float(one), float(other), rel_tol=1e-9, abs_tol=1e-10)


class Trial(unittest.TestCase):
    maxDiff = 2000

    def setUp(self):
        folder = tempfile.TemporaryDirectory(prefix="größe フィルタ ")
        self.addCleanup(folder.cleanup)
        self.folder = pathlib.Path(folder.name)

    def run_exe(self, *words, text=b"", **more):
        return subprocess.run([WINE, exe, *words], cwd=self.folder, input=text, capture_output=True,
                              env=environment(**more), timeout=PATIENCE)

    def start(self, *words, before=()):
        process = subprocess.Popen([*before, WINE, exe, *words], cwd=self.folder, stdin=subprocess.PIPE,
                                   stdout=subprocess.PIPE, stderr=subprocess.PIPE,
                                   env=environment())
        watch = threading.Timer(PATIENCE, process.kill)
        watch.start()
        self.addCleanup(process.wait)
        self.addCleanup(process.kill)
        self.addCleanup(watch.cancel)
        for stream in (process.stdin, process.stdout, process.stderr):
            self.addCleanup(stream.close)
        return process

    def wait_until(self, what, sentence):
        end = time.monotonic() + 30
        while not what():
            self.assertLess(time.monotonic(), end, sentence)
            time.sleep(0.05)

    def names(self):
        return sorted(entry.name for entry in self.folder.iterdir())

    def assert_near(self, there, here_, columns_may_move=False):
        """Equal but for the last digits of numbers."""
        there, here_ = there.decode(), here_.decode()
        texts = [NUMBER.split(text) for text in (there, here_)]
        if columns_may_move:
            texts = [[re.sub(" +", " ", part) for part in text] for text in texts]
        self.assertEqual(*texts)
        numbers = [NUMBER.findall(text) for text in (there, here_)]
        for pair in zip(*numbers):
            self.assertTrue(near(*pair), pair)

    def assert_refused(self, run, status, sentence):
        self.assertEqual((run.returncode, run.stdout), (status, b""), run.stderr.decode())
        self.assertEqual(run.stderr.decode(), f"veltane: {sentence}\n")


def setUpModule():
    """What wine starts itself stays, here for the whole trial: it would end with each program, and
    one that comes just then would not run. What an earlier program has started ends first."""
    subprocess.run([WINE_SERVER, "-w"], check=True, env=environment(), timeout=PATIENCE)
    subprocess.run([WINE_SERVER, "-p60"], check=True, env=environment(), timeout=PATIENCE)
    subprocess.run([WINE, exe, "--version"], check=True, env=environment(), timeout=PATIENCE,
                   stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)


class Words(Trial):
    """What needs no filter, and has to be the same to the byte."""

    def test_texts(self):
        subcommands = ("design", "check", "plot", "export", "estimate", "apply", "response", "page")
        for words in (["--version"], ["--help"], ["--man"],
                      *(["--completion", shell] for shell in ("bash", "zsh", "fish")),
                      *([name, "--help"] for name in subcommands)):
            with self.subTest(words=words):
                there, this = there_and_here(*words, folder=self.folder)
                self.assertEqual(there.returncode, 0)
                self.assertGreater(len(this.stdout), 10)
                self.assertEqual(there.stdout, this.stdout)
                self.assertEqual(there.stderr, b"")

    def test_refusals(self):
        for words in (["--versoin"], ["desing"], ["design", "--ordr", "4"], [],
                      ["design", "--order", "zwölf"], ["design", "--from", "fehlt größe.json"],
                      ["design", "--from", "."], ["design", "--batch", "fehlt.jsonl"],
                      ["design", "-o", "missing/filter.txt"], ["design", "-o", "."],
                      ["plot", "-o", "フィルタ.gif"], ["apply", "fehlt.csv"],
                      ["export", "--for", "cobol"], ["design", "--topology", "größe"],
                      ["design", "-o", "/nowhere/größe.txt"], ["design", "/?"],
                      ["design", "--from", "/nowhere/größe.json"],
                      ["design", "--module", "größe フィルタ.dll"], ["design", "-o", ""]):
            with self.subTest(words=words):
                there, this = there_and_here(*words, folder=self.folder)
                self.assertNotEqual(this.returncode, 0)
                self.assertEqual((there.returncode, there.stdout.decode(), there.stderr.decode()),
                                 (this.returncode, this.stdout.decode(), this.stderr.decode()))
                self.assertEqual(list((self.folder / "there").iterdir()), [])

    def test_words_arrive_as_they_were_typed(self):
        for word in ('a"b', 'c:\\d\\', 'e\\"f', "größe フィルタ 🎛", "", "100%", "a b"):
            with self.subTest(word=word):
                there, this = there_and_here(
                    "design", "--order", "2", "--name", word, "--format", "json",
                    folder=self.folder)
                self.assertEqual(there.returncode, this.returncode, there.stderr.decode())
                self.assert_near(there.stdout, this.stdout)
                self.assertEqual(there.stderr, this.stderr)


class Filters(Trial):

    def test_designs(self):
        for family in FAMILIES:
            for more in (["--format", "json"], []):
                with self.subTest(family=family, more=more):
                    there, this = there_and_here(
                        "design", "--topology", family, "--response", "bandpass", "--order", "4",
                        "--frequency", "300", "3400", "--tf-output", "on", *more,
                        folder=self.folder)
                    self.assertEqual((there.returncode, there.stderr),
                                     (this.returncode, this.stderr))
                    self.assert_near(there.stdout, this.stdout, columns_may_move=not more)

    def test_verdicts(self):
        for words, status in ((["--topology", "butterworth", "--order", "4"], 0),
                              (["--topology", "butterworth", "--order", "4", "--tf-output", "on",
                                "--frequency", "1", "--response", "lowpass"], 1)):
            with self.subTest(words=words):
                there, this = there_and_here("check", *words, folder=self.folder)
                self.assertEqual((this.returncode, there.returncode), (status, status))
                self.assertEqual(there.stdout.decode().splitlines()[0],
                                 this.stdout.decode().splitlines()[0])

    def test_exports(self):
        for target in ("c", "scipy", "matlab", "csv"):
            with self.subTest(target=target):
                words = ["export", "--for", target, "--order", "4", "-o", f"größe.{target}"]
                there, this = there_and_here(*words, folder=self.folder)
                self.assertEqual((there.returncode, there.stderr), (0, this.stderr))
                self.assert_near(*((self.folder / side / f"größe.{target}").read_bytes()
                                   for side in ("there", "here")))

    def test_estimate_and_response(self):
        for words in (["estimate", "--passband", "1000", "--stopband", "2000", "--ripple", "1",
                       "--attenuation", "60"],
                      ["response", "--order", "4", "--topology", "butterworth"]):
            with self.subTest(words=words):
                there, this = there_and_here(*words, folder=self.folder)
                self.assertEqual((there.returncode, there.stderr.decode()),
                                 (0, this.stderr.decode()))
                self.assert_near(there.stdout, this.stdout, columns_may_move=True)

    def test_a_saved_design_opens_again_under_any_name(self):
        saved = self.run_exe("design", "--order", "4", "--format", "json", "-o", "フィルタ.json")
        self.assertEqual((saved.returncode, saved.stdout, saved.stderr), (0, b"", b""))
        self.assertEqual(self.names(), ["フィルタ.json"])
        self.assertNotIn(b"\r", (self.folder / "フィルタ.json").read_bytes())
        opened = self.run_exe("design", "--from", "フィルタ.json", "--format", "json")
        before = json.loads((self.folder / "フィルタ.json").read_bytes())
        self.assertEqual(json.loads(opened.stdout)["dictionary"], before["dictionary"])
        again = self.run_exe("design", "--from", "-", "--format", "json",
                             text=(self.folder / "フィルタ.json").read_bytes())
        self.assertEqual(json.loads(again.stdout)["dictionary"], before["dictionary"])


class Signals(Trial):
    COLUMNS = "\n".join(f"{i};{math.sin(i / 8.0)!r};π" for i in range(5000)).encode() + b"\n"
    WORDS = ["--samplerate", "500", "--topology", "butterworth", "--order", "4", "--frequency",
             "40", "--column", "2"]

    def test_columns(self):
        for more in ([], ["--zero-phase"]):
            with self.subTest(more=more):
                there, this = there_and_here("apply", "-", *self.WORDS, *more, folder=self.folder,
                                             text=self.COLUMNS)
                self.assertEqual((there.returncode, there.stderr.decode()),
                                 (0, this.stderr.decode()))
                self.assertEqual(there.stdout.count(b"\n"), 5000)
                self.assert_near(there.stdout, this.stdout)
                (self.folder / "Tiefpaß größe.csv").write_bytes(self.COLUMNS)
                run = self.run_exe("apply", "Tiefpaß größe.csv", *self.WORDS, *more, "-o",
                                   "geglättet.csv")
                self.assertEqual((run.returncode, run.stdout), (0, b""), run.stderr.decode())
                self.assertEqual((self.folder / "geglättet.csv").read_bytes(), there.stdout)

    def test_bytes_come_in_and_go_out_as_they_are(self):
        text = self.COLUMNS.replace(b"\n", b"\r\n").replace("π".encode(), b"\t")
        there, this = there_and_here("apply", "-", *self.WORDS, folder=self.folder, text=text)
        self.assertEqual((there.returncode, there.stdout.count(b"\r\n")), (0, 5000))
        self.assert_near(there.stdout, this.stdout)

    def test_sound_files_get_one_sentence(self):
        (self.folder / "größe.wav").write_bytes(b"RIFF\x24\0\0\0WAVEfmt \x10\0\0\0" + bytes(64))
        self.assert_refused(
            self.run_exe("apply", "größe.wav"), 2,
            "'größe.wav' is not columns of numbers, and sound files are not read by veltane for "
            "Windows")
        self.assert_refused(
            self.run_exe("apply", "-", *self.WORDS, "-o", "ton.flac", text=self.COLUMNS), 2,
            "sound files are not written by veltane for Windows; columns of numbers are, such as "
            ".csv")
        self.assertEqual(self.names(), ["größe.wav"])


class Pictures(Trial):
    WORDS = ["plot", "--topology", "chebyshev-1", "--response", "bandpass", "--order", "4",
             "--frequency", "1000", "4000"]

    def draw(self):
        """What the program that stands for gnuplot waits for: the picture of this machine's."""
        drawing = self.folder / "drawing"
        drawing.mkdir(exist_ok=True)
        (drawing / "picture").unlink(missing_ok=True)
        script = drawing / "script.complete"
        script.unlink(missing_ok=True)

        def answer():
            end = time.monotonic() + PATIENCE
            while not script.exists() and time.monotonic() < end:
                time.sleep(0.02)
            with script.open("rb") as commands, (drawing / "part").open("wb") as picture:
                subprocess.run(["gnuplot", "--default-settings"], stdin=commands, stdout=picture,
                               check=True)
            (drawing / "part").rename(drawing / "picture")

        thread = threading.Thread(target=answer)
        thread.start()
        self.addCleanup(thread.join)

    def give_gnuplot(self):
        return {"WINEPATH": str(programs)}

    def test_without_gnuplot_there_is_one_sentence_and_no_file(self):
        run = self.run_exe(*self.WORDS, "-o", "フィルタ.svg")
        self.assert_refused(run, 3, "gnuplot draws the pictures and is not installed, or its "
                            "folder is not in PATH")
        self.assertEqual(self.names(), [])

    def test_a_gnuplot_in_the_current_folder_is_not_run(self):
        shutil.copy(programs / "gnuplot.exe", self.folder)
        run = self.run_exe(*self.WORDS, "-o", "filter.svg")
        self.assertIn(b"is not installed", run.stderr)

    def test_pictures(self):
        for ending, start in (("svg", b"<?xml"), ("png", b"\x89PNG\r\n"), ("pdf", b"%PDF")):
            with self.subTest(ending=ending):
                name = f"フィルタ.{ending}"
                self.draw()
                run = self.run_exe(*self.WORDS, "-o", name, **self.give_gnuplot())
                self.assertEqual((run.returncode, run.stdout, run.stderr), (0, b"", b""))
                subprocess.run([here, *self.WORDS, "-o", f"here.{ending}"], cwd=self.folder,
                               check=True)
                drawn, expected = ((self.folder / n).read_bytes() for n in (name, f"here.{ending}"))
                self.assertTrue(drawn.startswith(start), drawn[:20])
                if ending == "svg":
                    self.assertNotIn(b"\r", drawn)
                    shapes = [len(re.findall(rb"<path", picture)) for picture in (drawn, expected)]
                    self.assertGreater(shapes[0], 50)
                    self.assertEqual(*shapes)
                else:
                    self.assertLess(abs(len(drawn) - len(expected)), len(expected) // 10)

    def test_a_gnuplot_that_fails_leaves_no_file(self):
        run = self.run_exe(*self.WORDS, "-o", "filter.svg", **self.give_gnuplot())
        self.assert_refused(run, 3, "gnuplot could not draw it: \"-\" line 1: invalid command")
        self.assertEqual(self.names(), [])


class Pages(Trial):

    def test_the_page_is_written_where_it_is_installed(self):
        page = pathlib.Path(exe).parents[1] / "share/veltane/veltane.html"
        if not page.exists():
            page.parent.mkdir(exist_ok=True)
            page.write_bytes("<!doctype html>größe\n".encode())
            self.addCleanup(page.unlink)
        run = self.run_exe("page", "-o", "Filter größe.html")
        self.assertEqual((run.returncode, run.stderr), (0, b""))
        self.assertIn("'Filter größe.html' is written", run.stdout.decode())
        self.assertEqual((self.folder / "Filter größe.html").read_bytes(), page.read_bytes())

    def test_without_it_there_is_one_sentence(self):
        page = pathlib.Path(exe).parents[1] / "share/veltane/veltane.html"
        if page.exists():
            away = page.with_suffix(".away")
            page.rename(away)
            self.addCleanup(away.rename, page)
        run = self.run_exe("page", "-o", "filter.html")
        self.assertEqual((run.returncode, run.stdout), (3, b""))
        self.assertEqual(run.stderr.count(b"\n"), 1)
        self.assertIn(b"veltane: the page is missing", run.stderr)
        self.assertEqual(self.names(), [])


def batch_lines(count):
    responses = ("lowpass", "highpass", "bandpass", "bandstop")
    lines = []
    for i in range(count):
        response = responses[i % 4]
        cutoffs = [500 + i] if i % 4 < 2 else [300 + i, 4000 + i]
        lines.append(json.dumps({"topology": FAMILIES[i % 3], "response": response,
                                 "order": 2 + i % 9, "frequency": cutoffs}))
    for bad in range(97, count, 200):
        lines[bad] = ('{"order": "größe"}', "no JSON", '{"ordr": 4}')[bad % 3]
    return "\n".join(lines).encode() + b"\n"


def workers():
    """The processes of workers, by their words."""
    found = []
    for entry in pathlib.Path("/proc").glob("[0-9]*/cmdline"):
        try:
            words = entry.read_bytes().split(b"\0")
        except OSError:
            continue
        if b"--batch" in words and words[words.index(b"--batch") + 1] == b"*":
            found.append(int(entry.parent.name))
    return found


class Batches(Trial):
    COMMON = ["--samplerate", "48000", "--passband-ripple", "1"]

    def test_all_processors_give_what_one_gives_and_what_this_machine_gives(self):
        lines = batch_lines(1000)
        (self.folder / "Zeilen größe.jsonl").write_bytes(lines)
        words = ["design", "--batch", "Zeilen größe.jsonl", *self.COMMON]
        runs = {}
        started = time.monotonic()
        runs["all"] = self.run_exe(*words, "-o", "フィルタ.jsonl")
        took = time.monotonic() - started
        written = (self.folder / "フィルタ.jsonl").read_bytes()
        one = subprocess.run([*ONE_PROCESSOR, WINE, exe, *words], cwd=self.folder,
                             capture_output=True, env=environment(), timeout=PATIENCE)
        this = subprocess.run([here, *words], cwd=self.folder, capture_output=True, check=False)
        for run in (runs["all"], one):
            self.assertEqual((run.returncode, run.stderr), (this.returncode, this.stderr))
        self.assertEqual(written, one.stdout)
        self.assertEqual(written.count(b"\n"), 1000)
        self.assertEqual(written.count(b'"error"'), len(range(97, 1000, 200)))
        self.assert_near(written, this.stdout)
        same = sum(a == b for a, b in zip(written.splitlines(), this.stdout.splitlines()))
        print(f"1000 designs took {took:.1f} s; {same} lines are those of this machine to the byte")

    def test_there_is_a_worker_for_each_processor(self):
        for before, expected in (([], len(os.sched_getaffinity(0))), (ONE_PROCESSOR, 1)):
            with self.subTest(expected=expected):
                process = self.start("design", "--batch", "-", before=before)
                process.stdin.write(batch_lines(90 * expected))
                process.stdin.flush()
                for _ in range(90 * expected):
                    process.stdout.readline()
                self.assertEqual(len(workers()), expected)
                process.stdin.close()
                process.wait(30)
                self.wait_until(lambda: not workers(), "workers are left")

    def test_settings_from_standard_input_reach_the_workers(self):
        (self.folder / "lines").write_bytes(b'{"order": 3}\n{}\n')
        words = ["design", "--batch", str(self.folder / "lines"), "--from", "-", "--name", "größe"]
        settings = b'{"settings": {"topology": "butterworth", "frequency": [100.5], "order": 7}}'
        there, this = there_and_here(*words, folder=self.folder, text=settings)
        self.assertEqual((there.returncode, there.stderr), (0, b""))
        self.assertEqual([json.loads(line)["settings"]["order"]
                          for line in there.stdout.splitlines()], [3, 7])
        self.assert_near(there.stdout, this.stdout)

    def test_lines_are_designed_as_they_come_and_a_worker_that_dies_costs_nothing(self):
        process = self.start("design", "--batch", "-")
        lines = batch_lines(90).splitlines(keepends=True)
        process.stdin.write(lines[0])
        process.stdin.flush()
        first = process.stdout.readline()
        self.assertEqual(json.loads(first)["line"], 1)
        idle = workers()
        self.assertGreaterEqual(len(idle), 1)
        for pid in idle:
            os.kill(pid, signal.SIGKILL)
        rest, messages = process.communicate(b"".join(lines[1:]))
        self.assertEqual((process.returncode, messages), (0, b""))
        self.assertEqual([json.loads(line)["line"] for line in rest.splitlines()],
                         list(range(2, 91)))
        self.assertNotIn(b'"error"', rest)

    def test_a_reader_that_goes_away_ends_it(self):
        run = subprocess.run([WINE, programs / "reader.exe", "Z:" + exe.replace("/", "\\"),
                              "design", "--batch", "-"], cwd=self.folder,
                             input=b'{"order": 4}\n{"order": 5}\n', capture_output=True,
                             env=environment(), timeout=PATIENCE)
        self.assertEqual((run.returncode, run.stderr), (0, b""))
        self.assertEqual(json.loads(run.stdout)["settings"]["order"], 4)

    def test_an_end_in_the_middle_leaves_the_old_file_and_nothing_else(self):
        for how in (signal.SIGINT, signal.SIGTERM, signal.SIGKILL):
            with self.subTest(how=how.name):
                target = self.folder / "フィルタ.jsonl"
                target.write_bytes(b"what was there\n")
                process = self.start("design", "--batch", "-", "-o", target.name)
                process.stdin.write(batch_lines(90))
                process.stdin.flush()
                self.wait_until(lambda: workers() and len(self.names()) == 2, "it has not begun")
                time.sleep(0.5)
                process.send_signal(how)  # INT is Ctrl-C in wine, which then ends with status 0
                process.wait(30)
                self.wait_until(lambda: self.names() == [target.name], self.names())
                self.wait_until(lambda: not workers(), "workers are left")
                self.assertEqual(target.read_bytes(), b"what was there\n")


class Files(Trial):

    def test_a_protected_file_stays(self):
        target = self.folder / "geschützt.txt"
        target.write_bytes(b"what was there\n")
        target.chmod(0o444)
        self.assert_refused(self.run_exe("design", "-o", target.name), 3,
                            "'geschützt.txt' cannot be written: Permission denied")
        self.assertEqual((self.names(), target.read_bytes()),
                         ([target.name], b"what was there\n"))

    def test_a_file_is_replaced_as_a_whole(self):
        target = self.folder / "größe.txt"
        target.write_bytes(b"x" * 100000)
        self.assertEqual(self.run_exe("design", "-o", target.name).returncode, 0)
        self.assertEqual(self.names(), [target.name])
        self.assertEqual(target.read_bytes(), self.run_exe("design").stdout)

    def test_a_full_disk(self):
        with open("/dev/full", "wb") as full:
            run = subprocess.run([WINE, exe, "design"], stdin=subprocess.DEVNULL, stdout=full,
                                 stderr=subprocess.PIPE, env=environment(), timeout=PATIENCE)
        self.assertEqual((run.returncode, run.stderr),
                         (3, b"veltane: cannot write to standard output\n"))
        disk = self.folder / "disk"
        disk.mkdir()
        mounted = subprocess.run(["mount", "-t", "tmpfs", "-o", "size=64k", "none", disk],
                                 capture_output=True, check=False)
        if mounted.returncode != 0:
            self.skipTest("only root can make a small disk")
        self.addCleanup(subprocess.run, ["umount", disk], check=True)
        (disk / "there.txt").write_bytes(b"what was there\n")
        (self.folder / "lines").write_bytes(batch_lines(90))
        run = self.run_exe("design", "--batch", "lines", "-o", "disk/there.txt")
        self.assert_refused(run, 3, "'disk/there.txt' cannot be written: No space left on device")
        self.assertEqual([entry.name for entry in disk.iterdir()], ["there.txt"])
        self.assertEqual((disk / "there.txt").read_bytes(), b"what was there\n")

    def test_devices_are_written_to(self):
        self.assertEqual(self.run_exe("design", "-o", "NUL").returncode, 0)
        self.assertEqual(self.names(), [])

    def test_a_pipe_whose_reader_goes_away(self):
        process = self.start("--man")
        process.stdout.read(1)
        process.stdout.close()
        self.assertEqual((process.wait(30), process.stderr.read()), (0, b""))


def main():
    global exe, here, programs
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("installation", type=pathlib.Path)
    parser.add_argument("veltane", type=pathlib.Path)
    parser.add_argument("programs", type=pathlib.Path)
    parser.add_argument("tests", nargs="*", help="such as Batches; all without")
    arguments = parser.parse_args()
    here = str(arguments.veltane.resolve())
    programs = arguments.programs.resolve()
    with tempfile.TemporaryDirectory() as folder:
        moved = pathlib.Path(folder) / "Program Files größe フィルタ"
        shutil.copytree(arguments.installation, moved)
        exe = str(moved / "bin/veltane.exe")
        names = arguments.tests or None
        result = unittest.main(argv=[sys.argv[0]], defaultTest=names, exit=False,
                               verbosity=1).result
    return 0 if result.wasSuccessful() and result.testsRun > 0 else 1


if __name__ == "__main__":
    sys.exit(main())
