#!/usr/bin/env python3
# SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
# SPDX-License-Identifier: LGPL-2.1-or-later
"""Lets anything happen to the client on the screen, in any order, and looks whether it comes through.

What happens is drawn from a seed, which is printed: the same seed plays the same events again. In the end every question
of the daemon must have had exactly one answer, or its asker have left; nothing may be on the screen, and the client's
memory must not have grown.
"""

import argparse
import pathlib
import random
import sys
import time

sys.path.insert(0, str(pathlib.Path(__file__).resolve().parents[2] / "testing/scenes"))
from actor import PATIENCE, Unmet  # noqa: E402
from faces import Screen  # noqa: E402
from scenes import HEADSET  # noqa: E402
from stage import Stage  # noqa: E402

BUTTONS = ["Yes", "No", "OK", "Cancel", "View", "Discard", "Open", "Call", "Send", "Continue", "Done", "Pair", "Connect", "Disconnect", "Close",
           "Choose another application"]
# Growth in kilobytes that is not a leak: caches that fill, memory that the allocator keeps.
TOLERANCE = 8192


class Chaos:
    """A stage on which the seed decides what happens next."""

    def __init__(self, stage, seed):
        self._stage = stage
        self._random = random.Random(seed)
        self._taps = []
        self._notes = stage.file("notes", b"\0\1\2")
        self._noise = stage.file("noise.ndef", self._random.randbytes(40))
        # The events, and their frequency.
        self._events = [
            (20, self._tag), (10, self._device), (8, self._share), (2, self._handover), (2, self._file),
            (35, self._press), (14, self._escape), (2, self._close), (3, self._turn),
            (1, self._power), (1, self._crash), (1, self._release),
        ]

    def happens(self):
        """One event."""
        weights, events = zip(*self._events)
        self._random.choices(events, weights)[0]()

    def settles(self):
        """Goes back until nothing is asked any more."""
        end = time.monotonic() + PATIENCE
        while time.monotonic() < end:
            self._taps = [tap for tap in self._taps if tap.is_running()]
            screen = self._client_does("escape")
            if not self._taps and screen == "screen: nothing":
                return
            if screen == "screen: nothing":
                time.sleep(0.02)  # A tap may still lead to a question.
        raise Unmet(f"{len(self._taps)} taps do not end, with {screen}")

    def memory(self):
        """The client's memory, in kilobytes."""
        status = pathlib.Path("/proc", str(self._stage.client.pid), "status").read_text()
        return next(int(line.split()[1]) for line in status.splitlines() if line.startswith("VmRSS"))

    def _client_does(self, command):
        self._stage.client.hears(command)
        # It reports the screen after every command.
        return self._stage.client.says("screen: ")

    def _tap(self, *arguments):
        asked = self._stage.wire.questions
        tap = self._stage.tap(*arguments)
        self._taps.append(tap)
        # The next event comes when this one has arrived.
        self._stage.wire.hears_more_than(asked, until=lambda: not tap.is_running())

    def _tag(self):
        self._tap(*self._random.choice([
            ("uri", "tel:112"), ("uri", "sms:112?body=Hi"), ("uri", "https://www.example.org"), ("uri", "geo:1,2"),
            ("text", "Welcome"), ("mime", "application/x-notes", self._notes), ("mime", "text/x-vcard", self._notes),
            ("mime", "image/png", self._notes), ("message", self._noise), ("empty",), ("unsupported",), ("malformed",),
        ]))

    def _device(self):
        self._tap(self._random.choice(["pair", "connect", "disconnect"]), *HEADSET)

    def _share(self):
        self._tap(*self._random.choice([
            ("share-selection",), ("share-permission", self._notes), ("share-permission", self._notes, self._noise),
            ("share-permission", "contact:7"),
        ]))

    def _handover(self):
        self._taps.append(self._stage.tap("handover", "bluetooth"))

    def _file(self):
        self._taps.append(self._stage.tap("receive", "film.mkv", "5000000", "5000000"))

    def _press(self):
        self._client_does(f"press {self._random.choice(BUTTONS)}")

    def _escape(self):
        self._client_does("escape")

    def _close(self):
        self._client_does("close")

    def _turn(self):
        self._client_does(f"turn {self._random.choice([0, 90, 180, 270])}")

    def _power(self):
        for state in ("off", "on"):
            self._stage.tap("power", state).leaves()

    def _crash(self):
        self._stage.daemon.is_killed()
        self._leaves_nothing()
        self._comes_back()

    def _release(self):
        self._stage.tap("release").leaves()
        self._leaves_nothing()
        self._stage.daemon.is_killed()
        self._comes_back()

    def _leaves_nothing(self):
        self._stage.client.says("the NFC daemon has left")
        # The button does not exist: the screen stays the same, and is reported.
        self._stage.client.hears("press nothing")
        self._stage.client.says("screen: nothing")

    def _comes_back(self):
        self._stage.daemon_comes()
        self._stage.client.says("the NFC daemon is here")


def run(programs, seed, count):
    with Stage(programs, face=Screen) as stage:
        chaos = Chaos(stage, seed)
        # Half of the way to warm up: the first dialogs load fonts, icons and texts.
        for number in range(count):
            if number == count // 2:
                chaos.settles()
                before = chaos.memory()
            chaos.happens()
        chaos.settles()
        after = chaos.memory()
        stage.client.hears_the_end()
        stage.client.leaves()
        stage.wire.all_answered_once()
        print(f"{stage.wire.questions} questions, each answered once; memory {before} kB, then {after} kB")
        if after > before + TOLERANCE:
            raise Unmet(f"the client has grown from {before} kB to {after} kB")


def main():
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("programs", help="the folder with nfcd-sim, nfctap, nfc-ui and sample-handler")
    parser.add_argument("--events", type=int, default=1000)
    parser.add_argument("--seed", type=int, default=random.SystemRandom().randrange(2**32))
    arguments = parser.parse_args()
    replay = f"--seed {arguments.seed} --events {arguments.events}"
    print(f"chaos: {replay}", flush=True)
    try:
        run(arguments.programs, arguments.seed, arguments.events)
    except Unmet as reason:
        print(f"FAILED, again with {replay}: {reason}")
        return 1
    return 0


if __name__ == "__main__":
    sys.exit(main())
