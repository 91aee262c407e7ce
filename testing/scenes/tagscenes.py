# SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
# SPDX-License-Identifier: LGPL-2.1-or-later
"""Tags: what is asked about them, and who gets what they hold."""

from actor import Unmet
from scenes import (
    HEADSET, answers, asks, decided, external_record, goes_back, handler_gets, handler_hears_nothing, has_been_read, is_clear,
    is_dialed, mime_record, scene, screen_scene, terminal_scene, text_record, uri_record, wants_to_be_asked)

STORE_LINK = "tavix.com:ruvostore:link"
CHANGE = "press Choose another application"
TRACKER = "com.tavix.ApplicationTracker"
TRACKER_PATH = "/com/tavix/ApplicationTracker"


def notes(stage, content=b"\x00\x01\x02"):
    return "mime", "application/x-notes", stage.file("notes", content)


def lacks(lines, word):
    for line in lines:
        if word in line.lower():
            raise Unmet(f"it was said: {line}")


def handler_is_in_front(stage):
    """The user is looking at the handler application: a policy daemon says so."""
    ohm = stage.stands_in("org.freedesktop.ohm", "org.freedesktop.ohm", TRACKER_PATH, TRACKER)
    ohm.answers(TRACKER_PATH, TRACKER, "Subscribe", "", "sssu", f"ret = ('', '', '', {stage.handler.pid})")
    ohm.answers(TRACKER_PATH, TRACKER, "Unsubscribe", "i", "", "")
    stage.client_comes_again()


@scene
def accepted_link(stage, step):
    """A web link is asked about, and viewed"""
    tap = stage.tap("uri", "https://www.example.org/nfc")
    step("a tag touches the phone", stage.face.indicates_touch)
    asks(stage, step, "the link is shown as it is", "Web link on tag", "https://www.example.org/nfc", "[View]",
         "[Discard]")
    answers(stage, step, "the user views it", "View")
    handler_gets(stage, step, uri_record(2, "example.org/nfc"))
    step("the handler reads the link", lambda: stage.handler.says("record: uri https://www.example.org/nfc"))
    step("then the application comes to the front", lambda: stage.handler.says("launched"))
    decided(tap, step, "granted", 0)
    is_clear(stage, step)


@scene
def discarded_link(stage, step):
    """A web link is refused"""
    tap = stage.tap("uri", "http://ads.example.com/win")
    asks(stage, step, "the client asks", "Web link on tag", "http://ads.example.com/win")
    answers(stage, step, "the user discards it", "Discard")
    decided(tap, step, "rejected", 1)
    is_clear(stage, step)
    handler_hears_nothing(stage, step)


@scene
def link_for_application_in_front(stage, step):
    """The application that the user looks at gets a web link at once"""
    handler_is_in_front(stage)
    tap = stage.tap("uri", "https://www.example.org/nfc")
    handler_gets(stage, step, uri_record(2, "example.org/nfc"))
    decided(tap, step, "granted", 0)


@scene
def asked_text(stage, step):
    """Plain text is shown to a user who wants to be asked before an application gets it"""
    wants_to_be_asked(stage, step)
    tap = stage.tap("text", "Welcome to the museum")
    asks(stage, step, "the text is shown", "Text on tag", "Welcome to the museum", "[View]", "[Discard]")
    answers(stage, step, "the user views it", "View")
    handler_gets(stage, step, text_record("Welcome to the museum"))
    decided(tap, step, "granted", 0)
    is_clear(stage, step)


@scene
def unasked_text(stage, step):
    """Plain text goes to the only application for it when the user does not want to be asked"""
    tap = stage.tap("text", "Welcome")
    handler_gets(stage, step, text_record("Welcome"))
    decided(tap, step, "granted", 0)


@scene
def raw_message(stage, step):
    """A message of two records is asked about with both, and goes through untouched"""
    data = text_record("Museum", flags=0x91) + uri_record(3, "museum.example", flags=0x51)
    tap = stage.tap("message", stage.file("museum.ndef", data))
    asks(stage, step, "the client names both records", "Text on tag", "Also on this tag: http://museum.example", "Museum")
    answers(stage, step, "the user views them", "View")
    handler_gets(stage, step, data)
    step("then the handler is launched", lambda: stage.handler.says("launched"))
    decided(tap, step, "granted", 0)


