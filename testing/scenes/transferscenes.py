# SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
# SPDX-License-Identifier: LGPL-2.1-or-later
"""Files that arrive."""

from scenes import HEADSET, answers, asks, decided, has_been_read, is_clear, is_dialed, scene, screen_scene

FIVE_MEGABYTES = "5000000"


@screen_scene
def received_file(stage, step):
    """A file of five megabytes arrives"""
    tap = stage.tap("receive", "beach.jpg", FIVE_MEGABYTES, "2500000")
    asks(stage, step, "the sheet tells what comes, and from whom", "Receiving file", "From Ada's phone")
    step("the megabytes are counted, and the time that is left", lambda: stage.client.says("/5 MB | 00:0"))
    decided(tap, step, "completed", 0)
    asks(stage, step, "the client tells that it is here", "File received", "From Ada's phone", "beach.jpg")
    goes_away(stage, step)


@scene
def opened_file(stage, step):
    """A file that is complete is opened by the desktop's application for it"""
    notes = stage.file("notes.txt", b"sun and sand")
    tap = stage.tap("receive", notes, "1000", "100000")
    decided(tap, step, "completed", 0)
    asks(stage, step, "the client tells that it is here", "File received", "notes.txt", "[Open]", "[Close]")
    answers(stage, step, "the user opens it", "Open")
    is_dialed(stage, step, notes)
    is_clear(stage, step)


@scene
def hidden_file(stage, step):
    """A file that the user has put away can be found again in the settings"""
    tap = stage.tap("receive", "film.mkv", FIVE_MEGABYTES, "100")
    asks(stage, step, "the sheet is there", "Receiving file", "film.mkv")
    answers(stage, step, "the user puts it away", "Done")
    is_clear(stage, step)
    settings = stage.settings_come()

    def offers_it():
        while "[Show files that arrive]" not in settings.lines[-1]:
            settings.hears("press nothing")
            settings.says("screen: ")
    step("the settings offer to show it", offers_it)
    step("the user wants that", lambda: settings.hears("press Show files that arrive"))
    asks(stage, step, "the sheet is back", "Receiving file", "film.mkv")
    answers(stage, step, "the user cancels it", "Cancel")
    decided(tap, step, "canceled", 2)
    is_clear(stage, step)


@scene
def canceled_file(stage, step):
    """A file is canceled while it arrives"""
    tap = stage.tap("receive", "film.mkv", FIVE_MEGABYTES, "100")
    asks(stage, step, "the client tells what comes, and from whom", "Receiving file", "From Ada's phone", "film.mkv")
    answers(stage, step, "the user cancels it", "Cancel")
    decided(tap, step, "canceled", 2)
    is_clear(stage, step)


@scene
def abandoned_file(stage, step):
    """The sender gives up in the middle of a file"""
    tap = stage.tap("receive", "film.mkv", FIVE_MEGABYTES, "2500000", "--cancel-after", "4000000")
    asks(stage, step, "the client tells what comes, and from whom", "Receiving file", "From Ada's phone")
    decided(tap, step, "canceled", 2)
    asks(stage, step, "the client tells that it did not come", "File not received", "film.mkv")
    has_been_read(stage, step, "Close")
    is_clear(stage, step)


@scene
def question_during_transfer(stage, step):
    """A question comes before a file that arrives, and the file comes back after it"""
    tap = stage.tap("receive", "film.mkv", FIVE_MEGABYTES, "100")
    asks(stage, step, "the sheet is there", "Receiving file", "film.mkv")
    pairing = stage.tap("pair", *HEADSET)
    asks(stage, step, "the question is in front", "Pair with Headset?")
    answers(stage, step, "the user pairs", "Pair")
    decided(pairing, step, "granted", 0)
    asks(stage, step, "the sheet is back", "Receiving file", "film.mkv")
    answers(stage, step, "the user cancels it", "Cancel")
    decided(tap, step, "canceled", 2)
    is_clear(stage, step)


@scene
def file_behind_question(stage, step):
    """A file that begins to arrive does not cover a question"""
    pairing = stage.tap("pair", *HEADSET)
    asks(stage, step, "the client asks", "Pair with Headset?")
    tap = stage.tap("receive", "notes.txt", "1000", "100000")
    decided(tap, step, "completed", 0)
    step("what became of the file waits", lambda: stage.face.counts(1))
    answers(stage, step, "the user pairs", "Pair")
    decided(pairing, step, "granted", 0)
    asks(stage, step, "now the file", "File received", "notes.txt")
    goes_away(stage, step)


@scene
def two_files(stage, step):
    """Two files arrive at once, and the daemon dies"""
    first = stage.tap("receive", "one.txt", FIVE_MEGABYTES, "100")
    asks(stage, step, "the first sheet comes", "one.txt")
    second = stage.tap("receive", "two.txt", FIVE_MEGABYTES, "100")
    asks(stage, step, "the second sheet comes above it", "two.txt")
    step("the daemon is killed with -9", lambda: stage.daemon.is_killed())
    step("the client notices", lambda: stage.client.says("the NFC daemon has left"))
    is_clear(stage, step)
    decided(first, step, "the daemon has died", 3)
    decided(second, step, "the daemon has died", 3)


def goes_away(stage, step):
    answers(stage, step, "the user has seen it", "Close")
    is_clear(stage, step)
