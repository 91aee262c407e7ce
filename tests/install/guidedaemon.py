# SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
# SPDX-License-Identifier: LGPL-2.1-or-later
"""A daemon that asks what the simulated one cannot: several things of one target, and a last word when it has gone."""

import os
import threading

import gi

gi.require_version("Gio", "2.0")
from gi.repository import Gio, GLib  # noqa: E402 (the version comes first)

INTERFACES = """
<node>
  <interface name="com.tavix.nfc.Manager"><method name="DefaultAdapter"><arg type="o" direction="out"/></method></interface>
  <interface name="com.tavix.nfc.Adapter">
    <method name="GetProperties"><arg type="a{sv}" direction="out"/></method>
    <method name="RegisterUIAgent"><arg type="o" direction="in"/></method>
    <method name="UnregisterUIAgent"><arg type="o" direction="in"/></method>
  </interface>
</node>
"""
PATIENCE = 60
AGENT = "com.tavix.nfc.UIAgent"


class GuideDaemon:
    """Owns the daemon's name and calls the agent that registers with it."""

    def __init__(self):
        flags = Gio.DBusConnectionFlags
        self._bus = Gio.DBusConnection.new_for_address_sync(
            os.environ["DBUS_SYSTEM_BUS_ADDRESS"],
            flags.AUTHENTICATION_CLIENT | flags.MESSAGE_BUS_CONNECTION, None, None)
        self._agents = []
        self._news = threading.Condition()
        manager, adapter = Gio.DBusNodeInfo.new_for_xml(INTERFACES).interfaces
        # Calls are answered on a thread of their own: the test waits in the meantime.
        context = GLib.MainContext()
        loop = GLib.MainLoop(context)
        context.push_thread_default()
        self._bus.register_object("/", manager, self._answer, None, None)
        self._bus.register_object("/adapter", adapter, self._answer, None, None)
        context.pop_thread_default()
        threading.Thread(target=loop.run, daemon=True).start()

    def _answer(self, _, sender, path, interface, method, arguments, call):
        answers = {"DefaultAdapter": GLib.Variant("(o)", ("/adapter",)),
                   "GetProperties": GLib.Variant("(a{sv})", ({"State": GLib.Variant("s", "on")},))}
        call.return_value(answers.get(method))
        if method == "RegisterUIAgent":
            with self._news:
                self._agents.append((sender, arguments.unpack()[0]))
                self._news.notify_all()

    def comes(self):
        self._call_bus("RequestName", GLib.Variant("(su)", ("com.tavix.nfc", 0)))

    def goes(self):
        self._call_bus("ReleaseName", GLib.Variant("(s)", ("com.tavix.nfc",)))

    def _call_bus(self, method, arguments):
        self._bus.call_sync("org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus", method, arguments,
                            None, Gio.DBusCallFlags.NONE, -1, None)

    def knows_agents(self, count):
        """Waits until so many agents have registered, one after the other."""
        with self._news:
            if not self._news.wait_for(lambda: len(self._agents) >= count, PATIENCE):
                raise SystemExit(f"{len(self._agents)} agents have registered")

    def tells(self, method, arguments=None):
        """Calls the newest agent and waits for its answer."""
        sender, path = self._agents[-1]
        self._bus.call_sync(sender, path, AGENT, method, arguments, None, Gio.DBusCallFlags.NONE, PATIENCE * 1000, None)
        # The answers so far are known now.
        while GLib.MainContext.default().iteration(False):
            pass

    def asks(self, method, arguments=None):
        """Calls the newest agent and returns a list that gets the outcome."""
        sender, path = self._agents[-1]
        outcome = []

        def take(bus, result):
            try:
                bus.call_finish(result)
                outcome.append("granted")
            except GLib.Error as error:
                outcome.append(Gio.DBusError.get_remote_error(error))
        self._bus.call(sender, path, AGENT, method, arguments, None, Gio.DBusCallFlags.NONE, 2**31 - 1, None, take)
        return outcome
