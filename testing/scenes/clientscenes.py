# SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
# SPDX-License-Identifier: LGPL-2.1-or-later
"""The client itself: questions that wait, a daemon that leaves, a screen that turns."""

from scenes import (
    HEADSET, OTHER_HEADSET, answers, asks, decided, handler_gets, handler_hears_nothing, has_been_read, is_clear, scene,
    screen_scene, text_record, uri_record)

LINK = "uri", "https://www.example.org/"


@scene
def waiting_questions(stage, step):
    """Two questions are answered one after the other, in their order"""
    first = stage.tap("pair", *HEADSET)
    asks(stage, step, "the pairing comes first", "Pair with Headset?")
    second = stage.tap("uri", "tel:112")
    step("another one waits, visibly", lambda: stage.face.counts(1))
    answers(stage, step, "the user gives up the first", "Cancel")
    decided(first, step, "rejected", 1)
    asks(stage, step, "now the number", "Contact on tag", "112")
    answers(stage, step, "the user discards it", "Discard")
    decided(second, step, "rejected", 1)
    is_clear(stage, step)


@scene
def text_behind_question(stage, step):
    """A text that nobody needs to be asked about waits for the question before it"""
    first = stage.tap("pair", *HEADSET)
    asks(stage, step, "the client asks", "Pair with Headset?")
    second = stage.tap("text", "Welcome")
    step("the text waits, visibly", lambda: stage.face.counts(1))
    answers(stage, step, "the user pairs", "Pair")
    decided(first, step, "granted", 0)
    handler_gets(stage, step, text_record("Welcome"))
    decided(second, step, "granted", 0)


@scene
def same_target(stage, step):
    """Two questions about the same headset are both answered, each with its own answer"""
    first = stage.tap("pair", *HEADSET)
    asks(stage, step, "the pairing comes first", "Pair with Headset?")
    second = stage.tap("connect", *HEADSET)
    step("the connection waits", lambda: stage.face.counts(1))
    answers(stage, step, "the user pairs", "Pair")
    decided(first, step, "granted", 0)
    asks(stage, step, "now the connection", "Connect to Headset?")
    answers(stage, step, "the user gives it up", "Cancel")
    decided(second, step, "rejected", 1)
    is_clear(stage, step)


@scene
def too_many_questions(stage, step):
    """Five questions wait at most; a further one is rejected at once"""
    first = stage.tap("pair", *HEADSET)
    asks(stage, step, "the client asks", "Pair with Headset?")
    waiting = []
    for number in range(1, 6):
        waiting.append(stage.tap("uri", f"tel:{number}"))
        step("another one waits", lambda: stage.face.counts(number))
    decided(stage.tap("uri", "tel:6"), step, "rejected", 1)
    answers(stage, step, "the user gives up the first", "Cancel")
    decided(first, step, "rejected", 1)
    for number, tap in enumerate(waiting, 1):
        asks(stage, step, "the next one", "Contact on tag", str(number))
        answers(stage, step, "the user discards it", "Discard")
        decided(tap, step, "rejected", 1)
    is_clear(stage, step)


@scene
def newer_question(stage, step):
    """Of two questions of one kind about one device only the newer waits"""
    first = stage.tap("pair", *OTHER_HEADSET)
    asks(stage, step, "the client asks", "Pair with Loudspeaker?")
    older = stage.tap("pair", *HEADSET, "1234")
    step("another one waits", lambda: stage.face.counts(1))
    newer = stage.tap("pair", *HEADSET, "5678")
    decided(older, step, "rejected", 1)
    answers(stage, step, "the user gives up the first", "Cancel")
    decided(first, step, "rejected", 1)
    asks(stage, step, "now the newer", "Pair with Headset?", "PIN: 5678")
    answers(stage, step, "the user pairs", "Pair")
    decided(newer, step, "granted", 0)
    is_clear(stage, step)


@scene
def started_daemon(stage, step):
    """The bus starts the daemon for a client that misses it"""
    step("there is no daemon, and no client", lambda: (stage.client.is_killed(), stage.daemon.is_killed()))
    decided(stage.tap("empty"), step, "no simulated daemon", 3)
    stage.lets_the_bus_start_the_daemon()
    step("a client comes, and with it the daemon", stage.client_comes)
    tap = stage.tap("disconnect", *HEADSET)
    asks(stage, step, "the client asks", "Disconnect?")
    answers(stage, step, "the user disconnects", "Disconnect")
    decided(tap, step, "granted", 0)
    step("the user closes the client", lambda: stage.client.hears_the_end())
    step("the client has left in good order", lambda: stage.client.leaves())
    decided(stage.tap("crash"), step, "done", 0)


