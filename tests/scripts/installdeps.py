# SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
# SPDX-License-Identifier: LGPL-2.1-or-later
"""installdeps.py SCRIPT: calls the script on machines that are made up."""

import os
import pathlib
import shutil
import subprocess
import sys
import tempfile
import unittest

SCRIPT = pathlib.Path(sys.argv.pop())
# All that the script takes from a system.
COMMANDS = ("bash", "cat", "grep", "id", "sed", "sort")


class InstallDeps(unittest.TestCase):
    def setUp(self):
        self.machine = pathlib.Path(self.enterContext(tempfile.TemporaryDirectory()))
        for command in COMMANDS:
            (self.machine / command).symlink_to(shutil.which(command))
        self.calls = self.machine / "calls"

    def program(self, name, text):
        path = self.machine / name
        path.unlink(missing_ok=True)
        path.write_text(f"#!/bin/bash\n{text}\n", encoding="utf-8")
        path.chmod(0o755)

    def debian(self, installed=(), known=(), user=0):
        """Makes the machine a Debian with some packages, whose release knows some that others do not."""
        self.program("dpkg-query", "".join(f"echo installed {package}\n" for package in installed))
        self.program("apt-cache", f"[[ ' {' '.join(known)} ' == *\" $2 \"* ]]")
        self.program("dpkg", f'echo "$@" >>{self.calls}')
        self.program("apt-get", f'echo "$@" >>{self.calls}')
        self.program("id", f"echo {user}")

    def call(self, *arguments):
        self.calls.write_text("", encoding="utf-8")
        return subprocess.run([SCRIPT, *arguments], env=os.environ | {"PATH": str(self.machine)}, check=False,
                              stdin=subprocess.DEVNULL, stdout=subprocess.PIPE, stderr=subprocess.PIPE, text=True)

    def listed(self, *tasks):
        done = self.call("--list", *tasks)
        self.assertEqual((done.returncode, done.stderr), (0, ""))
        return set(done.stdout.split())

    def test_task_needs_no_more_than_it_takes(self):
        self.debian()
        build, demo, test = self.listed("build"), self.listed("demo"), self.listed("test")
        self.assertIn("cmake", build)
        self.assertLess(build, demo)
        self.assertLess(demo, test)
        self.assertFalse({"doxygen", "debootstrap", "lintian", "clazy"} & demo)
        self.assertFalse({"debootstrap", "lintian", "clazy"} & test)
        self.assertEqual(self.listed("demo", "fuzz"), test)
        self.assertLess(test, self.listed())

    def test_package_that_the_release_lacks_is_left_out(self):
        self.debian()
        self.assertNotIn("qt6-svg-plugins", self.listed("demo"))
        self.debian(known=["qt6-svg-plugins"])
        self.assertIn("qt6-svg-plugins", self.listed("demo"))

    def test_package_is_left_out_where_the_release_lacks_another(self):
        # It is in a release with another major version, too.
        self.debian(known=["liblayershellqtinterface-dev"])
        self.assertNotIn("liblayershellqtinterface-dev", self.listed("build"))
        self.debian(known=["liblayershellqtinterface-dev", "qml6-module-org-kde-layershell"])
        self.assertIn("liblayershellqtinterface-dev", self.listed("build"))

    def test_only_what_is_missing_is_installed_and_named_first(self):
        self.debian()
        build = self.listed("build")
        self.debian(installed=build - {"cmake", "ninja-build"})
        done = self.call("build")
        self.assertEqual((done.returncode, done.stderr), (0, "install-deps: cmake ninja-build\n"))
        self.assertEqual(self.calls.read_text(encoding="utf-8"),
                         "update -qq\ninstall -y -qq --no-install-recommends --no-remove cmake ninja-build\n")

    def test_libraries_for_arm64_are_those_of_arm64_and_tools_the_machines(self):
        self.debian()
        packages = self.listed("arm64")
        self.assertLess({"cmake", "qt6-base-dev:arm64", "qemu-user"}, packages)
        self.assertFalse(packages & {"cmake:arm64", "qt6-base-dev"})
        self.debian(installed=packages - {"qt6-base-dev:arm64"} | {"qt6-base-dev"})
        self.call("arm64")
        self.assertEqual(self.calls.read_text(encoding="utf-8"),
                         "--add-architecture arm64\nupdate -qq\n"
                         "install -y -qq --no-install-recommends --no-remove qt6-base-dev:arm64\n")

    def test_nothing_is_called_when_all_is_there(self):
        self.debian()
        self.debian(installed=self.listed("build"))
        done = self.call("build")
        self.assertEqual((done.returncode, done.stdout + done.stderr), (0, ""))
        self.assertEqual(self.calls.read_text(encoding="utf-8"), "")

    def test_user_who_may_not_install_is_told_and_goes_on(self):
        self.debian(user=1000)
        build = self.listed("build")
        self.debian(installed=build - {"cmake"}, user=1000)
        done = self.call("build")
        self.assertEqual((done.returncode, done.stderr), (
            0, "install-deps: cmake\ninstall-deps: these packages are missing, and only root may install them\n"))
        self.assertEqual(self.calls.read_text(encoding="utf-8"), "")

    def test_other_system_is_told_the_makers_names(self):
        done = self.call("build")
        self.assertEqual((done.returncode, done.stdout), (0, ""))
        self.assertTrue(done.stderr.startswith("install-deps: this system is not Debian. Required:\n"))
        self.assertIn("    CMake 3.22 or later\n", done.stderr)
        self.assertNotIn("-dev", done.stderr)

    def test_unknown_task_is_refused(self):
        self.debian()
        for arguments in (["--no-such-option"], ["demo", "dance"]):
            with self.subTest(arguments):
                self.assertEqual(self.call(*arguments).returncode, 64)
                self.assertEqual(self.calls.read_text(encoding="utf-8"), "")


if __name__ == "__main__":
    unittest.main()
