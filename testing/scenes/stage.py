# SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
# SPDX-License-Identifier: LGPL-2.1-or-later
"""The stage of a scene: the simulated daemon, the client and the handler application, on the current buses."""

import os
import pathlib
import shutil
import signal
import tempfile
import time

import dbus

from actor import PATIENCE, Actor, Unmet
from faces import Terminal
from standin import StandIn
from wire import Wire

CLIENT = "org.connui.NfcUi"
REPOSITORY = pathlib.Path(__file__).resolve().parents[2]
HANDLERS = [
    REPOSITORY / "examples/sample-handler/sample-handler.handler",
    REPOSITORY / "testing/scenes/notebook.handler",
]


class Stage:
    """Starts the programs that every scene needs, and ends all of them with the scene."""

    loop_watch = None  # The library that ends a program which waits for another in its event loop

    def __init__(self, programs, heard=None, face=Terminal):
        self.programs = pathlib.Path(programs).resolve()
        self._face = face
        self._heard = heard
        self._actors = []
        self.face = None
        self._has_activated_client = False
        self._session_bus = dbus.bus.BusConnection(dbus.bus.BUS_SESSION)
        # with-buses removes the folder of a scene that is ended.
        self._folder = tempfile.TemporaryDirectory(prefix="connui-scene.", dir=os.environ["HOME"])
        self._announce_handler()
        self._announce_dialer()

    def __enter__(self):
        self._forget_settings()
        self.wire = Wire()
        self.handler = self.start("handler", "sample-handler")
        self.handler.says("waiting for tags")
        self.daemon_comes()
        self.client_comes()
        return self

    def __exit__(self, *_):
        self.all_leave()
        if self._has_activated_client:
            self.ends_the_activated_client()
        self.wire.closes()
        self._activation_file().unlink(missing_ok=True)
        self._client_activation_file().unlink(missing_ok=True)
        self._folder.cleanup()

    def all_leave(self):
        """Ends every program, those first that came last."""
        self._face_leaves()
        unruly = []
        while self._actors:
            actor = self._actors.pop()
            if not actor.is_dismissed():
                unruly.append(actor)
        if unruly:
            raise Unmet("; ".join(f"{actor.role} did not leave in good order: {actor.lines[-5:]}" for actor in unruly))

    def _face_leaves(self):
        if self.face:
            self.face.leaves()
        self.face = None

    def _announce_handler(self):
        handlers = pathlib.Path(os.environ["XDG_DATA_HOME"], "connui-nfc", "handlers")
        handlers.mkdir(parents=True, exist_ok=True)
        icons = pathlib.Path(os.environ["XDG_DATA_HOME"], "icons", "hicolor", "scalable", "apps")
        icons.mkdir(parents=True, exist_ok=True)
        for announcement in HANDLERS:
            shutil.copy(announcement, handlers)
            if announcement.with_suffix(".svg").exists():
                shutil.copy(announcement.with_suffix(".svg"), icons)
        # Only a folder of the demo's own may be written to.
        applications = os.environ.get("CONNUI_OWN_APPLICATIONS")
        for announcement in HANDLERS if applications else []:
            shutil.copy(announcement.with_suffix(".desktop"), applications)

    def _announce_dialer(self):
        """The application with which the desktop calls numbers, sends messages and opens texts."""
        applications = pathlib.Path(os.environ["XDG_DATA_HOME"], "applications")
        applications.mkdir(exist_ok=True)
        (applications / "dialer.desktop").write_text(
            f"[Desktop Entry]\nType=Application\nName=Dialer\nExec=\"{REPOSITORY}/testing/scenes/dialer\" %u\n")
        kinds = ("x-scheme-handler/tel", "x-scheme-handler/callto", "x-scheme-handler/sms", "text/plain")
        defaults = "".join(f"{kind}=dialer.desktop\n" for kind in kinds)
        pathlib.Path(os.environ["XDG_CONFIG_HOME"], "mimeapps.list").write_text("[Default Applications]\n" + defaults)
        self._dialed.unlink(missing_ok=True)

    @property
    def _dialed(self):
        return pathlib.Path(os.environ["HOME"], "dialed")

    def _dialed_uris(self):
        return self._dialed.read_text().splitlines() if self._dialed.exists() else []

    def dials(self, uri):
        """Waits until the dialer is started with this."""
        end = time.monotonic() + PATIENCE
        while uri not in self._dialed_uris():
            if time.monotonic() > end:
                raise Unmet(f"{uri} was not dialed, but {self._dialed_uris()}")
            time.sleep(0.02)

    @staticmethod
    def dialer_can_be_ended():
        """Checks that the dialer was started with no signal blocked."""
        mask = pathlib.Path(os.environ["HOME"], "dialer-signals").read_text().split()[1]
        if int(mask, 16):
            raise Unmet(f"the dialer's signals {mask} are blocked")

    def dials_nothing(self):
        if self._dialed_uris():
            raise Unmet(f"{self._dialed_uris()} was dialed")

    @staticmethod
    def nobody_takes_tags():
        """Takes back what every handler application has announced."""
        shutil.rmtree(pathlib.Path(os.environ["XDG_DATA_HOME"], "connui-nfc", "handlers"))

    @staticmethod
    def _forget_settings():
        shutil.rmtree(pathlib.Path(os.environ["XDG_CONFIG_HOME"], "connui"), ignore_errors=True)

    @staticmethod
    def _activation_file():
        return pathlib.Path(os.environ["CONNUI_SYSTEM_SERVICES"], "com.tavix.nfc.service")

    @staticmethod
    def _client_activation_file():
        return pathlib.Path(os.environ["XDG_DATA_HOME"], "dbus-1/services/org.connui.NfcUi.service")

    def lets_the_bus_start_the_daemon(self):
        shutil.copy(self.programs.parent / "system-services/com.tavix.nfc.service", self._activation_file())

    def start(self, role, program, *arguments, **environment):
        if self.loop_watch and program in ("nfc-ui", "nfc-settings", "nfc-panel"):
            environment |= self._watched()
        actor = Actor(role, [self.programs / program, *arguments], self._heard, environment)
        self._actors.append(actor)
        return actor

    def _watched(self):
        options = os.environ.get("ASAN_OPTIONS", "")
        return {"LD_PRELOAD": str(self.loop_watch), "ASAN_OPTIONS": f"{options}:verify_asan_link_order=0"}

    def daemon_comes(self):
        self._daemon_with_handover_step(self._face.handover_step)

    def daemon_is_slow(self):
        """Puts a daemon in place of the one that is there, which takes its time with a handover."""
        self.daemon.is_killed()
        self._daemon_with_handover_step(2000)
        self.client.says("the NFC daemon is here")

    def _daemon_with_handover_step(self, milliseconds):
        self.daemon = self.start("daemon", "nfcd-sim", "--handover-step", str(milliseconds))
        self.daemon.says("ready")

    def client_comes(self):
        self._face_leaves()
        self.clients_files.mkdir(exist_ok=True)
        self.client = self.start("client", "nfc-ui", *self._face.options, TMPDIR=str(self.clients_files))
        self.client.says("the NFC daemon is here")
        self.face = self._face(self.client)

    def client_comes_again(self):
        """Puts a new client in the place of the one that is there."""
        self.client.is_dismissed()
        self.client_comes()

    def activates_the_client(self):
        """Has the session's bus start the client."""
        service = self.programs.parent / "session-services/org.connui.NfcUi.service"
        self._client_activation_file().parent.mkdir(parents=True, exist_ok=True)
        shutil.copy(service, self._client_activation_file())
        self._has_activated_client = True
        self._session_bus.start_service_by_name(CLIENT)

    def ends_the_activated_client(self):
        """Asks the client that the bus has started to leave."""
        self._has_activated_client = False
        service = self._session_bus.get_object("org.freedesktop.DBus", "/org/freedesktop/DBus")
        os.kill(service.GetConnectionUnixProcessID(CLIENT, dbus_interface="org.freedesktop.DBus"), signal.SIGTERM)
        end = time.monotonic() + PATIENCE
        # The bus may learn of an end later than we do.
        while self._session_bus.name_has_owner(CLIENT):
            if time.monotonic() > end:
                raise Unmet("the activated client does not leave")
            time.sleep(0.02)

    @property
    def clients_files(self):
        """The folder of the client's temporary files."""
        return pathlib.Path(self._folder.name, "client")

    def power_is(self, state):
        """Waits until the daemon's adapter has this state: a switch shows the user's wish before it is met."""
        bus = dbus.bus.BusConnection(dbus.bus.BUS_SYSTEM)
        manager = dbus.Interface(bus.get_object("com.tavix.nfc", "/"), "com.tavix.nfc.Manager")
        adapter = dbus.Interface(bus.get_object("com.tavix.nfc", manager.DefaultAdapter()), "com.tavix.nfc.Adapter")
        end = time.monotonic() + PATIENCE
        while adapter.GetProperties()["State"] != state:
            if time.monotonic() > end:
                raise Unmet(f"the adapter is not {state}")
            time.sleep(0.02)
        bus.close()

    def settings_come(self):
        """Opens the settings; the actor returned has them on its screen."""
        settings = self.start("settings", "nfc-settings", "--remote-control")
        settings.says("[Ask before opening")
        return settings

    def notebook_comes(self):
        """The second application that takes what is on tags."""
        self.notebook = self.start("notebook", "sample-handler", "org.connui.Notebook")
        self.notebook.says("waiting for tags")

    def stands_in(self, service, *template):
        """A stand-in for a service of the system bus."""
        actor = self.start(service, "/usr/bin/python3", "-m", "dbusmock", "--system", *template)
        return StandIn(actor, service)

    def bluetooth_comes(self, address, name):
        """The phone's Bluetooth, which knows a device."""
        bluetooth = self.stands_in("org.bluez", "-t", "bluez5")
        bluetooth.call("/", "org.bluez.Mock", "AddAdapter", "hci0", "phone")
        bluetooth.call("/", "org.bluez.Mock", "AddDevice", "hci0", address, name)

    def session_can_be_locked(self):
        """The login manager; returns what locks the session, and unlocks it."""
        login = self.stands_in("org.freedesktop.login1", "-t", "logind")
        path = login.call("/org/freedesktop/login1", "org.freedesktop.DBus.Mock", "AddSession", "auto", "seat0",
                          dbus.UInt32(os.getuid()), "user", True)
        return lambda locked: login.call(path, "org.freedesktop.login1.Session", "SetLockedHint", locked)

    def tap(self, *arguments):
        """Holds something against the daemon; the actor returned leaves when the user has decided."""
        return self.start("nfctap", "nfctap", *arguments)

    def shares(self, *resources):
        """Holds another phone against the daemon, which these are to be sent to; there may be none."""
        return self.start("sender", "/usr/bin/gdbus", "call", "--system", "--timeout", str(PATIENCE),
                          "--dest", "com.tavix.nfc", "--object-path", "/com/tavix/nfc/simulator",
                          "--method", "com.tavix.nfc.Simulator.TouchToShare", str(list(resources)))

    def contact(self, number, card):
        """A card in the user's contacts."""
        contacts = pathlib.Path(os.environ["XDG_DATA_HOME"], "contacts")
        contacts.mkdir(exist_ok=True)
        (contacts / f"{number}.vcf").write_bytes(card)

    def file(self, name, content):
        """A file of the scene's own."""
        path = pathlib.Path(self._folder.name, name)
        path.write_bytes(content)
        return str(path)