@scene
def number_behind_text(stage, step):
    """A number behind a harmless text does not go along unasked"""
    data = text_record("Hello", flags=0x91) + uri_record(5, "*2767*3855#", flags=0x51)
    tap = stage.tap("message", stage.file("trap.ndef", data))
    asks(stage, step, "the client asks, and names the number", "Text on tag", "Also on this tag: tel:*2767*3855#", "Hello")
    answers(stage, step, "the user discards it", "Discard")
    decided(tap, step, "rejected", 1)
    handler_hears_nothing(stage, step)


@scene
def bytes_behind_message(stage, step):
    """A message with something behind its end is refused"""
    tap = stage.tap("message", stage.file("trailing.ndef", text_record("Hello") + uri_record(5, "112")))
    asks(stage, step, "the client says so", "Tag not supported", "The phone cannot read this tag.")
    has_been_read(stage, step)
    decided(tap, step, "rejected", 1)
    is_clear(stage, step)
    handler_hears_nothing(stage, step)


@scene
def suspicious_link(stage, step):
    """A link that hides where it leads is named as suspicious, also for the application that the user looks at"""
    handler_is_in_front(stage)
    tap = stage.tap("uri", "http://bank.example@evil.example/")
    asks(stage, step, "the client says where it leads", "Web link on tag", "Leads to evil.example",
         "This link is suspicious: it begins with a name that is not its destination.", "Not encrypted",
         "http://bank.example@evil.example/")
    answers(stage, step, "the user discards it", "Discard")
    decided(tap, step, "rejected", 1)
    handler_hears_nothing(stage, step)


@scene
def service_code(stage, step):
    """A service code is named as such, and cannot be called"""
    tap = stage.tap("uri", "tel:*2767*3855#")
    asks(stage, step, "the client warns", "Tag content",
         "This is a service code: it can change settings of the phone or of your contract.", "tel:*2767*3855#",
         "[Open]", "[Discard]")
    answers(stage, step, "the user discards it", "Discard")
    decided(tap, step, "rejected", 1)
    step("nothing is called", stage.dials_nothing)


@scene
def link_in_capitals(stage, step):
    """A link in capitals, behind blanks, is shown as any other, and forwarded untouched"""
    data = uri_record(0, "  HTTPS://www.example.org/NFC")
    tap = stage.tap("message", stage.file("capitals.ndef", data))
    asks(stage, step, "the client shows a web link", "Web link on tag", "https://www.example.org/NFC", "[View]")
    answers(stage, step, "the user views it", "View")
    handler_gets(stage, step, data)
    decided(tap, step, "granted", 0)


@scene
def number_in_capitals(stage, step):
    """A phone number whose scheme is in capitals is one"""
    tap = stage.tap("message", stage.file("capitals.ndef", uri_record(0, "TEL:+15550100")))
    asks(stage, step, "the client shows a number", "Contact on tag", "Phone number", "+15550100", "[Call]")
    answers(stage, step, "the user calls", "Call")
    is_dialed(stage, step, "tel:+15550100")
    decided(tap, step, "granted", 0)


@scene
def asked_contact(stage, step):
    """A contact card is shown by its name, and its file is gone with the question"""
    card = b"BEGIN:VCARD\r\nVERSION:3.0\r\nN:Byron;Ada;;;\r\nFN:Ada Byron\r\nEND:VCARD\r\n"
    stage.notebook_comes()
    tap = stage.tap("mime", "text/x-vcard", stage.file("ada.vcf", card))
    asks(stage, step, "two applications could take it: the client asks", "Contact on tag", "Ada Byron", "[View]",
         "[Discard]")

    def is_private():
        modes = [oct(file.stat().st_mode & 0o777) for file in stage.clients_files.iterdir()]
        assert modes == stage.face.card_files, modes
    step("the card's file, if the question needs one, is for this user alone", is_private)
    answers(stage, step, "the user views it", "View")
    step("the first application gets the card",
         lambda: stage.notebook.says(f": {mime_record('text/x-vcard', card).hex()}"))
    decided(tap, step, "granted", 0)
    is_clear(stage, step)

    def is_gone():
        left = list(stage.clients_files.iterdir())
        assert not left, left
    step("the card's file is gone", is_gone)
    handler_hears_nothing(stage, step)


