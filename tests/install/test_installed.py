#!/usr/bin/python3
"""Uses an installation that was moved, through links, with nothing of the sources in reach.

The environment says where it is: INSTALLED; LIBDIR, its folder for libraries; BUILD and SOURCE,
which it was installed from and may not refer to; CMAKE, CC and CXX.
"""

import ctypes
import json
import math
import os
import pathlib
import re
import subprocess
import tempfile
import unittest

INSTALLED = pathlib.Path(os.environ["INSTALLED"])
LIBRARIES = INSTALLED / os.environ["LIBDIR"]
CONSUMER = pathlib.Path(__file__).parent / "consumer"
PLAIN = {"PATH": "/usr/bin:/bin", "LANG": "C.UTF-8"}


def run(*words, cwd="/", env=PLAIN, **more):
    """What a command prints; its messages are shown should it fail."""
    outcome = subprocess.run([str(word) for word in words], cwd=cwd, env=env, text=True,
                             capture_output=True, check=False, **more)
    if outcome.returncode != 0:
        raise AssertionError(f"{words} failed:\n{outcome.stdout}{outcome.stderr}")
    return outcome.stdout


class InAFolder(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.folder = pathlib.Path(folder.name)


class Command(InAFolder):
    def setUp(self):
        super().setUp()
        self.veltane = self.folder / "veltane"
        self.veltane.symlink_to(INSTALLED / "bin" / "veltane")

    def test_designs_through_a_link(self):
        document = json.loads(run(self.veltane, "design", "--topology", "butterworth", "--order",
                                  "2", "--frequency", "12000", "--format", "json"))
        # (1 + z^-1)^2 / (2 + sqrt 2 + (2 - sqrt 2) z^-2), the prototype at half the Nyquist frequency
        b0 = 1 / (2 + math.sqrt(2))
        expected = [b0, 2 * b0, b0, 0, (2 - math.sqrt(2)) * b0]
        for number, right in zip(document["dictionary"]["cascade"], expected, strict=True):
            self.assertAlmostEqual(number, right, delta=1e-15)

    def test_runs_from_the_path(self):
        env = PLAIN | {"PATH": f"{self.folder}:{PLAIN['PATH']}"}
        said = run("sh", "-c", "veltane check --topology butterworth --order 4", env=env)
        self.assertIn("butterworth lowpass of order 4", said)

    def test_writes_the_page_that_was_installed(self):
        page = INSTALLED / "share/veltane/veltane.html"
        if not page.exists():
            page.parent.mkdir(parents=True, exist_ok=True)
            page.write_text("<!doctype html><title>stands in for the page</title>\n")
        run(self.veltane, "page", "-o", self.folder / "written.html")
        self.assertEqual((self.folder / "written.html").read_bytes(), page.read_bytes())

    def test_manual_page_and_completions_are_those_of_the_command(self):
        for words, place in (("--man", "man/man1/veltane.1"),
                             ("--completion bash", "bash-completion/completions/veltane"),
                             ("--completion zsh", "zsh/site-functions/_veltane"),
                             ("--completion fish", "fish/vendor_completions.d/veltane.fish")):
            with self.subTest(place):
                self.assertEqual((INSTALLED / "share" / place).read_text(encoding="utf-8"),
                                 run(self.veltane, *words.split()))

    def test_bash_completes(self):
        completion = INSTALLED / "share/bash-completion/completions/veltane"
        offered = run("bash", "-c", 'source "$1"; COMP_WORDS=(veltane des) COMP_CWORD=1; _veltane; '
                      'echo "${COMPREPLY[@]}"', "bash", completion)
        self.assertEqual(offered, "design\n")


class Files(unittest.TestCase):
    def test_nothing_refers_to_where_it_was_built(self):
        texts = 0
        for file in sorted(INSTALLED.rglob("*")):
            if file.suffix in (".cmake", ".pc", ".h"):
                texts += 1
                text = file.read_text(encoding="utf-8")
                self.assertNotIn(os.environ["BUILD"], text, file)
                self.assertNotIn(os.environ["SOURCE"], text, file)
                self.assertNotIn("Eigen", text if file.suffix != ".h" else "", file)
        self.assertGreater(texts, 30)

    def test_libraries_are_found_from_where_they_are_needed(self):
        for file, where in ((INSTALLED / "bin/veltane", "$ORIGIN/../lib/veltane"),
                            (LIBRARIES / "libfiltermath.so", "$ORIGIN")):
            path = re.search(r"R(?:UN)?PATH\)\s+Library r(?:un)?path: \[(.*)\]",
                             run("readelf", "-d", file))
            self.assertIsNotNone(path, file)
            self.assertEqual(path[1], where, file)

    def test_headers_include_only_what_is_installed_or_standard(self):
        headers = list((INSTALLED / "include").rglob("*.h"))
        self.assertGreater(len(headers), 30)
        for header in headers:
            for name in re.findall(r'#include "([^"]+)"', header.read_text(encoding="utf-8")):
                self.assertTrue((INSTALLED / "include" / name).is_file() or
                                (header.parent / name).is_file(), f"{header}: {name}")

    def test_what_there_is_to_read_is_there(self):
        for name in ("README.md", "LICENSE", "docs/check.md", "docs/bandpass.svg",
                     "examples/design_lowpass.cpp"):
            self.assertTrue((INSTALLED / "share/doc/veltane" / name).is_file(), name)


class ExportedNames(unittest.TestCase):
    @staticmethod
    def exported(library):
        lines = run("nm", "-D", "--defined-only", LIBRARIES / library).splitlines()
        return sorted(line.split()[2] for line in lines)

    def test_filtermath_exports_what_its_headers_declare_for_c(self):
        declared = set()
        for header in (INSTALLED / "include/filtermath").glob("*.h"):
            text = re.sub(r"/\*.*?\*/", "", header.read_text(encoding="utf-8"), flags=re.DOTALL)
            for block in re.findall(r"^FILTERMATH_BEGIN$(.*?)^FILTERMATH_END$", text,
                                    re.DOTALL | re.MULTILINE):
                declared.update(re.findall(r"(\w+)\([^()]*\);", block))
        self.assertEqual(len(declared), 42)
        self.assertEqual(self.exported("libfiltermath.so.0"), sorted(declared))

    def test_the_runtime_exports_memory_and_symbols(self):
        self.assertEqual(self.exported("libfiltermath-runtime.so.0"),
                         ["gensym", "sysmem_freeptr", "sysmem_newptr", "sysmem_newptrclear",
                          "sysmem_resizeptrclear"])

    def test_names_are_those_that_programs_were_linked_with(self):
        for library in ("libfiltermath", "libfiltermath-runtime"):
            self.assertIn(f"Library soname: [{library}.so.0]",
                          run("readelf", "-d", LIBRARIES / f"{library}.so"))


class CallsFromPython(unittest.TestCase):
    def test_a_matrix_is_inverted(self):
        library = ctypes.CDLL(str(LIBRARIES / "libfiltermath.so.0"))
        library.matrix64_new.restype = ctypes.c_void_p
        library.matrix64_get.restype = ctypes.c_double
        library.matrix64_get.argtypes = [ctypes.c_void_p, ctypes.c_int32, ctypes.c_int32]
        library.matrix64_set.argtypes = [ctypes.c_void_p, ctypes.c_int32, ctypes.c_int32,
                                         ctypes.c_double]
        library.matrix64_resize.argtypes = [ctypes.c_void_p, ctypes.c_int32, ctypes.c_int32]
        library.matrix64_inverse.argtypes = [ctypes.c_void_p, ctypes.c_void_p]
        library.matrix64_free.argtypes = [ctypes.c_void_p]
        matrix = library.matrix64_new()
        library.matrix64_resize(matrix, 2, 2)
        for place, value in enumerate((4.0, 7.0, 2.0, 6.0)):
            library.matrix64_set(matrix, place % 2, place // 2, value)
        self.assertEqual(library.matrix64_inverse(matrix, matrix), 0)
        inverse = [library.matrix64_get(matrix, place % 2, place // 2) for place in range(4)]
        library.matrix64_free(matrix)
        for number, right in zip(inverse, (0.6, -0.7, -0.2, 0.4), strict=True):
            self.assertAlmostEqual(number, right, delta=1e-15)

    def test_a_symbol_is_the_same_each_time(self):
        library = ctypes.CDLL(str(LIBRARIES / "libfiltermath.so.0"))
        library.gensym.restype = ctypes.c_void_p
        first = library.gensym(b"lowpass")
        self.assertIsNotNone(first)
        self.assertEqual(first, library.gensym(b"lowpass"))
        self.assertNotEqual(first, library.gensym(b"highpass"))


class FindPackage(InAFolder):
    def build(self, *options):
        env = PLAIN | {"CC": os.environ["CC"], "CXX": os.environ["CXX"]}
        run(os.environ["CMAKE"], "-S", CONSUMER, "-B", self.folder, "-G", "Ninja",
            f"-DCMAKE_PREFIX_PATH={INSTALLED}", *options, env=env)
        run(os.environ["CMAKE"], "--build", self.folder, env=env)
        for program in ("from_c", "from_cpp"):
            run(self.folder / program)
        return run("readelf", "-d", self.folder / "from_c")

    def test_shared_without_being_asked(self):
        self.assertIn("libfiltermath.so.0", self.build())

    def test_static_as_a_component(self):
        self.assertNotIn("libfiltermath", self.build("-DKIND=static"))

    def test_an_unknown_component_is_refused(self):
        with self.assertRaisesRegex(AssertionError, "no component 'dynamic'"):
            self.build("-DKIND=dynamic")


class PkgConfig(InAFolder):
    def build(self, *options, link=()):
        env = PLAIN | {"PKG_CONFIG_PATH": str(LIBRARIES / "pkgconfig")}
        flags = run("pkg-config", "--cflags", "--libs", *options, "filtermath", env=env)
        program = self.folder / "halfband"
        script = f'{os.environ["CC"]} -std=c11 -Wall -Wextra -Wpedantic -Werror "$@" {flags} -lm'
        run("sh", "-c", script.replace("\n", " "), "sh", *link, CONSUMER / "halfband.c", "-o",
            program)
        return program

    def test_shared(self):
        run(self.build(), env=PLAIN | {"LD_LIBRARY_PATH": str(LIBRARIES)})

    def test_static(self):
        program = self.build("--static", link=["-static"])
        self.assertNotIn("NEEDED", run("readelf", "-d", program))
        run(program)


if __name__ == "__main__":
    unittest.main()
