# SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
# SPDX-License-Identifier: LGPL-2.1-or-later
"""stayingagent.py ADDRESS

Registers an agent with the daemon on the bus at ADDRESS, prints "registered", and the bytes of each tag that it is
asked about.
"""

import sys

import dbus.bus
import dbus.mainloop.glib
import dbus.service
from gi.repository import GLib

ADAPTER = "com.tavix.nfc.Adapter"
AGENT = "com.tavix.nfc.UIAgent"


class Agent(dbus.service.Object):
    """The agent, which grants everything."""

    @dbus.service.method(AGENT, in_signature="os")
    def NotifyTouch(self, target, status):
        pass

    @dbus.service.method(AGENT, in_signature="a(ssos)oay", byte_arrays=True)
    def RequestNDEFDataDelivery(self, handlers, target, data):
        print(data.hex(), flush=True)


def main():
    bus = dbus.bus.BusConnection(sys.argv[1], mainloop=dbus.mainloop.glib.DBusGMainLoop())
    agent = Agent(bus, "/agent")
    daemon = bus.get_object("com.tavix.nfc", "/com/tavix/nfc/adapter0", introspect=False)
    daemon.RegisterUIAgent(agent, dbus_interface=ADAPTER, signature="o")
    print("registered", flush=True)
    GLib.MainLoop().run()


if __name__ == "__main__":
    main()
