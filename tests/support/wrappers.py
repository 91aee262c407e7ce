# SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
# SPDX-License-Identifier: LGPL-2.1-or-later
"""wrappers.py SUPPORT: ends the wrappers of the folder SUPPORT in every way, and looks for what they leave."""

import itertools
import os
import pathlib
import signal
import subprocess
import sys
import tempfile
import unittest
import uuid

SUPPORT = pathlib.Path(sys.argv.pop())
# One process leaves its parents, one ignores that it is asked to leave; then the wrappers are to be ended.
STUBBORN = "setsid sleep 1000 & (trap '' TERM HUP; sleep 1001) & echo ready; sleep 1002"
# Goes before another wrapper.
READER = (SUPPORT.parent / "reader" / "with-reader", "none")
ASK_BUS = ["dbus-send", "--print-reply", "--dest=org.freedesktop.DBus", "/", "org.freedesktop.DBus.GetId"]


class Wrappers(unittest.TestCase):
    def setUp(self):
        self.mark = f"CONNUI_MARK={uuid.uuid4()}"
        self.folder = self.enterContext(tempfile.TemporaryDirectory())
        self.into(self.folder)

    def into(self, folder):
        """Has the wrappers make their folders here."""
        self.environment = os.environ | dict([self.mark.split("=")]) | {"TMPDIR": folder}

    def left(self):
        """The processes that are still there of those that were started."""
        for environment in pathlib.Path("/proc").glob("[0-9]*/environ"):
            try:
                if self.mark.encode() in environment.read_bytes():
                    yield (environment.parent / "cmdline").read_bytes().replace(b"\0", b" ").decode()
            except OSError:
                pass  # it ends now

    def start(self, *before):
        process = subprocess.Popen(
            [*before, SUPPORT / "with-buses", SUPPORT / "with-compositor", "kiosk", "sh", "-c", STUBBORN],
            env=self.environment, stdout=subprocess.PIPE, text=True, start_new_session=True)
        self.assertEqual(process.stdout.readline(), "ready\n")
        return process

    def expect_nothing_left(self):
        self.assertEqual(list(self.left()), [])
        self.assertEqual(os.listdir(self.folder), [])

    def test_signal_to_the_wrapper_leaves_nothing(self):
        for number, before in itertools.product((signal.SIGHUP, signal.SIGTERM), ((), READER)):
            with self.subTest(number.name, before=before), self.start(*before) as process:
                process.send_signal(number)
                self.assertEqual(process.wait(), 128 + number)
                self.expect_nothing_left()

    def test_signal_to_the_group_leaves_nothing(self):
        for number, before in itertools.product((signal.SIGHUP, signal.SIGTERM), ((), READER)):
            with self.subTest(number.name, before=before), self.start(*before) as process:
                os.killpg(process.pid, number)
                self.assertEqual(process.wait(), 128 + number)
                self.expect_nothing_left()

    def test_killed_parent_leaves_nothing(self):
        for before in ((), READER):
            with self.subTest(before=before), self.start("sh", "-c", '"$@"; true', "sh", *before) as process:
                process.kill()
                # The wrapper holds the other end for as long as it runs.
                self.assertEqual(process.stdout.read(), "")
                self.expect_nothing_left()

    def test_ended_command_leaves_nothing(self):
        done = subprocess.run([SUPPORT / "with-buses", "sh", "-c", "setsid sleep 1000 & exit 7"],
                              env=self.environment, check=False)
        self.assertEqual(done.returncode, 7)
        self.expect_nothing_left()

    def test_killed_command_is_told_as_by_a_shell(self):
        done = subprocess.run([SUPPORT / "with-buses", "sh", "-c", "kill -9 $$"], env=self.environment, check=False)
        self.assertEqual(done.returncode, 128 + signal.SIGKILL)

    def test_any_name_of_a_folder_will_do(self):
        for name in ("a blank", "Grüße", "a&b", "a|b", "100%", "<a>", "a'b\"c", "$HOME"):
            folder = pathlib.Path(self.folder, name)
            folder.mkdir()
            self.into(str(folder))
            for bus in ("--system", "--session"):
                with self.subTest(name, bus=bus):
                    subprocess.run([SUPPORT / "with-buses", ASK_BUS[0], bus, *ASK_BUS[1:]], env=self.environment,
                                   check=True, stdout=subprocess.DEVNULL)
            with self.subTest(name, reader=True):
                subprocess.run([*READER, "sh", "-c", 'echo >"$CONNUI_READER/written"'], env=self.environment, check=True)

    def test_name_that_is_too_long_is_named(self):
        folder = pathlib.Path(self.folder, "x" * 100)
        folder.mkdir()
        self.into(str(folder))
        done = subprocess.run([SUPPORT / "with-buses", "true"], env=self.environment, check=False,
                              stderr=subprocess.PIPE, text=True)
        self.assertEqual(done.returncode, 1)
        self.assertEqual(done.stderr, f"with-buses: TMPDIR is too long for sockets: {folder}\n")
        self.assertEqual(os.listdir(folder), [])
        subprocess.run([*READER, "true"], env=self.environment, check=True)


if __name__ == "__main__":
    unittest.main()
