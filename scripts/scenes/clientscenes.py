# SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
# SPDX-License-Identifier: LGPL-2.1-or-later
"""The client itself: questions that wait, a daemon that leaves, a screen that turns."""

from scenes import HEADSET, decided, handler_gets, uri_record
from screen import screen_is_clear, screen_scene, shows, touches


@screen_scene
def queued_dialogs(stage, step):
    """Two questions for the same tag are both answered, in their order"""
    first = stage.tap("pair", *HEADSET)
    shows(stage, step, "the pairing comes first", "Headset | ")
    second = stage.tap("uri", "tel:112")
    touches(stage, step, "the person says no", "press No")
    decided(first, step, "rejected", 1)
    shows(stage, step, "now the number", "Contact on tag | ")
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
