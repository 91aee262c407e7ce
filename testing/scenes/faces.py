# SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
# SPDX-License-Identifier: LGPL-2.1-or-later
"""The faces of the client: how each of them asks the same question, and how it hears the same answer."""


class Terminal:
    """Asks on the terminal, a line for each part of a question."""

    name = "on the terminal"
    handover_step = 50  # Milliseconds that the daemon takes for each step of a handover
    options = ["--console"]
    card_files = []  # The modes of the files that a question about a contact card needs

    def __init__(self, client):
        self._client = client

    def asks(self, *parts):
        buttons = [part for part in parts if part.startswith("[")]
        for part in parts[:len(parts) - len(buttons)]:
            self._client.says(part)
        self._client.says(*buttons)

    def hears(self, answer):
        self._client.hears(answer)

    def goes_back(self):
        self._client.hears("n")

    def chooses(self, application):
        self._client.hears(application)

    def cannot_choose(self, application):
        self.chooses(application)

    def has_been_read(self, _button):
        """What is only told needs no answer here."""

    def counts(self, number):
        self._client.says(f"{number} more")

    def leaves(self):
        """Goes with its client."""

    def is_clear(self):
        nothing = "there is nothing to answer"
        self._client.forget()
        self._client.hears("?")
        # A question that is over is printed again by a client that has not heard so yet, and then withdrawn.
        if nothing not in self._client.says_one_of(nothing, "["):
            self._client.says("withdrawn")
            self._client.hears("?")
            self._client.says(nothing)

    def indicates_touch(self):
        self._client.says("something touched")


class Screen:
    """Asks on the screen: the remote control tells a question in one line, and presses its buttons."""

    name = "on the screen"
    handover_step = 50
    options = ["--remote-control"]
    card_files = ["0o600"]

    def __init__(self, client):
        self._client = client

    def asks(self, *parts):
        self._client.says("screen: ", *parts)

    def hears(self, answer):
        self._client.hears(f"press {answer}")

    def goes_back(self):
        self._client.hears("escape")

    def chooses(self, application):
        self._client.hears("press Choose another application")
        self._client.says("screen: Choose application | ")
        self._client.hears(f"select {application}")
        self._client.hears("press OK")

    def cannot_choose(self, application):
        self._client.hears("press Choose another application")
        self._client.says("screen: Choose application | ")
        self._client.hears(f"select {application}")
        self._client.says(f"failed: select {application}")
        self._client.hears("escape")

    def has_been_read(self, button):
        self._client.hears(f"press {button}")

    def counts(self, number):
        self._client.says(f"{number} more")

    def leaves(self):
        """Goes with its client."""

    def is_clear(self):
        # A client that has shown nothing yet may have said so before it found the daemon.
        self._client.says_last("screen: ", "nothing")

    def indicates_touch(self):
        self._client.says("banner: turned by 0")


class Phone(Screen):
    """A window that stays."""

    options = ["--phone", "--remote-control"]
