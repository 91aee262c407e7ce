# SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
# SPDX-License-Identifier: LGPL-2.1-or-later
"""Tags on a reader, which the daemon reads and writes through pcscd."""

from scenes import (
    HEADSET, answers, asks, decided, handler_gets, has_been_read, is_clear, reader_scene, text_record, uri_record)

ORGANIZATION = uri_record(4, "www.example.org/nfc")
MUSEUM = uri_record(4, "museum.example/")
BANK_CARD = bytes.fromhex("3b8e800180318066b08412016e01830090002e")


def is_taken_away(stage, step, tag, words="the tag is taken away"):
    """Returns what the tag holds."""
    left = []
    step(words, lambda: left.append(stage.leaves(tag)))
    return left[0][1]


def is_written_and_read_back(stage, step, kind):
    tap = stage.writes("uri", "https://museum.example/")
    tag = stage.holds(kind, ORGANIZATION)
    decided(tap, step, "written", 0)
    held = is_taken_away(stage, step, tag)

    def holds_the_link():
        assert MUSEUM in held, held.hex()
    step(f"it holds exactly these bytes: {MUSEUM.hex()}", holds_the_link)
    tag = stage.comes_later(kind, held)
    asks(stage, step, "held there once more, it is asked about", "Web link on tag", "https://museum.example/", "[View]")
    answers(stage, step, "the user views it", "View")
    handler_gets(stage, step, MUSEUM)
    is_taken_away(stage, step, tag)


@reader_scene
def read_link(stage, step):
    """A sticker with a web link is read, asked about, and opened"""
    tag = stage.holds("type2", ORGANIZATION)
    step("a tag touches the reader", stage.face.indicates_touch)
    asks(stage, step, "the link is shown as it is", "Web link on tag", "https://www.example.org/nfc", "[View]", "[Discard]")
    answers(stage, step, "the user views it", "View")
    handler_gets(stage, step, ORGANIZATION)
    step("the handler reads the link", lambda: stage.handler.says("record: uri https://www.example.org/nfc"))
    step("then the application comes to the front", lambda: stage.handler.says("launched"))
    is_clear(stage, step)
    held = is_taken_away(stage, step, tag)

    def is_as_it_was():
        assert ORGANIZATION in held, held.hex()
    step("it holds what it held", is_as_it_was)


@reader_scene
def read_text(stage, step):
    """A text on a tag of Type 4 goes to the only application for it"""
    tag = stage.holds("type4", text_record("Welcome"))
    handler_gets(stage, step, text_record("Welcome"))
    is_taken_away(stage, step, tag)


@reader_scene
def written_sticker(stage, step):
    """A sticker is written, read back, and opened"""
    is_written_and_read_back(stage, step, "type2")


@reader_scene
def written_card(stage, step):
    """A tag of Type 4 is written, read back, and opened"""
    is_written_and_read_back(stage, step, "type4")


@reader_scene
def empty_sticker(stage, step):
    """An empty sticker is told about"""
    tag = stage.holds("type2", b"")
    asks(stage, step, "the client says so", "Empty tag", "There is nothing on this tag.", "[OK]")
    has_been_read(stage, step)
    is_clear(stage, step)
    is_taken_away(stage, step, tag)


@reader_scene
def bank_card(stage, step):
    """A bank card is left alone"""
    card = stage.holds("card", BANK_CARD)
    step("the daemon says so", lambda: stage.daemon.says("is left alone", BANK_CARD.hex()))

    def gets_no_command():
        commands, _ = stage.leaves(card)
        assert commands == 0, commands
    step("it has got no command", gets_no_command)
    is_clear(stage, step)


@reader_scene
def headset(stage, step):
    """A headset is paired by its sticker"""
    address, name, _ = HEADSET
    stage.bluetooth_comes(address, name)
    kind = b"application/vnd.bluetooth.ep.oob"
    told = bytes.fromhex(address.replace(":", ""))[::-1] + bytes([len(name) + 1, 9]) + name.encode()
    payload = bytes([len(told) + 2, 0]) + told
    tag = stage.holds("type2", bytes([0xD2, len(kind), len(payload)]) + kind + payload)
    asks(stage, step, "the client names the headset", f"Pair with {name}?")
    answers(stage, step, "the user pairs", "Pair")
    step("Bluetooth knows it as paired", lambda: stage.bluetooth_has_paired(address))
    is_clear(stage, step)
    is_taken_away(stage, step, tag)
