# SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
# SPDX-License-Identifier: LGPL-2.1-or-later
"""Devices and phones: pairing, sharing, handover."""

from scenes import (
    HEADSET, PEER, answers, asks, decided, goes_back, has_been_read, is_clear, scene, screen_scene)

WAITING = "Waiting for the other device."


@scene
def paired_headset(stage, step):
    """A headset is paired"""
    tap = stage.tap("pair", *HEADSET, "1234")
    asks(stage, step, "the client names the headset and its PIN", "Pair with Headset?",
         "After that, the device you touched can connect over Bluetooth.", "PIN: 1234")
    answers(stage, step, "the user pairs", "Pair")
    decided(tap, step, "granted", 0)
    is_clear(stage, step)


@scene
def refused_pairing(stage, step):
    """A headset of somebody else is not paired"""
    tap = stage.tap("pair", *HEADSET)
    asks(stage, step, "the client names the headset", "Pair with Headset?")
    answers(stage, step, "the user gives up", "Cancel")
    decided(tap, step, "rejected", 1)
    is_clear(stage, step)


@scene
def nameless_headset(stage, step):
    """A headset without a name is called by its address"""
    tap = stage.tap("pair", HEADSET[0], "", HEADSET[2])
    asks(stage, step, "the client asks", f"Pair with {HEADSET[0]}?")
    goes_back(stage, step)
    decided(tap, step, "rejected", 1)


@scene
def connected_headset(stage, step):
    """A headset is connected by one touch, and disconnected by the next"""
    connection = stage.tap("connect", *HEADSET)
    asks(stage, step, "the client names the headset", "Connect to Headset?",
         "The device you touched wants to connect over Bluetooth.")
    answers(stage, step, "the user connects", "Connect")
    decided(connection, step, "granted", 0)
    disconnection = stage.tap("disconnect", *HEADSET)
    asks(stage, step, "the client asks", "Disconnect?", "The phone ends the connection to Headset.", "[Disconnect]")
    answers(stage, step, "the user disconnects", "Disconnect")
    decided(disconnection, step, "granted", 0)
    is_clear(stage, step)


@scene
def refused_disconnection(stage, step):
    """A headset stays connected"""
    tap = stage.tap("disconnect", *HEADSET)
    asks(stage, step, "the client asks", "Disconnect?", "The phone ends the connection to Headset.")
    answers(stage, step, "the user gives up", "Cancel")
    decided(tap, step, "rejected", 1)


@scene
def shared_picture(stage, step):
    """A picture is shared: selected, permitted, handed over"""
    selection = stage.tap("share-selection")
    asks(stage, step, "the client asks what to share", "Choose what to share")
    answers(stage, step, "the user goes on", "Continue")
    decided(selection, step, "granted", 0)
    asks(stage, step, "and is asked to touch the other phone", "Touch to share")
    permission = stage.tap("share-permission", stage.file("beach.txt", b"sun and sand"))
    asks(stage, step, "the other phone is here: may it have the file?", "Share by touch?", f"To {PEER}", "beach.txt")
    answers(stage, step, "the user sends it", "Send")
    decided(permission, step, "granted", 0)
    handover = stage.tap("handover", "bluetooth")
    asks(stage, step, "the client waits for the other phone", "Sharing", WAITING)
    decided(handover, step, "completed", 0)
    asks(stage, step, "the phones are connected", f"Sharing with {PEER} continues over Bluetooth.")
    has_been_read(stage, step)
    is_clear(stage, step)


@scene
def shared_card(stage, step):
    """A contact is shared by its name"""
    stage.contact(7, b"BEGIN:VCARD\r\nVERSION:3.0\r\nN:Byron;Ada;;;\r\nFN:Ada Byron\r\nEND:VCARD\r\n")
    tap = stage.tap("share-permission", "contact:7")
    asks(stage, step, "the contact is named", "Share by touch?", "Ada Byron")
    answers(stage, step, "the user sends it", "Send")
    decided(tap, step, "granted", 0)
    is_clear(stage, step)