@scene
def contact_of_another_type(stage, step):
    """A contact card of the newer type is asked about as one, and goes to the application that takes it"""
    wants_to_be_asked(stage, step)
    card = b"BEGIN:VCARD\r\nVERSION:4.0\r\nFN:Ada Byron\r\nEND:VCARD\r\n"
    tap = stage.tap("mime", "text/vcard", stage.file("ada.vcf", card))
    asks(stage, step, "the client shows a contact", "Contact on tag", "Ada Byron", "[View]", "[Discard]")
    answers(stage, step, "the user views it", "View")
    handler_gets(stage, step, mime_record("text/vcard", card))
    decided(tap, step, "granted", 0)


@scene
def contact_for_application_in_front(stage, step):
    """The application that the user looks at gets a contact card at once"""
    stage.notebook_comes()
    handler_is_in_front(stage)
    card = b"BEGIN:VCARD\r\nVERSION:3.0\r\nFN:Ada\r\nEND:VCARD\r\n"
    tap = stage.tap("mime", "text/x-vcard", stage.file("ada.vcf", card))
    handler_gets(stage, step, mime_record("text/x-vcard", card))
    decided(tap, step, "granted", 0)


@scene
def called_number(stage, step):
    """A phone number is called: the desktop's application gets it, the handler does not"""
    tap = stage.tap("uri", "tel:+15550100")
    asks(stage, step, "the number is shown", "Contact on tag", "+15550100", "[Discard]")
    answers(stage, step, "the user calls", "Call")
    is_dialed(stage, step, "tel:+15550100")
    step("and can be ended by signals", stage.dialer_can_be_ended)
    decided(tap, step, "granted", 0)
    is_clear(stage, step)
    handler_hears_nothing(stage, step)


@scene
def viewed_number(stage, step):
    """A phone number is viewed: the handler gets it, and nothing is called"""
    tap = stage.tap("uri", "tel:+15550100")
    asks(stage, step, "the number is shown", "Contact on tag", "+15550100")
    answers(stage, step, "the user only views it", "View")
    handler_gets(stage, step, uri_record(5, "+15550100"))
    decided(tap, step, "granted", 0)
    step("nothing is called", stage.dials_nothing)


@scene
def number_without_handler(stage, step):
    """Where no application takes numbers from tags, the user can call one or look at it"""
    step("nobody takes tags any more", stage.nobody_takes_tags)
    called = stage.tap("uri", "tel:+15550100")
    asks(stage, step, "the number is shown", "Contact on tag", "+15550100")
    answers(stage, step, "the user calls", "Call")
    is_dialed(stage, step, "tel:+15550100")
    decided(called, step, "granted", 0)
    viewed = stage.tap("uri", "tel:+15550101")
    asks(stage, step, "another number is shown", "Contact on tag", "+15550101")
    answers(stage, step, "the user only views it", "View")
    asks(stage, step, "and sees it, nothing else", "Contact on tag", "tel:+15550101", "[OK]")
    has_been_read(stage, step)
    decided(viewed, step, "granted", 0)
    is_clear(stage, step)


@screen_scene
def number_left_to_right(stage, step):
    """A number runs left to right in any language"""
    tap = stage.tap("uri", "tel:+15550100")
    asks(stage, step, "the number stands between marks",
         "Contact on tag | Phone number | \ufffd+15550100\ufffd | [Call] | [View] | [Discard]")
    goes_back(stage, step)
    decided(tap, step, "rejected", 1)


@scene
def sent_message(stage, step):
    """A text message is sent by the desktop's application"""
    tap = stage.tap("uri", "sms:+15550100?body=Hi%20there")
    asks(stage, step, "receiver and text are shown", "Text message on tag", "+15550100")
    answers(stage, step, "the user sends it", "Send")
    is_dialed(stage, step, "sms:+15550100?body=Hi%20there")
    decided(tap, step, "granted", 0)
    handler_hears_nothing(stage, step)


