# SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
# SPDX-License-Identifier: LGPL-2.1-or-later
"""Devices and phones on the screen: pairing, sharing, handover."""

from scenes import HEADSET, PEER, decided
from screen import screen_is_clear, screen_scene, shows, touches


@screen_scene
def paired_headset(stage, step):
    """A headset is paired on the screen"""
    tap = stage.tap("pair", *HEADSET, "1234")
    shows(stage, step, "the client names the headset",
          "Headset | The device you touched wants to connect over Bluetooth.")
    touches(stage, step, "the person says yes", "press Yes")
    decided(tap, step, "granted", 0)


@screen_scene
def refused_disconnection(stage, step):
    """A headset stays connected"""
    tap = stage.tap("disconnect", *HEADSET)
    shows(stage, step, "the client asks", "Disconnect? | Headset will be disconnected.")
    touches(stage, step, "the person says no", "press No")
    decided(tap, step, "rejected", 1)


@screen_scene
def shared_picture(stage, step):
    """A picture is shared: selected, permitted, handed over"""
    selection = stage.tap("share-selection")
    shows(stage, step, "the client asks what to share", "Choose what to share | ")
    touches(stage, step, "the person goes on", "press Continue")
    decided(selection, step, "granted", 0)
    shows(stage, step, "and is asked to touch the other phone", "Touch to share | ")
    permission = stage.tap("share-permission", stage.file("beach.txt", b"sun and sand"))
    shows(stage, step, "the other phone is here: may it have the file?",
          "Share by touch? | beach.txt will be sent to the device you touched.")
    touches(stage, step, "the person says yes", "press Yes")
    decided(permission, step, "granted", 0)
    handover = stage.tap("handover", "bluetooth")
    shows(stage, step, "the client waits for the other phone", "Sharing | Waiting for the other device. | [Cancel]")
    decided(handover, step, "completed", 0)
    screen_is_clear(stage, step)


@screen_scene
def shared_contact(stage, step):
    """A contact that does not exist is not shared"""
    tap = stage.tap("share-permission", "contact:nobody")
    shows(stage, step, "the client asks all the same", "Share by touch? | The contact ")
    touches(stage, step, "the person says no", "press No")
    decided(tap, step, "rejected", 1)
