# SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
# SPDX-License-Identifier: LGPL-2.1-or-later
"""A stand-in for a service of the phone that the demo's machine does not have, by dbusmock."""

import time

import dbus

from actor import PATIENCE, Unmet

MOCK = "org.freedesktop.DBus.Mock"


class StandIn:
    """Owns a name on the system bus and answers as it is told to."""

    def __init__(self, actor, service):
        self._service = service
        self._bus = dbus.bus.BusConnection(dbus.bus.BUS_SYSTEM)
        self._wait_for(actor)

    def _wait_for(self, actor):
        end = time.monotonic() + PATIENCE
        while not self._bus.name_has_owner(self._service):
            if time.monotonic() > end:
                raise Unmet(f"{self._service} did not come: {actor.lines}")
            time.sleep(0.02)

    def call(self, path, interface, method, *arguments):
        return dbus.Interface(self._bus.get_object(self._service, path, introspect=False), interface).get_dbus_method(
            method)(*arguments)

    def answers(self, path, interface, method, takes, gives, code):
        """Gives an object a method, whose body is Python."""
        self.call(path, MOCK, "AddMethod", interface, method, takes, gives, code)
