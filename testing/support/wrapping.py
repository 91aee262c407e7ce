# SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
# SPDX-License-Identifier: LGPL-2.1-or-later
"""What the wrappers beside this file have in common: in whatever way they end, nothing that they started stays."""

import ctypes
import os
import pathlib
import signal
import subprocess
import sys
import time

SET_PARENT_DEATH_SIGNAL = 1
SET_CHILD_SUBREAPER = 36
ENDING = (signal.SIGHUP, signal.SIGTERM)
# The time in which those that are asked to leave have to do so, in seconds. Nobody waits for longer than needed.
PATIENCE = 3


class Ended(BaseException):
    """Somebody ends the wrapper."""


def _control(option, value):
    ctypes.CDLL(None).prctl(option, value)


def _end(number, _frame):
    _listen(signal.SIG_IGN)
    raise Ended(number)


def _listen(handler):
    for ending in ENDING:
        signal.signal(ending, handler)


def _parents():
    """The parent of every process."""
    for folder in pathlib.Path("/proc").glob("[0-9]*"):
        try:
            yield int(folder.name), int((folder / "stat").read_text().rpartition(")")[2].split()[1])
        except OSError:
            pass  # it has just ended


def _descendants():
    parents, family = dict(_parents()), {os.getpid()}
    while found := {process for process, parent in parents.items() if parent in family} - family:
        family |= found
    return family - {os.getpid()}


def _bury():
    """Takes note of children that have ended."""
    try:
        while os.waitpid(-1, os.WNOHANG)[0]:
            pass
    except ChildProcessError:
        pass


class Wrapper:
    """Runs a command, with servers beside it. A descendant that outlives its parent becomes the wrapper's."""

    def __init__(self, patience=PATIENCE):
        self._patience = patience
        self._servers = []

    def __enter__(self):
        _control(SET_CHILD_SUBREAPER, 1)
        # A process that is killed together with its children cannot end its wrappers.
        _control(SET_PARENT_DEATH_SIGNAL, signal.SIGTERM)
        _listen(_end)
        # A terminal interrupts the command as well, which decides what that means.
        signal.signal(signal.SIGINT, lambda *_: None)
        return self

    def __exit__(self, kind, ended, _traceback):
        _listen(signal.SIG_IGN)
        for server in self._servers:
            server.terminate()
        self._leave_alone(self._patience if not ended else 0)
        for number in (signal.SIGTERM, signal.SIGKILL):
            for process in _descendants():
                try:
                    os.kill(process, number)
                except ProcessLookupError:
                    pass
            self._leave_alone(self._patience)
        if kind is Ended:
            sys.exit(128 + ended.args[0])

    @staticmethod
    def _leave_alone(seconds):
        """Waits until nobody is left, or time is up."""
        last = time.monotonic() + seconds
        while _bury() or _descendants():
            if time.monotonic() >= last:
                return
            time.sleep(0.01)

    def serve(self, command, **options):
        """Starts a server that ends with the wrapper, even if that is killed."""
        server = subprocess.Popen(command, stdin=subprocess.DEVNULL,
                                  preexec_fn=lambda: _control(SET_PARENT_DEATH_SIGNAL, signal.SIGTERM), **options)
        self._servers.append(server)
        return server

    @staticmethod
    def run(command, environment=None):
        """Runs the command to its end, and returns its exit code as a shell does."""
        try:
            status = subprocess.Popen(command, env=environment).wait()
        except FileNotFoundError as error:
            sys.exit(f"{pathlib.Path(sys.argv[0]).name}: {error}")
        return status if status >= 0 else 128 - status
