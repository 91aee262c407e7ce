# SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
# SPDX-License-Identifier: LGPL-2.1-or-later
"""ended.py COMMAND...: ends a command that plays scenes in the middle of one, and looks for what it leaves."""

import os
import signal
import subprocess
import sys
import tempfile
import unittest

COMMAND = sys.argv[1:]
del sys.argv[1:]


class Ended(unittest.TestCase):
    def test_ended_scene_leaves_no_folder(self):
        for number in (signal.SIGHUP, signal.SIGTERM):
            with self.subTest(number.name), tempfile.TemporaryDirectory() as folder:
                with subprocess.Popen(COMMAND, env=os.environ | {"TMPDIR": folder}, stdout=subprocess.PIPE, text=True,
                                      stderr=subprocess.DEVNULL) as play:
                    self.assertTrue(any(line.startswith("  ok ") for line in play.stdout))
                    play.send_signal(number)
                    play.stdout.read()
                self.assertEqual(play.returncode, 128 + number)
                self.assertEqual(os.listdir(folder), [])


if __name__ == "__main__":
    unittest.main()
