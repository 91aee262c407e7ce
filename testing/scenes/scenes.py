# SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
# SPDX-License-Identifier: LGPL-2.1-or-later
"""What scenes are made of.

A scene is a function with a stage and a transcript; the first line of its docstring is its title. Every step says in
words what happens, and fails the scene when it does not. A scene is played with each of its faces.
"""

from faces import Screen, Terminal

SCENES = []
READER_SCENES = []

PEER = "00:1A:7D:DA:71:13"
HEADSET = ("00:16:41:7A:0F:11", "Headset", "0x240404")
OTHER_HEADSET = ("00:16:41:7A:0F:12", "Loudspeaker", "0x240414")


def scene(function):
    """Adds a scene that looks the same to the user on the screen and on the terminal."""
    function.faces = [Terminal, Screen]
    SCENES.append(function)
    return function


def screen_scene(function):
    """Adds a scene that only a screen has."""
    function.faces = [Screen]
    SCENES.append(function)
    return function


def terminal_scene(function):
    """Adds a scene that only a terminal has."""
    function.faces = [Terminal]
    SCENES.append(function)
    return function


def reader_scene(function):
    """Adds a scene with a reader instead of the simulated one."""
    function.faces = [Terminal, Screen]
    READER_SCENES.append(function)
    return function


def uri_record(code, rest, flags=0xD1):
    """A URI record as a tag holds it: the identifier code, then the rest of the URI."""
    payload = bytes([code]) + rest.encode()
    return bytes([flags, 1, len(payload)]) + b"U" + payload


def text_record(text, flags=0xD1):
    payload = b"\x02en" + text.encode()
    return bytes([flags, 1, len(payload)]) + b"T" + payload


def mime_record(kind, data):
    return bytes([0xD2, len(kind), len(data)]) + kind.encode() + data


def external_record(kind, data):
    return bytes([0xD4, len(kind), len(data)]) + kind.encode() + data


def asks(stage, step, words, *parts):
    """The client asks or tells something: each of these texts is in it, in this order."""
    step(words, lambda: stage.face.asks(*parts))


def answers(stage, step, words, answer):
    """The user presses the button of this text."""
    step(words, lambda: stage.face.hears(answer))


def goes_back(stage, step):
    step("the user goes back", stage.face.goes_back)


def has_been_read(stage, step, button="OK"):
    step("the user has read it", lambda: stage.face.has_been_read(button))


def is_clear(stage, step):
    step("nothing is asked any more", stage.face.is_clear)


def handler_gets(stage, step, data):
    step(f"the handler gets exactly these bytes: {data.hex()}",
         lambda: stage.handler.says(f": {data.hex()}"))


def handler_hears_nothing(stage, step):
    def heard_nothing():
        assert stage.handler.lines == ["waiting for tags"], stage.handler.lines
    step("the handler has heard nothing", heard_nothing)


def is_dialed(stage, step, uri):
    step(f"the desktop's application is started with {uri}", lambda: stage.dials(uri))


def decided(tap, step, outcome, code):
    """The end of every tap: nfctap tells what the daemon has learnt."""
    def ends():
        tap.says(outcome)
        tap.leaves(code)
    step(f"nfctap says: {outcome} (exit code {code})", ends)


def switches(stage, step, words, row, state, then=lambda: None):
    """Opens the settings, touches a switch there and closes them again, when that has come about."""
    settings = stage.settings_come()
    settings.hears(f"press {row}")
    step(words, lambda: settings.says(f"[{row}: {state}]"))
    then()
    settings.hears_the_end()
    settings.leaves()


def wants_to_be_asked(stage, step):
    switches(stage, step, "the user wants to be asked, in the settings", "Ask before opening what is on a tag", "on")
