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
def refused_pairing(stage, step):
    """A headset of somebody else is not paired"""
    tap = stage.tap("pair", *HEADSET)
    shows(stage, step, "the client names the headset", "Headset | ")
    touches(stage, step, "the person says no", "press No")
    decided(tap, step, "rejected", 1)
    screen_is_clear(stage, step)


@screen_scene
def connected_headset(stage, step):
    """A headset is connected by one touch, and disconnected by the next"""
    connection = stage.tap("connect", *HEADSET)
    shows(stage, step, "the client names the headset", "Headset | ")
    touches(stage, step, "the person says yes", "press Yes")
    decided(connection, step, "granted", 0)
    disconnection = stage.tap("disconnect", *HEADSET)
    shows(stage, step, "the client asks", "Disconnect? | Headset will be disconnected. | [Yes] | [No]")
    touches(stage, step, "the person says yes", "press Yes")
    decided(disconnection, step, "granted", 0)
    screen_is_clear(stage, step)


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


@screen_scene
def shared_card(stage, step):
    """A contact is shared by its name"""
    stage.contact(7, b"BEGIN:VCARD\r\nVERSION:3.0\r\nN:Byron;Ada;;;\r\nFN:Ada Byron\r\nEND:VCARD\r\n")
    tap = stage.tap("share-permission", "contact:7")
    shows(stage, step, "the contact is named", "Share by touch? | The contact Ada Byron will be sent")
    touches(stage, step, "the person says yes", "press Yes")
    decided(tap, step, "granted", 0)
    screen_is_clear(stage, step)


@screen_scene
def shared_files(stage, step):
    """Three files are shared at once"""
    files = [stage.file(name, b"x") for name in ("one.txt", "two.txt", "three.txt")]
    tap = stage.tap("share-permission", *files)
    shows(stage, step, "they are counted", "Share by touch? | 3 items will be sent")
    touches(stage, step, "the person goes back", "escape")
    decided(tap, step, "rejected", 1)
    screen_is_clear(stage, step)


@screen_scene
def refused_selection(stage, step):
    """Nothing is selected for sharing"""
    tap = stage.tap("share-selection")
    shows(stage, step, "the client asks what to share", "Choose what to share | ")
    touches(stage, step, "the person gives up", "press Cancel")
    decided(tap, step, "rejected", 1)
    screen_is_clear(stage, step)


@screen_scene
def unused_invitation(stage, step):
    """The other phone is not touched after all"""
    tap = stage.tap("share-selection")
    shows(stage, step, "the client asks what to share", "Choose what to share | ")
    touches(stage, step, "the person goes on", "press Continue")
    decided(tap, step, "granted", 0)
    shows(stage, step, "and is asked to touch the other phone", "Touch to share | ")
    touches(stage, step, "the person gives up", "press Cancel")
    screen_is_clear(stage, step)


@screen_scene
def canceled_handover(stage, step):
    """A handover that takes too long is canceled"""
    stage.daemon_is_slow()
    handover = stage.tap("handover", "bluetooth")
    shows(stage, step, "the client waits for the other phone", "Sharing | Waiting for the other device. | [Cancel]")
    touches(stage, step, "the person gives up", "press Cancel")
    decided(handover, step, "canceled", 2)
    screen_is_clear(stage, step)


@screen_scene
def named_peer(stage, step):
    """The phone that gets something is named as Bluetooth knows it"""
    stage.bluetooth_comes(PEER, "Ada's phone")
    permission = stage.tap("share-permission", stage.file("beach.txt", b"sun and sand"))
    shows(stage, step, "who gets the file stands above the question",
          "Ada's phone | Share by touch? | beach.txt will be sent to the device you touched.")
    touches(stage, step, "the person says yes", "press Yes")
    decided(permission, step, "granted", 0)
    handover = stage.tap("handover", "bluetooth")
    decided(handover, step, "completed", 0)
    shows(stage, step, "the phones are connected, by name", "Ada's phone | Sharing goes on over Bluetooth. | [OK]")
    touches(stage, step, "the person has read it", "press OK")
    screen_is_clear(stage, step)
