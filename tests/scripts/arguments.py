# SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
# SPDX-License-Identifier: LGPL-2.1-or-later
"""arguments.py TREE: calls a copy of each script of the tree, in which nothing can be installed or built."""

import os
import pathlib
import re
import shutil
import subprocess
import sys
import tempfile
import unittest

TREE = pathlib.Path(sys.argv.pop())
# The first action of a script whose arguments are valid, and the tools that it builds with.
FIRST = "scripts/install-deps"
TOOLS = ("cmake", "dpkg-buildpackage", "debootstrap", "apt-get", "rm")
# Of their own kind: the first takes any arguments of a command, the other is the first thing that the rest does.
HELPERS = ("ctest-options", "install-deps")
# Arguments without which a script does not begin its work.
NEEDED = {"portable": ["bookworm"]}
# Those that install nothing.
WITHOUT_WORK = ("words",)
FUZZERS = ("tests/fuzz/fuzz_theme.cpp", "tests/fuzz/fuzz_tagdialog.cpp")
# A call of a script on a page: in a line of its own, or within a paragraph.
PRINTED = re.compile(r"(?:^ {4}|`)((?:[A-Z_]+=\S+ )*scripts/([a-z-]+)(?![\w.-])[^`\n#]*)", re.MULTILINE)


class Arguments(unittest.TestCase):
    def setUp(self):
        self.tree = pathlib.Path(self.enterContext(tempfile.TemporaryDirectory()), "a tree")
        shutil.copytree(TREE / "scripts", self.tree / "scripts")
        self.fuzzer(self.tree)
        self.told = self.tree / "told"
        self.stand_in(self.tree / FIRST)
        for tool in TOOLS:
            self.stand_in(self.tree / "tools" / tool)
        # Neither a namespace nor its root is needed to see where a script begins.
        self.write(self.tree / "tools" / "unshare", 'while [ "$1" != -- ]; do shift; done; shift; exec "$@"')
        self.write(self.tree / "tools" / "id", "echo 0")
        self.scripts = sorted(path.name for path in (self.tree / "scripts").iterdir()
                              if os.access(path, os.X_OK) and path.name not in HELPERS)

    @staticmethod
    def fuzzer(tree):
        for name in FUZZERS:
            (tree / name).parent.mkdir(parents=True, exist_ok=True)
            (tree / name).touch()

    @staticmethod
    def write(path, text):
        path.parent.mkdir(exist_ok=True)
        path.write_text(f"#!/bin/sh\n{text}\n", encoding="utf-8")
        path.chmod(0o755)

    def stand_in(self, path):
        """Has a program tell where it was called, and end whoever calls it."""
        self.write(path, f'echo "{path.name} in $PWD" >>"{self.told}"\nexit 1')

    def expect_work_in_the_tree(self, script):
        """Checks that the script has begun its work, which most do by installing packages, and nowhere else."""
        told = self.told.read_text(encoding="utf-8")
        self.assertEqual(told, "" if script in WITHOUT_WORK else f"install-deps in {self.tree}\n")

    def call(self, *command, cwd=None, **variables):
        self.told.write_text("", encoding="utf-8")
        path = f"{self.tree}/tools:{os.environ['PATH']}"
        return subprocess.run(command, cwd=cwd or self.tree, env=os.environ | {"PATH": path} | variables, check=False,
                              stdin=subprocess.DEVNULL, stdout=subprocess.PIPE, stderr=subprocess.STDOUT, text=True)

    def test_unknown_option_is_refused_before_anything_is_done(self):
        for script in self.scripts:
            with self.subTest(script):
                done = self.call(f"scripts/{script}", "--no-such-option")
                self.assertIn(done.returncode, (2, 64), done.stdout)
                self.assertNotEqual(done.stdout, "")
                self.assertEqual(self.told.read_text(encoding="utf-8"), "")

    def test_exported_search_path_leads_nowhere(self):
        # Where "cd scripts/.." would lead.
        elsewhere = self.tree.parent / "elsewhere"
        elsewhere.mkdir()
        self.fuzzer(elsewhere)
        for helper in HELPERS:
            self.stand_in(elsewhere / "scripts" / helper)
        for script in self.scripts:
            with self.subTest(script):
                self.call(f"scripts/{script}", *NEEDED.get(script, []), CDPATH=str(elsewhere))
                self.expect_work_in_the_tree(script)

    def test_calls_on_pages_begin_their_work(self):
        calls = {call for page in [*TREE.glob("*.md"), *TREE.glob("docs/*.md")]
                 for call in PRINTED.findall(page.read_text(encoding="utf-8")) if call[1] in self.scripts}
        self.assertGreater(len(calls), len(self.scripts))
        # With this option it neither installs nor builds.
        for call, script in sorted(call for call in calls if " --built " not in call[0]):
            with self.subTest(call):
                self.call("sh", "-c", call)
                self.expect_work_in_the_tree(script)

    def test_script_works_from_every_folder(self):
        for script in self.scripts:
            with self.subTest(script):
                self.call(self.tree / "scripts" / script, *NEEDED.get(script, []), cwd="/")
                self.expect_work_in_the_tree(script)


if __name__ == "__main__":
    unittest.main()
