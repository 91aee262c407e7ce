# SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
# SPDX-License-Identifier: LGPL-2.1-or-later
"""stayingagent.py ADDRESS

Registers an agent with the daemon on the bus at ADDRESS, prints "registered", and "released" when the daemon says so.
"""

import sys

import dbus.bus
import dbus.mainloop.glib
import dbus.service
from gi.repository import GLib

ADAPTER = "com.tavix.nfc.Adapter"
LOOP = GLib.MainLoop()


class Agent(dbus.service.Object):
    """The agent, which can only be released."""

    @dbus.service.method("com.tavix.nfc.UIAgent")
    def Release(self):
        LOOP.quit()


def main():
    bus = dbus.bus.BusConnection(sys.argv[1], mainloop=dbus.mainloop.glib.DBusGMainLoop())
    agent = Agent(bus, "/agent")
    daemon = bus.get_object("com.tavix.nfc", "/com/tavix/nfc/adapter0", introspect=False)
    daemon.RegisterUIAgent(dbus.ObjectPath("/agent"), dbus_interface=ADAPTER, signature="o")
    print("registered", flush=True)
    LOOP.run()
    agent.remove_from_connection()
    print("released", flush=True)


if __name__ == "__main__":
    main()
