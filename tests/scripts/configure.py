# SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
# SPDX-License-Identifier: LGPL-2.1-or-later
"""configure.py TREE: configures a copy of the tree on machines that have more and less of what it takes."""

import os
import pathlib
import shutil
import subprocess
import sys
import tempfile
import unittest

TREE = pathlib.Path(sys.argv.pop())
# The targets of scripts/demo and scripts/screenshots.
PROGRAMS = ("gallery", "hold-tag", "ifd-virtual", "nfc-gallery", "nfc-panel", "nfc-settings", "nfc-ui", "nfcd-pcsc",
            "nfcd-sim", "nfctap", "sample-handler")


class Configure(unittest.TestCase):
    def setUp(self):
        self.folder = pathlib.Path(self.enterContext(tempfile.TemporaryDirectory()))
        self.tree = self.folder / "a tree"
        shutil.copytree(TREE, self.tree, ignore=shutil.ignore_patterns("build", ".git"))

    def try_to_configure(self):
        path = f"{self.folder}:{os.environ['PATH']}"
        return subprocess.run([self.tree / "cmake/configure", "dev"], cwd="/", env=os.environ | {"PATH": path},
                              check=False, stdout=subprocess.PIPE, stderr=subprocess.STDOUT, text=True)

    def configure(self):
        done = self.try_to_configure()
        self.assertEqual(done.returncode, 0, done.stdout)

    def can_build(self, *targets):
        return subprocess.run(["ninja", "-C", self.tree / "build/dev", "-n", *targets], check=False,
                              stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL).returncode == 0

    def test_programs_need_nothing_that_only_tests_and_benchmarks_do(self):
        cmake = self.folder / "cmake"
        cmake.write_text(f'#!/bin/sh\nexec {shutil.which("cmake")} "$@" -DCMAKE_DISABLE_FIND_PACKAGE_benchmark=ON\n',
                         encoding="utf-8")
        cmake.chmod(0o755)
        # The second time there is what the first one left.
        for _ in range(2):
            self.configure()
            self.assertTrue(self.can_build(*PROGRAMS))
        cmake.unlink()
        self.configure()
        self.assertTrue(self.can_build("tst_ndefgenerator", "benchmarks"))

    def test_core_refuses_windows(self):
        source = self.tree / "src/ndef/ndefgenerator.cpp"
        code = source.read_text(encoding="utf-8")
        for header in ('"ui/querywidgets.h"', "<QtWidgets/QLabel>"):
            with self.subTest(header):
                source.write_text(f"#include {header}\n{code}", encoding="utf-8")
                done = self.try_to_configure()
                self.assertNotEqual(done.returncode, 0)
                self.assertIn("belongs to a library without windows", " ".join(done.stdout.split()))


if __name__ == "__main__":
    unittest.main()
