# SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
# SPDX-License-Identifier: LGPL-2.1-or-later
"""What scenes on the screen have in common: what is shown is read aloud, and touched, by the client's --remote-control."""

from scenes import SCENES


def screen_scene(function):
    """Adds a function to the demo; the client has a screen in it."""
    function.face = "--remote-control"
    SCENES.append(function)
    return function


def shows(stage, step, words, text):
    step(words, lambda: stage.client.says(f"screen: {text}"))


def touches(stage, step, words, command):
    step(words, lambda: stage.client.hears(command))


def screen_is_clear(stage, step):
    shows(stage, step, "the screen is clear again", "nothing")


def handler_hears_nothing(stage, step):
    def heard_nothing():
        assert stage.handler.lines == ["waiting for tags"], stage.handler.lines
    step("the handler has heard nothing", heard_nothing)


def switches(stage, step, words, row, state):
    """Opens the settings, touches a switch there and closes them again."""
    settings = stage.settings_come()
    settings.hears(f"press {row}")
    step(words, lambda: settings.says(f"[{row}: {state}]"))
    settings.hears_the_end()
    settings.leaves()


def wants_to_be_asked(stage, step):
    switches(stage, step, "the person wants to be asked, in the settings", "Ask before opening what is on a tag", "on")
