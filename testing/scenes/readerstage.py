# SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
# SPDX-License-Identifier: LGPL-2.1-or-later
"""The stage of scenes with a reader: the daemon that reads tags through pcscd, and tags that are programs."""

import os
import pathlib
import signal
import time

import dbus

from actor import PATIENCE, Unmet
from stage import Stage

ADAPTER = "/com/tavix/nfc/adapter0"
# The daemon takes a tag that comes back sooner for the same touch.
SAME_TOUCH = 2


class ReaderStage(Stage):
    """Has nfcd-pcsc on the stage, with the reader of with-reader."""

    def daemon_comes(self):
        handlers = pathlib.Path(os.environ["XDG_DATA_HOME"], "connui-nfc", "handlers")
        self.daemon = self.start("daemon", "nfcd-pcsc", "--handlers", handlers)
        self.daemon.says("ready")
        end = time.monotonic() + PATIENCE
        while not self._readers():
            if time.monotonic() > end:
                raise Unmet(f"the daemon finds no reader: {self.daemon.lines}")
            time.sleep(0.02)

    def _interface(self, name):
        bus = dbus.bus.BusConnection(dbus.bus.BUS_SYSTEM)
        return dbus.Interface(bus.get_object("com.tavix.nfc", ADAPTER, introspect=False), f"com.tavix.nfc.{name}")

    def _readers(self):
        return self._interface("Adapter").GetProperties()["Readers"]

    def holds(self, kind, bytes_, *options):
        """Holds a tag against the reader until it leaves."""
        tag = self.start("tag", "hold-tag", *options, kind, bytes_.hex())
        tag.says("on the reader")
        return tag

    def leaves(self, tag):
        """Takes a tag off the reader; returns how many commands it had, and what it holds."""
        os.kill(tag.pid, signal.SIGTERM)
        commands = int(tag.says("commands:").rpartition(" ")[2])
        held = bytes.fromhex(tag.says("holds").rpartition("holds ")[2])
        tag.leaves()
        return commands, held

    def comes_later(self, kind, held):
        """Holds a tag that has left against the reader once more, so much later that it is another touch."""
        time.sleep(SAME_TOUCH + 0.5)
        return self.holds(kind, held, "--again")

    def writes(self, *what):
        """Has nfctap write what its arguments tell on the next tag, and waits until the daemon does."""
        tap = self.start("nfctap", "nfctap", "write", *what)
        self.wire.hears("WriteNdef")
        # Calls are decided about in their order; this one is about nothing.
        self._interface("TagWriter").Cancel()
        return tap

    def bluetooth_has_paired(self, address):
        """Waits until BlueZ holds a device of hci0 for paired."""
        bus = dbus.bus.BusConnection(dbus.bus.BUS_SYSTEM)
        path = f"/org/bluez/hci0/dev_{address.replace(':', '_')}"
        device = dbus.Interface(bus.get_object("org.bluez", path, introspect=False), "org.freedesktop.DBus.Properties")
        end = time.monotonic() + PATIENCE
        while not device.Get("org.bluez.Device1", "Paired"):
            if time.monotonic() > end:
                raise Unmet(f"{address} is not paired")
            time.sleep(0.02)
