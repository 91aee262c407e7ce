# SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
# SPDX-License-Identifier: LGPL-2.1-or-later
"""Listens to the system bus: every question that the daemon asks its agent, what it is to write, and every answer."""

import os
import threading

import gi

gi.require_version("Gio", "2.0")
from gi.repository import Gio, GLib  # noqa: E402 (the version comes first)

from actor import PATIENCE, Unmet  # noqa: E402

AGENT = "com.tavix.nfc.UIAgent"
RULES = [
    f"type='method_call',interface='{AGENT}'",
    "type='method_call',interface='com.tavix.nfc.TagWriter'",
    "type='method_return'",
    "type='error'",
    "type='signal',sender='org.freedesktop.DBus',member='NameOwnerChanged'",
]


class Wire:
    """A monitor of the bus, which holds every question to exactly one answer.

    A question whose asker has left the bus needs none. For an agent that has left, the bus itself answers.
    """

    def __init__(self):
        self._answers = {}  # by who asked and the call's serial number: how many
        self._methods = {}  # likewise: what was asked
        self._departed = set()
        self._news = threading.Condition()
        flags = Gio.DBusConnectionFlags
        self._connection = Gio.DBusConnection.new_for_address_sync(
            os.environ["DBUS_SYSTEM_BUS_ADDRESS"],
            flags.AUTHENTICATION_CLIENT | flags.MESSAGE_BUS_CONNECTION, None, None)
        self._connection.set_exit_on_close(False)
        self._connection.add_filter(self._hear)
        self._connection.call_sync(
            "org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus.Monitoring", "BecomeMonitor",
            GLib.Variant("(asu)", (RULES, 0)), None, Gio.DBusCallFlags.NONE, -1, None)

    # On a thread of the connection's own. A monitor must not answer, so nothing is handed on but what was meant for
    # this connection.
    def _hear(self, connection, message, incoming):
        if not incoming or message.get_destination() == connection.get_unique_name():
            return message
        with self._news:
            kind = message.get_message_type()
            if kind == Gio.DBusMessageType.METHOD_CALL:
                call = (message.get_sender(), message.get_serial())
                self._answers[call] = 0
                self._methods[call] = message.get_member()
            elif kind == Gio.DBusMessageType.SIGNAL:
                name, _, owner = message.get_body().unpack()
                if not owner:
                    self._departed.add(name)
            else:
                call = (message.get_destination(), message.get_reply_serial())
                if call in self._answers:
                    self._answers[call] += 1
            self._news.notify_all()
        return None

    def _unanswered(self):
        return [self._methods[call] for call, answers in self._answers.items()
                if not answers and call[0] not in self._departed]

    @property
    def questions(self):
        """How many questions there were."""
        with self._news:
            return len(self._answers)

    def hears(self, method):
        """Waits until a method of this name has been called."""
        with self._news:
            if not self._news.wait_for(lambda: method in self._methods.values(), PATIENCE):
                raise Unmet(f"nobody called {method}")

    def hears_more_than(self, questions, until):
        """Waits for another question after so many, or until it is not to be expected any more."""
        with self._news:
            while len(self._answers) <= questions and not until():
                self._news.wait(0.05)

    def all_answered_once(self):
        """Waits until every question is answered, and fails unless each has got exactly one answer."""
        with self._news:
            self._news.wait_for(lambda: not self._unanswered(), PATIENCE)
            if self._unanswered():
                raise Unmet(f"nobody answered {self._unanswered()}")
            twice = [self._methods[call] for call, answers in self._answers.items() if answers > 1]
            if twice:
                raise Unmet(f"answered more than once: {twice}")

    def closes(self):
        self._connection.close_sync(None)