@scene
def viewed_message(stage, step):
    """A text message is viewed instead of sent"""
    tap = stage.tap("uri", "sms:+15550100?body=Hi%20there")
    asks(stage, step, "receiver and text are shown", "Text message on tag", "+15550100")
    answers(stage, step, "the user only views it", "View")
    handler_gets(stage, step, uri_record(0, "sms:+15550100?body=Hi%20there"))
    decided(tap, step, "granted", 0)


@scene
def other_link(stage, step):
    """A link that is neither to the web nor to a phone is shown beside the application that gets it"""
    tap = stage.tap("uri", "geo:48.2,16.3")
    asks(stage, step, "the client shows where it leads", "Tag content", "geo:48.2,16.3", "[Open]")
    answers(stage, step, "the user opens it", "Open")
    handler_gets(stage, step, uri_record(0, "geo:48.2,16.3"))
    decided(tap, step, "granted", 0)


@scene
def chosen_application(stage, step):
    """Unknown data goes to the second of two applications"""
    tap = stage.tap(*notes(stage))
    asks(stage, step, "the first is offered", "Tag content", "Notebook")
    step("the user picks the other", lambda: stage.face.chooses("Tag Reader"))
    handler_gets(stage, step, mime_record("application/x-notes", b"\x00\x01\x02"))
    decided(tap, step, "granted", 0)
    is_clear(stage, step)


@scene
def application_that_is_not_offered(stage, step):
    """An application that is not among those offered cannot be chosen, and no other gets the data instead"""
    tap = stage.tap(*notes(stage))
    asks(stage, step, "the first is offered", "Tag content", "Notebook")
    for stranger in ("3", "Dialer"):
        step(f"the user cannot choose '{stranger}'", lambda: stage.face.cannot_choose(stranger))
        asks(stage, step, "the client still asks", "Tag content", "Notebook")
    answers(stage, step, "the user discards it", "Discard")
    decided(tap, step, "rejected", 1)
    handler_hears_nothing(stage, step)
    is_clear(stage, step)


@screen_scene
def reconsidered_application(stage, step):
    """Going back from the list of applications leaves the question open"""
    tap = stage.tap(*notes(stage))
    question = "Tag content | "
    asks(stage, step, "the first is offered", question, "Open with Notebook? | ")
    answers(stage, step, "the user wants another", "Choose another application")
    asks(stage, step, "both are listed", "Choose application | ")
    goes_back(stage, step)
    asks(stage, step, "the question is still there", question)
    step("the user picks the other after all", lambda: stage.face.chooses("Tag Reader"))
    handler_gets(stage, step, mime_record("application/x-notes", b"\x00\x01\x02"))
    decided(tap, step, "granted", 0)


@scene
def discarded_data(stage, step):
    """Going back at a question discards what is on the tag"""
    tap = stage.tap(*notes(stage, b"x"))
    asks(stage, step, "the client asks", "Tag content")
    goes_back(stage, step)
    decided(tap, step, "rejected", 1)
    is_clear(stage, step)


@scene
def opened_file(stage, step):
    """A picture on a tag is opened by the application that takes pictures"""
    picture = b"\x89PNG\r\n\x1a\n"
    tap = stage.tap("mime", "image/png", stage.file("sun.png", picture))
    asks(stage, step, "the client says what it is", "Tag content", "image/png, 8 bytes")
    answers(stage, step, "the user opens it", "Open")
    handler_gets(stage, step, mime_record("image/png", picture))
    decided(tap, step, "granted", 0)


@scene
def store_link(stage, step):
    """A link into the store is asked about without showing the link, whoever made its type"""
    for kind in (STORE_LINK, "example.org:ruvostore:link"):
        data = external_record(kind, b"1234")
        tap = stage.tap("message", stage.file("store.ndef", data))
        asks(stage, step, f"the client asks about a {kind}", "Store link on tag", "Leads to the application store",
             "[View]", "[Discard]")
        answers(stage, step, "the user views it", "View")
        handler_gets(stage, step, data)
        decided(tap, step, "granted", 0)