@scene
def shared_files(stage, step):
    """Three files are shared at once, and all of them are named"""
    files = [stage.file(name, b"x") for name in ("one.txt", "two.txt", "three.txt")]
    tap = stage.tap("share-permission", *files)
    asks(stage, step, "they are named", "Share by touch?", "one.txt", "two.txt", "three.txt")
    goes_back(stage, step)
    decided(tap, step, "rejected", 1)
    is_clear(stage, step)


@scene
def shared_nothing(stage, step):
    """Nothing, and what is not there, is refused and told about"""
    gone = stage.file("gone.txt", b"x") + ".orig"
    for words, resources, text in [("a list without anything", [], "There is nothing to send."),
                                   ("a file that has gone", [gone], "gone.txt.orig is no longer there."),
                                   ("a contact that has gone", ["contact:nobody"], "contact:nobody is no longer there.")]:
        tap = stage.shares(*resources)
        asks(stage, step, f"the client says so of {words}", "Nothing is sent", text)
        has_been_read(stage, step)
        step("the daemon gets a refusal", lambda: tap.says("rejected"))
        is_clear(stage, step)


@scene
def refused_selection(stage, step):
    """Nothing is selected for sharing"""
    tap = stage.tap("share-selection")
    asks(stage, step, "the client asks what to share", "Choose what to share")
    answers(stage, step, "the user gives up", "Cancel")
    decided(tap, step, "rejected", 1)
    is_clear(stage, step)


@scene
def unused_invitation(stage, step):
    """The other phone is not touched after all"""
    tap = stage.tap("share-selection")
    asks(stage, step, "the client asks what to share", "Choose what to share")
    answers(stage, step, "the user goes on", "Continue")
    decided(tap, step, "granted", 0)
    asks(stage, step, "and is asked to touch the other phone", "Touch to share")
    answers(stage, step, "the user gives up", "Cancel")
    is_clear(stage, step)


@scene
def canceled_handover(stage, step):
    """A handover that takes too long is canceled"""
    stage.daemon_is_slow()
    handover = stage.tap("handover", "bluetooth")
    asks(stage, step, "the client waits for the other phone", "Sharing", WAITING)
    answers(stage, step, "the user gives up", "Cancel")
    decided(handover, step, "canceled", 2)
    is_clear(stage, step)


@scene
def question_during_handover(stage, step):
    """A question in the middle of a handover comes before the wait"""
    stage.daemon_is_slow()
    handover = stage.tap("handover", "bluetooth")
    asks(stage, step, "the client waits for the other phone", "Sharing", WAITING)
    pairing = stage.tap("pair", *HEADSET)
    asks(stage, step, "the question is in front", "Pair with Headset?")
    answers(stage, step, "the user pairs", "Pair")
    decided(pairing, step, "granted", 0)
    decided(handover, step, "completed", 0)
    asks(stage, step, "then the handover is complete", f"Sharing with {PEER} continues over Bluetooth.")
    has_been_read(stage, step)
    is_clear(stage, step)


@scene
def named_peer(stage, step):
    """The phone that gets something is named as Bluetooth knows it"""
    stage.bluetooth_comes(PEER, "Ada's phone")
    permission = stage.tap("share-permission", stage.file("beach.txt", b"sun and sand"))
    asks(stage, step, "the question says who gets the file", "Share by touch?", "To Ada's phone",
         "beach.txt")
    answers(stage, step, "the user sends it", "Send")
    decided(permission, step, "granted", 0)
    handover = stage.tap("handover", "bluetooth")
    decided(handover, step, "completed", 0)
    asks(stage, step, "the phones are connected, by name", "Sharing with Ada's phone continues over Bluetooth.")
    has_been_read(stage, step)
    is_clear(stage, step)
