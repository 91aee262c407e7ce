# SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
# SPDX-License-Identifier: LGPL-2.1-or-later
"""The NFC settings: power, flight mode, and a daemon that does not come up."""

from scenes import decided, handler_gets, screen_scene, switches, text_record

POWER = "Near Field Communication (NFC)"


@screen_scene
def switched_power(stage, step):
    """NFC is switched off and on in the settings"""
    switches(stage, step, "the user switches NFC off", POWER, "off", lambda: stage.power_is("off"))
    decided(stage.tap("text", "Welcome"), step, "the adapter is switched off", 3)
    switches(stage, step, "and on again", POWER, "on", lambda: stage.power_is("on"))
    tap = stage.tap("text", "Welcome")
    handler_gets(stage, step, text_record("Welcome"))
    decided(tap, step, "granted", 0)


@screen_scene
def followed_power(stage, step):
    """The settings follow a daemon that is switched by others"""
    settings = stage.settings_come()
    decided(stage.tap("power", "off"), step, "done", 0)
    step("the switch goes off", lambda: settings.says(f"[{POWER}: off]"))
    decided(stage.tap("power", "on"), step, "done", 0)
    step("the switch goes on", lambda: settings.says(f"[{POWER}: on]"))
    step("the daemon dies", lambda: stage.daemon.is_killed())
    step("the switch goes off", lambda: settings.says(f"[{POWER}: off]"))


def in_flight_mode(stage):
    connman = stage.stands_in("net.connman", "net.connman", "/", "net.connman.Manager")
    connman.answers("/", "net.connman.Manager", "GetProperties", "", "a{sv}",
                    "ret = dbus.Dictionary({'OfflineMode': dbus.Boolean(True)}, signature='sv')")
    stage.tap("power", "off").leaves()


@screen_scene
def refused_in_flight_mode(stage, step):
    """In flight mode NFC is only switched on when the user insists"""
    in_flight_mode(stage)
    settings = stage.settings_come()
    step("the user switches NFC on", lambda: settings.hears(f"press {POWER}"))
    step("the phone is in flight mode: really?", lambda: settings.says("screen: Flight mode is on | "))
    step("the user goes back", lambda: settings.hears("escape"))
    step("NFC stays off", lambda: settings.says(f"[{POWER}: off]"))
    decided(stage.tap("empty"), step, "the adapter is switched off", 3)
    step("the user switches NFC on once more", lambda: settings.hears(f"press {POWER}"))
    step("the phone asks again", lambda: settings.says("screen: Flight mode is on | "))
    step("the user insists", lambda: settings.hears("press Yes"))
    step("NFC is on", lambda: settings.says(f"[{POWER}: on]"))
    stage.power_is("on")
    tap = stage.tap("text", "Welcome")
    handler_gets(stage, step, text_record("Welcome"))
    decided(tap, step, "granted", 0)


@screen_scene
def missing_daemon(stage, step):
    """A daemon that does not come up is told after twenty seconds"""
    step("there is no daemon", lambda: (stage.daemon.is_killed(), stage.client.says("the NFC daemon has left")))
    settings = stage.settings_come()
    step("the user switches NFC on", lambda: settings.hears(f"press {POWER}"))
    step("the settings wait for it", lambda: settings.says(f"[{POWER}: on, busy]"))
    step("it does not come, and the settings say so", lambda: settings.says("screen: NFC is not available | "))
    step("the user has read it", lambda: settings.hears("press OK"))
    step("NFC is off", lambda: settings.says(f"[{POWER}: off]"))