@scene
def killed_daemon(stage, step):
    """The daemon dies in mid request and comes back"""
    lost = stage.tap(*LINK)
    asks(stage, step, "the client asks", "Web link on tag")
    step("the daemon is killed with -9", lambda: stage.daemon.is_killed())
    step("the client notices", lambda: stage.client.says("the NFC daemon has left"))
    is_clear(stage, step)
    decided(lost, step, "the daemon has died", 3)
    step("the daemon is started again", stage.daemon_comes)
    step("the client registers anew", lambda: stage.client.says("the NFC daemon is here"))
    again = stage.tap(*LINK)
    asks(stage, step, "the tag is held there once more", "Web link on tag")
    answers(stage, step, "the user views it", "View")
    handler_gets(stage, step, uri_record(2, "example.org/"))
    decided(again, step, "granted", 0)


@scene
def leaving_client(stage, step):
    """The client leaves with requests open"""
    link = stage.tap(*LINK)
    asks(stage, step, "the client asks about a tag", "Web link on tag")
    pairing = stage.tap("pair", *HEADSET)
    step("and a pairing waits", lambda: stage.face.counts(1))
    step("the user closes the client", lambda: stage.client.hears_the_end())
    decided(link, step, "canceled", 2)
    decided(pairing, step, "canceled", 2)
    step("the client has left in good order", lambda: stage.client.leaves())
    decided(stage.tap("empty"), step, "no agent is registered", 3)


@scene
def killed_client(stage, step):
    """The client is killed with a request open"""
    tap = stage.tap("share-selection")
    asks(stage, step, "the client asks", "Choose what to share")
    step("the client is killed with -9", lambda: stage.client.is_killed())
    decided(tap, step, "canceled", 2)
    step("a new client comes", stage.client_comes)
    empty = stage.tap("empty")
    asks(stage, step, "an empty tag is told to it", "Empty tag")
    has_been_read(stage, step)
    decided(empty, step, "granted", 0)


@scene
def released_client(stage, step):
    """The daemon releases the client, and takes it back when it comes again"""
    lost = stage.tap(*LINK)
    asks(stage, step, "the client asks", "Web link on tag")
    decided(stage.tap("release"), step, "done", 0)
    decided(lost, step, "canceled", 2)
    step("the client notices", lambda: stage.client.says("the NFC daemon has left"))
    is_clear(stage, step)
    decided(stage.tap("empty"), step, "no agent is registered", 3)
    step("the daemon is killed with -9", lambda: stage.daemon.is_killed())
    step("the daemon is started again", stage.daemon_comes)
    step("the client registers anew", lambda: stage.client.says("the NFC daemon is here"))
    tap = stage.tap("text", "Welcome")
    handler_gets(stage, step, text_record("Welcome"))
    decided(tap, step, "granted", 0)


@screen_scene
def turned_screen(stage, step):
    """A question survives the turning of the screen"""
    tap = stage.tap(*LINK)
    asks(stage, step, "the client asks", "Web link on tag")
    step("the screen is turned", lambda: stage.client.hears("turn 90"))
    asks(stage, step, "the question is still there", "Web link on tag")
    answers(stage, step, "the user views it", "View")
    handler_gets(stage, step, uri_record(2, "example.org/"))
    decided(tap, step, "granted", 0)


@screen_scene
def touch_banner(stage, step):
    """Every touch is shown by a banner, turned as the screen is"""
    tap = stage.tap(*LINK)
    step("the banner comes", lambda: stage.client.says("banner: turned by 0"))
    asks(stage, step, "and the question", "Web link on tag")
    step("the banner goes by itself", lambda: stage.client.says("banner: gone"))
    step("the screen is turned", lambda: stage.client.hears("turn 90"))
    second = stage.tap("pair", *HEADSET)
    step("the next banner is turned, too", lambda: stage.client.says("banner: turned by 90"))
    step("and the pairing waits", lambda: stage.client.says("1 more question | "))
    answers(stage, step, "the user discards the link", "Discard")
    decided(tap, step, "rejected", 1)
    asks(stage, step, "now the pairing", "Pair with Headset?")
    answers(stage, step, "the user gives it up", "Cancel")
    decided(second, step, "rejected", 1)


@scene
def second_client(stage, step):
    """A second client in the same session leaves again"""
    second = stage.start("second client", "nfc-ui", *stage.face.options)
    step("it says why", lambda: second.says(": another nfc-ui runs in this session"))
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


@scene
def locked_session(stage, step):
    """While the session is locked nothing is asked, and nothing goes unasked; a question comes after unlocking"""
    session = stage.session_can_be_locked()
    stage.client_comes_again()
    step("the session is locked", lambda: session(True))
    questions = stage.wire.questions
    tap = stage.tap("text", "Welcome")
    step("a tag touches the phone", lambda: stage.wire.hears_more_than(questions + 1, until=lambda: False))
    handler_hears_nothing(stage, step)
    step("the session is unlocked", lambda: session(False))
    asks(stage, step, "now the client asks", "Text on tag", "Welcome")
    answers(stage, step, "the user views it", "View")
    handler_gets(stage, step, text_record("Welcome"))
    decided(tap, step, "granted", 0)
