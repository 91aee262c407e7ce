# SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
# SPDX-License-Identifier: LGPL-2.1-or-later
"""The scenes that are played on the screen: what is shown is read aloud, and touched, by the client's --read-aloud."""

from scenes import HEADSET, SCENES, decided, handler_gets, text_record, uri_record

STORE_LINK = "tavix.com:ruvostore:link"


def screen_scene(function):
    """Adds a function to the demo; the client has a screen in it."""
    function.face = "--read-aloud"
    SCENES.append(function)
    return function


def shows(stage, step, words, text):
    step(words, lambda: stage.client.says(f"screen: {text}"))


def touches(stage, step, words, command):
    step(words, lambda: stage.client.hears(command))


def screen_is_clear(stage, step):
    shows(stage, step, "the screen is clear again", "nothing")


def mime_record(kind, data):
    return bytes([0xD2, len(kind), len(data)]) + kind.encode() + data


def external_record(kind, data):
    return bytes([0xD4, len(kind), len(data)]) + kind.encode() + data


@screen_scene
def unasked_link(stage, step):
    """Who does not want to be asked gets a web link at once"""
    tap = stage.tap("uri", "https://www.example.org/nfc")
    handler_gets(stage, step, uri_record(2, "example.org/nfc"))
    decided(tap, step, "granted", 0)


@screen_scene
def called_number(stage, step):
    """A phone number is asked about, and called"""
    tap = stage.tap("uri", "tel:+15550100")
    shows(stage, step, "the number is shown, left to right in any language",
          "Contact on tag | \ufffd+15550100\ufffd | [Call] | [Discard] | [View]")
    touches(stage, step, "the person calls", "press Call")
    handler_gets(stage, step, uri_record(5, "+15550100"))
    decided(tap, step, "granted", 0)
    screen_is_clear(stage, step)


@screen_scene
def viewed_message(stage, step):
    """A text message is viewed instead of sent"""
    tap = stage.tap("uri", "sms:+15550100?body=Hi%20there")
    shows(stage, step, "receiver and text are shown",
          "Text message on tag | To: \ufffd+15550100\ufffd / Hi there | [Send] | [Discard] | [View]")
    touches(stage, step, "the person only views it", "press View")
    handler_gets(stage, step, uri_record(0, "sms:+15550100?body=Hi%20there"))
    decided(tap, step, "granted", 0)


@screen_scene
def switched_application(stage, step):
    """Unknown data goes to the second of two applications"""
    tap = stage.tap("mime", "application/x-notes", stage.file("notes", b"\x00\x01\x02"))
    question = "Tag content | Open with Notebook? | "
    shows(stage, step, "the first is offered", question)
    touches(stage, step, "the person wants another", "press Choose another application")
    shows(stage, step, "both are listed", "Choose application | ")
    touches(stage, step, "the person goes back", "escape")
    shows(stage, step, "the question is still there", question)
    touches(stage, step, "wants another all the same", "press Choose another application")
    shows(stage, step, "both are listed again", "Choose application | ")
    touches(stage, step, "picks the tag reader", "select Tag Reader")
    touches(stage, step, "and confirms", "press OK")
    handler_gets(stage, step, mime_record("application/x-notes", b"\x00\x01\x02"))
    decided(tap, step, "granted", 0)
    screen_is_clear(stage, step)


@screen_scene
def discarded_data(stage, step):
    """Escape at a question discards what is on the tag"""
    tap = stage.tap("mime", "application/x-notes", stage.file("notes", b"x"))
    shows(stage, step, "the client asks", "Tag content | ")
    touches(stage, step, "the person goes back", "escape")
    decided(tap, step, "rejected", 1)
    screen_is_clear(stage, step)


@screen_scene
def opened_file(stage, step):
    """A picture on a tag is opened by the application that takes pictures"""
    picture = b"\x89PNG\r\n\x1a\n"
    tap = stage.tap("mime", "image/png", stage.file("sun.png", picture))
    shows(stage, step, "the client asks", "Tag content | ")
    touches(stage, step, "the person views it", "press View")
    handler_gets(stage, step, mime_record("image/png", picture))
    decided(tap, step, "granted", 0)


@screen_scene
def store_link(stage, step):
    """A link into the store is asked about without showing the link"""
    data = external_record(STORE_LINK, b"1234")
    tap = stage.tap("message", stage.file("store.ndef", data))
    shows(stage, step, "the client asks", "Store link on tag | [View] | [Discard]")
    touches(stage, step, "the person views it", "press View")
    handler_gets(stage, step, data)
    decided(tap, step, "granted", 0)


@screen_scene
def told_empty_tag(stage, step):
    """An empty tag is told about"""
    tap = stage.tap("empty")
    shows(stage, step, "the client says so", "Empty tag | There is nothing on this tag. | [OK]")
    touches(stage, step, "the person has read it", "press OK")
    decided(tap, step, "granted", 0)
    screen_is_clear(stage, step)


@screen_scene
def told_unsupported_tag(stage, step):
    """A tag that cannot be read is told about"""
    tap = stage.tap("unsupported")
    shows(stage, step, "the client says so", "Tag not supported | This tag cannot be read. | [OK]")
    touches(stage, step, "the person closes the window", "close")
    decided(tap, step, "announced", 0)
    screen_is_clear(stage, step)


@screen_scene
def paired_headset(stage, step):
    """A headset is paired on the screen"""
    tap = stage.tap("pair", *HEADSET, "1234")
    shows(stage, step, "the client names the headset", "Headset | The device you touched wants to connect over Bluetooth.")
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
