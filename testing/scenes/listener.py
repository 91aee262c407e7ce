# SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
# SPDX-License-Identifier: LGPL-2.1-or-later
"""The face that a user hears: questions are read and answered as assistive technology does it, over AT-SPI."""

import json
import pathlib
import re
import subprocess
import time

from actor import PATIENCE, Actor, Unmet
from faces import Screen

SCREEN_READER = pathlib.Path(__file__).resolve().parents[1] / "support/screen-reader"
ANSWERS = ("push button", "toggle button", "check box", "button")


def spoken(node):
    """All that is read out of a part of the tree, in its order; what can be pressed stands in brackets."""
    if "showing" not in node["states"]:
        return []
    name = f"[{node['name']}]" if node["role"] in ANSWERS else node["name"]
    words = [name, node["description"]]
    return [word for word in words if word] + [word for child in node["children"] for word in spoken(child)]


class Listener(Screen):
    """Hears and answers what another user sees."""

    name = "by ear"
    handover_step = 1000  # Listening takes longer than looking

    def __init__(self, client):
        super().__init__(client)
        self._reader = Actor("screen reader", ["/usr/bin/python3", "-B", SCREEN_READER, str(client.pid)])
        self._reader.says("ready")
        self._announced = []
        self._waits(lambda: self._ask(do="find"), "the client")

    def leaves(self):
        self._reader.hears_the_end()
        self._reader.ends()

    def _ask(self, **request):
        while True:
            self._reader.hears(json.dumps(request))
            answer = json.loads(self._reader.says())
            # An object that goes while it is read is read again.
            if not (isinstance(answer, dict) and "error" in answer):
                return answer

    def _words(self):
        return " | ".join(word for window in self._ask(do="tree") for word in spoken(window))

    def _waits(self, happens, expected):
        end = time.monotonic() + PATIENCE
        while not happens():
            if time.monotonic() > end:
                raise Unmet(f"{expected} was not heard, but: {self._words()}")
            time.sleep(0.02)

    def asks(self, *parts):
        wanted = re.compile(".*".join(map(re.escape, parts)), re.DOTALL)
        self._waits(lambda: wanted.search(self._words()) or self._hears(wanted), parts)

    def hears(self, answer):
        self._waits(lambda: self._ask(do="press", name=answer) is True, f"[{answer}]")

    def goes_back(self):
        # Without a window manager keys go to the window under the pointer.
        subprocess.run(["xdotool", "mousemove", "240", "400", "key", "Escape"], check=True)
        # A client that leaves while the registry has still to answer for a key leaks Qt's copy of it.
        self._ask(do="settle")

    def chooses(self, application):
        self.hears("Choose another application")
        self.asks("Choose application")
        self.hears(application)

    def cannot_choose(self, application):
        self.hears("Choose another application")
        self.asks("Choose application")
        assert self._ask(do="press", name=application) is not True
        self.goes_back()

    def has_been_read(self, button):
        self.hears(button)

    def counts(self, number):
        self.asks(f"{number} more")

    def is_clear(self):
        self._waits(lambda: not self._words(), "silence")

    def indicates_touch(self):
        self._waits(lambda: self._hears(re.compile("NFC touch")), "NFC touch")

    def _hears(self, wanted):
        """Whether there was such an announcement, which what is shown for a moment only is known by."""
        self._announced += [event["text"] for event in self._ask(do="events")
                            if event["type"] == "object:announcement"]
        heard = next((i for i, text in enumerate(self._announced) if wanted.search(text)), None)
        if heard is not None:
            del self._announced[:heard + 1]
        return heard is not None
