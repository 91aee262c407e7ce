# SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
# SPDX-License-Identifier: LGPL-2.1-or-later
"""Files that arrive, on the screen."""

from scenes import decided
from screen import screen_is_clear, screen_scene, shows, touches

FIVE_MEGABYTES = "5000000"


@screen_scene
def received_file(stage, step):
    """A file of five megabytes arrives"""
    tap = stage.tap("receive", "beach.jpg", FIVE_MEGABYTES, "2500000")
    shows(stage, step, "the sheet tells what comes, and from whom", "Receiving file | From Ada's phone | ")
    step("the megabytes are counted, and the time that is left", lambda: stage.client.says("/5 MB | 00:0"))
    step("all of it is here", lambda: stage.client.says("5/5 MB"))
    decided(tap, step, "completed", 0)
    touches(stage, step, "the person closes the sheet", "press Done")
    screen_is_clear(stage, step)


@screen_scene
def canceled_file(stage, step):
    """A file is canceled while it arrives"""
    tap = stage.tap("receive", "film.mkv", FIVE_MEGABYTES, "100")
    shows(stage, step, "the sheet tells what comes, and from whom", "Receiving file | From Ada's phone | ")
    touches(stage, step, "the person cancels it", "press Cancel")
    decided(tap, step, "canceled", 2)
    screen_is_clear(stage, step)


@screen_scene
def abandoned_file(stage, step):
    """The sender gives up in the middle of a file"""
    tap = stage.tap("receive", "film.mkv", FIVE_MEGABYTES, "2500000", "--cancel-after", "4000000")
    shows(stage, step, "the sheet tells what comes, and from whom", "Receiving file | From Ada's phone | ")
    step("the megabytes are counted", lambda: stage.client.says("/5 MB"))
    decided(tap, step, "canceled", 2)
    screen_is_clear(stage, step)


@screen_scene
def two_files(stage, step):
    """Two files arrive at once, and the daemon dies"""
    first = stage.tap("receive", "one.txt", FIVE_MEGABYTES, "100")
    step("the first sheet comes", lambda: stage.client.says("one.txt"))
    second = stage.tap("receive", "two.txt", FIVE_MEGABYTES, "100")
    step("the second sheet comes above it", lambda: stage.client.says("two.txt"))
    step("the daemon is killed with -9", lambda: stage.daemon.is_killed())
    screen_is_clear(stage, step)
    decided(first, step, "the daemon has died", 3)
    decided(second, step, "the daemon has died", 3)
