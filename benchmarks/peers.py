# SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
# SPDX-License-Identifier: LGPL-2.1-or-later
"""What the measuring scripts share: the daemon, the processes that are measured, the lines that are printed."""
import json
import subprocess
import time

import dbus


class Daemon:
    """A fake daemon on the system bus, which comes and goes."""

    def __init__(self, tree, service="com.tavix.nfc"):
        self.process = subprocess.Popen([tree / "bin" / "fake-service", "system", service],
                                        stdout=subprocess.PIPE)
        self.process.stdout.readline()
        fake = dbus.SystemBus().get_object(f"org.connui.fake.{service}", "/", introspect=False)
        self.fake = dbus.Interface(fake, "org.connui.FakeService")

    def start(self):
        self.fake.Own()

    def stop(self):
        self.fake.Leave()

    def end(self):
        self.process.kill()
        self.process.wait()


class Peer:
    """A process that tells its name on the bus and its agent's path, and then the times of what is waited for."""

    def __init__(self, *command):
        self.process = subprocess.Popen(command, stdout=subprocess.PIPE, text=True)
        self.name, self.path = self.process.stdout.readline().split()

    def event(self):
        """Returns the nanoseconds of the clock at the next thing that is waited for."""
        return float(self.process.stdout.readline())

    def __enter__(self):
        return self

    def __exit__(self, *_):
        self.process.kill()
        self.process.wait()


def now():
    return time.clock_gettime_ns(time.CLOCK_MONOTONIC)


def total_instructions(dump):
    """Returns the instructions that a dump of callgrind counts."""
    return next(int(line.split()[1]) for line in open(dump, errors="replace") if line.startswith("totals:"))


def report(comparison, unit, base, other, at_most=None, instructions=None):
    """Prints a line; base and other are pairs of a name and a figure, instructions those of both."""
    line = {"comparison": comparison, "unit": unit, "base": dict(zip(("name", "value"), base)),
            "other": dict(zip(("name", "value"), other)), "at_least": 0}
    if at_most is not None:
        line["at_most"] = at_most
    if instructions:
        line["instructions"] = dict(zip(("base", "other"), instructions))
    print(json.dumps(line), flush=True)