@scene
def touched_twice(stage, step):
    """A tag that touches again while its question is open is asked about once"""
    link = "uri", "https://www.example.org/"
    first = stage.tap(*link)
    asks(stage, step, "the client asks", "Web link on tag")
    second = stage.tap(*link)
    step("the second touch is on its way", lambda: stage.wire.hears_more_than(3, until=lambda: False))
    other = stage.tap("pair", *HEADSET)
    step("only what comes behind it waits", lambda: stage.face.counts(1))
    answers(stage, step, "the user views it", "View")
    handler_gets(stage, step, uri_record(2, "example.org/"))
    decided(first, step, "granted", 0)
    decided(second, step, "granted", 0)
    asks(stage, step, "then the client asks about the headset", "Pair with Headset?")
    goes_back(stage, step)
    decided(other, step, "rejected", 1)
    is_clear(stage, step)

    def got_it_once():
        count = sum(uri_record(2, "example.org/").hex() in line for line in stage.handler.lines)
        assert count == 1, stage.handler.lines
    step("the handler has got it once", got_it_once)


@scene
def told_empty_tag(stage, step):
    """An empty tag is told about"""
    tap = stage.tap("empty")
    asks(stage, step, "the client says so", "Empty tag", "There is nothing on this tag.", "[OK]")
    has_been_read(stage, step)
    decided(tap, step, "granted", 0)
    is_clear(stage, step)


@scene
def told_unsupported_tag(stage, step):
    """A tag that cannot be read, or is malformed, is told about"""
    for fault in ("unsupported", "malformed"):
        tap = stage.tap(fault)
        asks(stage, step, f"the client says so of one that is {fault}", "Tag not supported", "The phone cannot read this tag.",
             "[OK]")
        has_been_read(stage, step)
        decided(tap, step, "announced", 0)
        is_clear(stage, step)


@screen_scene
def told_once(stage, step):
    """Three tags that cannot be read are told about once"""
    for _ in range(3):
        decided(stage.tap("unsupported"), step, "announced", 0)
    asks(stage, step, "the client says so", "Tag not supported")
    step("the user closes the window", lambda: stage.client.hears("close"))
    is_clear(stage, step)


@scene
def told_tag_that_nobody_takes(stage, step):
    """What no application takes is told about, a link that nothing opens as well"""
    step("nobody takes tags any more", stage.nobody_takes_tags)
    for words, arguments in [("a typeface", ("mime", "font/ttf", stage.file("letters.ttf", b"\0\1\0\0"))),
                             ("a link of a scheme of its own", ("uri", "nobody-opens:this"))]:
        tap = stage.tap(*arguments)
        asks(stage, step, f"the client says so of {words}", "Tag not supported", "The phone cannot read this tag.")
        has_been_read(stage, step)
        decided(tap, step, "rejected", 1)
        is_clear(stage, step)


@scene
def told_nothing_untrue(stage, step):
    """Nobody says that a handler has what it has not taken"""
    tap = stage.tap("uri", "https://www.example.org/nfc")
    asks(stage, step, "the client asks", "Web link on tag")
    step("the handler dies", stage.handler.is_killed)
    answers(stage, step, "the user views the link", "View")
    decided(tap, step, "granted", 0)
    step("the client says that nobody took it",
         lambda: stage.client.says("Calling NDEFData() for the handler fails: org.freedesktop.DBus.Error."))
    is_clear(stage, step)
    step("and nothing else", lambda: lacks(stage.client.lines, "delivered"))


@terminal_scene
def hostile_text(stage, step):
    """A tag's text cannot take over the terminal, nor look like the client's own words"""
    wants_to_be_asked(stage, step)
    tap = stage.tap("text", "\x1b[2Jgone\u202etxt\nWeb link on tag")
    step("control characters are shown as what they are not", lambda: stage.client.says("> \ufffd[2Jgone\ufffdtxt"))
    step("every line of it is marked", lambda: stage.client.says("> Web link on tag"))
    goes_back(stage, step)
    decided(tap, step, "rejected", 1)


# Where the user goes at a question that two applications could answer, and what the daemon learns.
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
    """Whatever way a user takes at a question, it ends in one answer"""
    stage.notebook_comes()
    for number, (words, commands, outcome, code) in enumerate(WAYS):
        tap = stage.tap(*notes(stage, bytes([number])))
        asks(stage, step, "the client asks", "Tag content | ", "Open with Notebook? | ")
        takes_the_way(stage, step, f"the user {words}", commands)
        decided(tap, step, outcome, code)
        is_clear(stage, step)
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
