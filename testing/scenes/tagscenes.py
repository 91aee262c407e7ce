# SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
# SPDX-License-Identifier: LGPL-2.1-or-later
"""Tags on the screen: what is asked about them, and who gets what they hold."""

from scenes import decided, handler_gets, text_record, uri_record
from screen import (
    handler_hears_nothing, screen_is_clear, screen_scene, shows, touches, wants_to_be_asked)

STORE_LINK = "tavix.com:ruvostore:link"
CHANGE = "press Choose another application"
TRACKER = "com.tavix.ApplicationTracker"
TRACKER_PATH = "/com/tavix/ApplicationTracker"


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
def asked_link(stage, step):
    """Who wants to be asked sees the web link first"""
    wants_to_be_asked(stage, step)
    tap = stage.tap("uri", "https://www.example.org/nfc")
    shows(stage, step, "the link is shown as it is",
          "Web link on tag | https://www.example.org/nfc | [View] | [Discard]")
    touches(stage, step, "the person views it", "press View")
    handler_gets(stage, step, uri_record(2, "example.org/nfc"))
    step("then the application comes to the front", lambda: stage.handler.says("launched"))
    decided(tap, step, "granted", 0)
    screen_is_clear(stage, step)


@screen_scene
def discarded_link(stage, step):
    """Who wants to be asked can refuse a web link"""
    wants_to_be_asked(stage, step)
    tap = stage.tap("uri", "http://ads.example.com/win")
    shows(stage, step, "the client asks", "Web link on tag | http://ads.example.com/win | ")
    touches(stage, step, "the person discards it", "press Discard")
    decided(tap, step, "rejected", 1)
    screen_is_clear(stage, step)
    handler_hears_nothing(stage, step)


@screen_scene
def asked_text(stage, step):
    """Plain text is shown before an application gets it"""
    wants_to_be_asked(stage, step)
    tap = stage.tap("text", "Welcome to the museum")
    shows(stage, step, "the text is shown", "Text on tag | Welcome to the museum | [View] | [Discard]")
    touches(stage, step, "the person views it", "press View")
    handler_gets(stage, step, text_record("Welcome to the museum"))
    decided(tap, step, "granted", 0)
    screen_is_clear(stage, step)


@screen_scene
def unasked_text(stage, step):
    """Who does not want to be asked gets plain text at once"""
    tap = stage.tap("text", "Welcome")
    handler_gets(stage, step, text_record("Welcome"))
    decided(tap, step, "granted", 0)


@screen_scene
def asked_contact(stage, step):
    """A contact card is shown by its name, and its file is gone with the question"""
    card = b"BEGIN:VCARD\r\nVERSION:3.0\r\nN:Byron;Ada;;;\r\nFN:Ada Byron\r\nEND:VCARD\r\n"
    stage.notebook_comes()
    tap = stage.tap("mime", "text/x-vcard", stage.file("ada.vcf", card))
    shows(stage, step, "two applications could take it: the client asks",
          "Contact on tag | Ada Byron | [View] | [Discard]")

    def is_private():
        modes = [oct(file.stat().st_mode & 0o777) for file in stage.clients_files.iterdir()]
        assert modes == ["0o600"], modes
    step("the card's file is for this person alone", is_private)
    touches(stage, step, "the person views it", "press View")
    step("the first application gets the card",
         lambda: stage.notebook.says(f": {mime_record('text/x-vcard', card).hex()}"))
    decided(tap, step, "granted", 0)
    screen_is_clear(stage, step)

    def is_gone():
        left = list(stage.clients_files.iterdir())
        assert not left, left
    step("the card's file is gone", is_gone)
    handler_hears_nothing(stage, step)


