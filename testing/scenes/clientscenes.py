# SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
# SPDX-License-Identifier: LGPL-2.1-or-later
"""The client itself: questions that wait, a daemon that leaves, a screen that turns."""

from scenes import HEADSET, decided, handler_gets, text_record, uri_record
from screen import screen_is_clear, screen_scene, shows, touches


@screen_scene
def queued_dialogs(stage, step):
    """Two questions for the same tag are both answered, in their order"""
    first = stage.tap("pair", *HEADSET)
    shows(stage, step, "the pairing comes first", "Headset | ")
    second = stage.tap("uri", "tel:112")
    step("another one waits, visibly", lambda: stage.client.says("| 1 more | [Yes]"))
    touches(stage, step, "the person says no", "press No")
    decided(first, step, "rejected", 1)
    shows(stage, step, "now the number, and nothing waits any more",
          "Contact on tag | \ufffd112\ufffd | [Call] | [Discard] | [View]")
    touches(stage, step, "the person discards it", "press Discard")
    decided(second, step, "rejected", 1)
    screen_is_clear(stage, step)


@screen_scene
def dropped_dialog(stage, step):
    """The daemon's death takes its question off the screen"""
    lost = stage.tap("uri", "tel:112")
    shows(stage, step, "the client asks", "Contact on tag | ")
    step("the daemon is killed with -9", lambda: stage.daemon.is_killed())
    screen_is_clear(stage, step)
    decided(lost, step, "the daemon has died", 3)
    step("the daemon is started again", stage.daemon_comes)
    step("the client registers anew", lambda: stage.client.says("the NFC daemon is here"))
    again = stage.tap("uri", "tel:112")
    shows(stage, step, "the tag is held there once more", "Contact on tag | ")
    touches(stage, step, "the person calls", "press Call")
    decided(again, step, "granted", 0)


@screen_scene
def turned_screen(stage, step):
    """A question survives the turning of the screen"""
    tap = stage.tap("uri", "tel:112")
    shows(stage, step, "the client asks", "Contact on tag | ")
    touches(stage, step, "the screen is turned", "turn 90")
    shows(stage, step, "the question is still there", "Contact on tag | ")
    touches(stage, step, "the person calls", "press Call")
    handler_gets(stage, step, uri_record(5, "112"))
    decided(tap, step, "granted", 0)


@screen_scene
def same_target(stage, step):
    """Two questions about the same headset are both answered"""
    first = stage.tap("pair", *HEADSET)
    shows(stage, step, "the pairing comes first", "Headset | ")
    second = stage.tap("connect", *HEADSET)
    step("the connection waits", lambda: stage.client.says("| 1 more | "))
    touches(stage, step, "the person pairs", "press Yes")
    decided(first, step, "granted", 0)
    shows(stage, step, "now the connection", "Headset | ")
    touches(stage, step, "the person refuses it", "press No")
    decided(second, step, "rejected", 1)
    screen_is_clear(stage, step)


@screen_scene
def touch_banner(stage, step):
    """Every touch is shown by a banner, turned as the screen is"""
    tap = stage.tap("uri", "tel:112")
    step("the banner comes", lambda: stage.client.says("banner: turned by 0"))
    shows(stage, step, "and the question", "Contact on tag | ")
    step("the banner goes by itself", lambda: stage.client.says("banner: gone"))
    touches(stage, step, "the screen is turned", "turn 90")
    second = stage.tap("pair", *HEADSET)
    step("the next banner is turned, too", lambda: stage.client.says("banner: turned by 90"))
    step("and the pairing waits", lambda: stage.client.says("| 1 more | "))
    touches(stage, step, "the person discards the number", "press Discard")
    decided(tap, step, "rejected", 1)
    shows(stage, step, "now the pairing", "Headset | ")
    touches(stage, step, "the person refuses it", "press No")
    decided(second, step, "rejected", 1)


@screen_scene
def released_client(stage, step):
    """The daemon releases the client, and takes it back when it comes again"""
    lost = stage.tap("uri", "tel:112")
    shows(stage, step, "the client asks", "Contact on tag | ")
    decided(stage.tap("release"), step, "done", 0)
    decided(lost, step, "canceled", 2)
    screen_is_clear(stage, step)
    decided(stage.tap("empty"), step, "no agent is registered", 3)
    step("the daemon is killed with -9", lambda: stage.daemon.is_killed())
    step("the daemon is started again", stage.daemon_comes)
    step("the client registers anew", lambda: stage.client.says("the NFC daemon is here"))
    tap = stage.tap("text", "Welcome")
    handler_gets(stage, step, text_record("Welcome"))
    decided(tap, step, "granted", 0)


@screen_scene
def second_client(stage, step):
    """A second client in the same session leaves again"""
    second = stage.start("second client", "nfc-ui", "--remote-control")
    step("it says why", lambda: second.says("nfc-ui: another nfc-ui runs in this session"))
    step("and leaves", lambda: second.leaves(2))
    tap = stage.tap("text", "Welcome")
    handler_gets(stage, step, text_record("Welcome"))
    decided(tap, step, "granted", 0)


@screen_scene
def activated_client(stage, step):
    """The session's bus starts a client for who calls it"""
    step("there is no client", lambda: (stage.client.is_killed(), stage.daemon.says("is gone")))
    decided(stage.tap("text", "Welcome"), step, "no agent is registered", 3)
    step("somebody calls for it", stage.activates_the_client)
    step("it registers with the daemon", lambda: stage.daemon.says("is registered"))
    tap = stage.tap("text", "Welcome")
    handler_gets(stage, step, text_record("Welcome"))
    decided(tap, step, "granted", 0)
    step("it leaves when it is told to", stage.ends_the_activated_client)
