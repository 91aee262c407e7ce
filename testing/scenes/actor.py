# SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
# SPDX-License-Identifier: LGPL-2.1-or-later
"""A program on the stage: what it says, line by line, and what it is told."""

import os
import re
import signal
import subprocess
import threading

# Generous: a machine may be busy, a scene that works never waits this long.
PATIENCE = 60


class Unmet(Exception):
    """What a scene expected did not come to pass."""


class Actor:
    """Runs a program and keeps every line that it prints."""

    def __init__(self, role, command, heard=None, environment=None):
        self.role = role
        self.lines = []
        self._heard = heard or (lambda role, line: None)
        self._read = 0
        self._ended = False
        self._news = threading.Condition()
        self._process = subprocess.Popen(
            command, stdin=subprocess.PIPE, stdout=subprocess.PIPE, stderr=subprocess.STDOUT, text=True,
            encoding="utf-8", errors="replace", env={**os.environ, **(environment or {})})
        self._reader = threading.Thread(target=self._listen, daemon=True)
        self._reader.start()

    def _listen(self):
        for line in self._process.stdout:
            with self._news:
                self.lines.append(line.rstrip("\n"))
                self._news.notify_all()
            self._heard(self.role, self.lines[-1])
        with self._news:
            self._ended = True
            self._news.notify_all()

    def says(self, *texts):
        """Waits for a line with these texts in this order, after those that were waited for before; returns it."""
        return self._says(".*".join(map(re.escape, texts)), texts)

    def says_one_of(self, *texts):
        """Waits for a line with any of these texts, after those that were waited for before; returns it."""
        return self._says("|".join(map(re.escape, texts)), texts)

    def says_last(self, prefix, text):
        """Waits until the newest line with this prefix goes on with the text, whenever it was said."""
        def newest():
            return next((i for i in reversed(range(len(self.lines))) if self.lines[i].startswith(prefix)), None)

        def is_said():
            return newest() is not None and self.lines[newest()] == prefix + text

        with self._news:
            self._news.wait_for(lambda: is_said() or self._ended, PATIENCE)
            if not is_said():
                raise Unmet(f"{self.role} did not say {prefix + text} last: {self.lines[-5:]}")
            self._read = max(self._read, newest() + 1)

    def forget(self):
        """Takes all that was said so far for waited for."""
        with self._news:
            self._read = len(self.lines)

    def _says(self, pattern, texts):
        wanted = re.compile(pattern)
        with self._news:
            self._news.wait_for(lambda: self._next(wanted) is not None or self._ended, PATIENCE)
            found = self._next(wanted)
            if found is None:
                raise Unmet(f"{self.role} did not say {texts}, but, last: {self.lines[self._read:][-5:]}")
            self._read = found + 1
            return self.lines[found]

    def _next(self, wanted):
        return next((i for i in range(self._read, len(self.lines)) if wanted.search(self.lines[i])), None)

    @property
    def pid(self):
        return self._process.pid

    def hears(self, line):
        """Types a line into the program."""
        self._process.stdin.write(line + "\n")
        self._process.stdin.flush()

    def hears_the_end(self):
        """Ends the program's input."""
        self._process.stdin.close()

    def is_killed(self):
        """Ends the program as kill -9 does."""
        self._process.kill()
        self._process.wait()

    def is_running(self):
        return self._process.poll() is None

    def ends(self):
        """Waits for the program's end."""
        try:
            self._process.wait(PATIENCE)
        except subprocess.TimeoutExpired:
            raise Unmet(f"{self.role} is still running, after: {self.lines[-5:]}") from None

    def is_closed(self):
        """Waits until the user closes the program, however long that takes."""
        self._process.wait()

    def leaves(self, code=0):
        """Waits for the program's end, which comes with this exit code."""
        self.ends()
        self._reader.join()
        if self._process.returncode != code:
            raise Unmet(f"{self.role} left with exit code {self._process.returncode}, after: {self.lines}")

    def is_dismissed(self):
        """Ends the program, unless it has ended before, and returns whether it left in good order."""
        dismissed = self._process.poll() is None
        self._process.terminate()
        try:
            self._process.wait(PATIENCE)
        except subprocess.TimeoutExpired:
            self._process.kill()
            self._process.wait()
        self._reader.join()
        self._process.stdout.close()
        if not self._process.stdin.closed:
            self._process.stdin.close()
        return not dismissed or self._process.returncode in (0, -signal.SIGTERM)