@screen_scene
def application_in_front(stage, step):
    """The application that the person looks at gets a contact card at once"""
    stage.notebook_comes()
    ohm = stage.stands_in("org.freedesktop.ohm", "org.freedesktop.ohm", TRACKER_PATH, TRACKER)
    ohm.answers(TRACKER_PATH, TRACKER, "Subscribe", "", "sssu", f"ret = ('', '', '', {stage.handler.pid})")
    ohm.answers(TRACKER_PATH, TRACKER, "Unsubscribe", "i", "", "")
    card = b"BEGIN:VCARD\r\nVERSION:3.0\r\nFN:Ada\r\nEND:VCARD\r\n"
    tap = stage.tap("mime", "text/x-vcard", stage.file("ada.vcf", card))
    handler_gets(stage, step, mime_record("text/x-vcard", card))
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
    shows(stage, step, "the client names it", "Tag content | Open with Tag Reader? | ")
    touches(stage, step, "the person opens it", "press Open")
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
def told_malformed_tag(stage, step):
    """A tag whose content is malformed is told about"""
    tap = stage.tap("malformed")
    shows(stage, step, "the client says so", "Tag not supported | This tag cannot be read. | [OK]")
    touches(stage, step, "the person has read it", "press OK")
    decided(tap, step, "announced", 0)
    screen_is_clear(stage, step)


@screen_scene
def told_tag_that_nobody_takes(stage, step):
    """What no application takes is told about, a link that nothing opens as well"""
    step("nobody takes tags any more", stage.nobody_takes_tags)
    for words, arguments in [("a typeface", ("mime", "font/ttf", stage.file("letters.ttf", b"\0\1\0\0"))),
                             ("a link of a scheme of its own", ("uri", "nobody-opens:this"))]:
        tap = stage.tap(*arguments)
        shows(stage, step, f"the client says so of {words}", "Tag not supported | This tag cannot be read. | [OK]")
        touches(stage, step, "the person has read it", "press OK")
        decided(tap, step, "rejected", 1)
        screen_is_clear(stage, step)


# Where the person goes at a question that two applications could answer, and what the daemon learns.
WAYS = [
    ("discards", ["press Discard"], "rejected", 1),
    ("closes the window", ["close"], "rejected", 1),
    ("opens the list, goes back, discards", [CHANGE, "escape", "press Discard"], "rejected", 1),
    ("opens the list, goes back twice", [CHANGE, "escape", "escape"], "rejected", 1),
    ("opens the list twice, goes back each time", [CHANGE, "escape", CHANGE, "escape", "press Discard"], "rejected", 1),
    ("opens the list, closes the window", [CHANGE, "close"], "rejected", 1),
    ("opens the list, confirms what is selected", [CHANGE, "press OK"], "granted", 0),
    ("opens the list, goes back, opens", [CHANGE, "escape", "press Open"], "granted", 0),
    ("opens the list, selects, goes back, opens", [CHANGE, "select Tag Reader", "escape", "press Open"], "granted", 0),
    ("opens", ["press Open"], "granted", 0),
]


@screen_scene
def every_way_out(stage, step):
    """Whatever way a person takes at a question, it ends in one answer"""
    stage.notebook_comes()
    for number, (words, commands, outcome, code) in enumerate(WAYS):
        tap = stage.tap("mime", "application/x-notes", stage.file("notes", bytes([number])))
        shows(stage, step, "the client asks", "Tag content | Open with Notebook? | ")
        takes_the_way(stage, step, f"the person {words}", commands)
        decided(tap, step, outcome, code)
        screen_is_clear(stage, step)
    step("each answer was the only one", stage.wire.all_answered_once)

    def granted_only():
        for number, (words, _, outcome, _) in enumerate(WAYS):
            data = mime_record("application/x-notes", bytes([number])).hex()
            got = any(line.endswith(f": {data}") for line in stage.notebook.lines)
            assert got == (outcome == "granted"), f"{words}: {stage.notebook.lines}"
    step("the notebook has got what was granted, nothing else", granted_only)


def takes_the_way(stage, step, words, commands):
    """Touches one thing after the other, each when the one before has shown its effect."""
    def goes():
        for command in commands[:-1]:
            stage.client.hears(command)
            stage.client.says("screen: Tag content" if command == "escape" else "screen: Choose application")
        stage.client.hears(commands[-1])
    step(words, goes)
