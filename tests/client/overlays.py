# SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
# SPDX-License-Identifier: LGPL-2.1-or-later
"""overlays.py PROGRAMS

Looks at the questions of nfc-ui, in the folder PROGRAMS, on a compositor with overlays: the user's application stays in
sight behind them, and out of reach. To be run by with-compositor with sway.
"""

import collections
import pathlib
import subprocess
import sys
import threading
import time
import unittest

PROGRAMS = pathlib.Path(sys.argv.pop())
PATIENCE = 60  # seconds, on a busy machine
OF_APPLICATION = (0, 255, 0)
# Of the theme: a question's card and its main button.
SURFACE = (255, 255, 255)
ACCENT = (0x33, 0x55, 0xD1)


class Picture:
    """What the compositor shows."""

    def __init__(self):
        kind, size, _, self._pixels = subprocess.run(["grim", "-t", "ppm", "-"], stdout=subprocess.PIPE,
                                                     check=True).stdout.split(b"\n", 3)
        assert kind == b"P6"
        self.width, self.height = map(int, size.split())

    def __getitem__(self, place):
        start = 3 * (place[1] * self.width + place[0])
        return tuple(self._pixels[start:start + 3])

    def places(self, color):
        wanted, at = bytes(color), self._pixels.find(bytes(color))
        while at >= 0:
            if at % 3 == 0:
                yield at // 3 % self.width, at // 3 // self.width
            at = self._pixels.find(wanted, at + 1)

    def share(self, color):
        return sum(1 for _ in self.places(color)) / (self.width * self.height)


def is_shaded(color):
    """Whether it is the application's, with the shade over it."""
    red, green, blue = color
    return 100 < green < 200 and red < 40 and blue < 40


def run(*command):
    subprocess.run(command, stdout=subprocess.DEVNULL, check=True)


class Program:
    """A program whose lines on standard output are kept."""

    def __init__(self, name, *arguments):
        self._process = subprocess.Popen([PROGRAMS / name, *arguments], stdin=subprocess.PIPE, stdout=subprocess.PIPE,
                                         stderr=subprocess.STDOUT, text=True)
        self.lines = collections.deque()
        threading.Thread(target=lambda: self.lines.extend(self._process.stdout), daemon=True).start()

    def last(self, beginning):
        return next((line for line in reversed(list(self.lines)) if line.startswith(beginning)), "")

    def wait(self):
        return self._process.wait(PATIENCE)

    def is_running(self):
        return self._process.poll() is None

    def end(self):
        self._process.kill()
        self._process.communicate()


class Overlays(unittest.TestCase):
    def setUp(self):
        self.daemon = self.start("nfcd-sim")
        self.application = self.start("users-application")
        self.client = self.start("nfc-ui", "--remote-control")
        self.until(lambda: any("is registered" in line for line in self.daemon.lines))
        self.until(lambda: Picture().share(OF_APPLICATION) > 0.99)
        # The keyboard is the compositor's when the pointer is in its window.
        run("xdotool", "mousemove", "180", "100")

    def start(self, *command):
        program = Program(*command)
        self.addCleanup(program.end)
        return program

    def until(self, holds):
        last = time.monotonic() + PATIENCE
        while not (value := holds()):
            self.assertLess(time.monotonic(), last, "\n".join(self.client.lines))
            time.sleep(0.05)
        return value

    def ask(self, name="Evil name"):
        return self.start("nfctap", "pair", "00:11:22:33:44:55", name, "0x240404")

    def question(self):
        """The picture of a question that takes answers, and the place of its main button."""
        def answerable():
            picture = Picture()
            place = next((place for place in picture.places(ACCENT) if place[1] > picture.height / 4), None)
            return place and self.client.last("banner") == "banner: gone\n" and (picture, place)
        return self.until(answerable)

    def refuse(self):
        run("xdotool", "key", "Escape")

    def expect_application_behind(self, picture):
        shaded = [is_shaded(picture[x, y]) for x in range(0, picture.width, 10) for y in range(0, picture.height // 4, 10)]
        # The badge that counts the questions behind stands there, too.
        self.assertGreater(shaded.count(True), 0.8 * len(shaded))
        self.assertGreater(picture.share(SURFACE), 0.05)

    def test_application_stays_in_sight_behind_a_question(self):
        self.ask()
        picture, _ = self.question()
        self.expect_application_behind(picture)

    def test_input_does_not_reach_the_application_while_a_question_is_open(self):
        tap = self.ask()
        self.question()
        # A tap beside the question refuses it, and is not one on the application.
        run("xdotool", "key", "a", "mousemove", "180", "100", "click", "1")
        self.assertEqual(tap.wait(), 1)
        self.until(lambda: Picture().share(OF_APPLICATION) > 0.99)
        self.assertEqual(list(self.application.lines), [])
        # It gets the keyboard and the pointer back.
        run("xdotool", "key", "a", "click", "1")
        self.until(lambda: sorted(self.application.lines) == ["key\n", "press\n", "release\n"])

    def test_tap_on_a_button_answers(self):
        tap = self.ask()
        _, place = self.question()
        run("xdotool", "mousemove", *map(str, place), "click", "1")
        self.assertEqual(tap.wait(), 0)
        self.until(lambda: Picture().share(OF_APPLICATION) > 0.99)

    def test_two_questions_in_a_row(self):
        first = self.ask("First")
        self.until(lambda: "First" in self.client.last("screen"))
        for name, tap in (("First", first), ("Second", self.ask("Second"))):
            self.until(lambda name=name: name in self.client.last("screen"))
            picture, _ = self.question()
            self.expect_application_behind(picture)
            self.refuse()
            self.assertEqual(tap.wait(), 1)
        self.until(lambda: Picture().share(OF_APPLICATION) > 0.99)
        self.assertEqual(list(self.application.lines), [])

    def expect_whole(self):
        def is_whole():
            picture = Picture()
            corners = [picture[x, y] for x in (2, picture.width - 3) for y in (2, picture.height - 3)]
            return all(map(is_shaded, corners)) and picture.share(ACCENT) > 0.01
        self.until(is_whole)

    def set_screen(self, name, value, before):
        self.addCleanup(run, "swaymsg", f"output * {name} {before}")
        run("swaymsg", f"output * {name} {value}")

    def test_question_is_whole_on_a_screen_that_is_turned_meanwhile(self):
        self.ask()
        self.question()
        self.set_screen("transform", 90, "normal")
        self.until(lambda: Picture().width > Picture().height)
        self.expect_whole()

    def test_question_is_whole_on_a_dense_screen(self):
        for scale in ("1.5", "2"):
            with self.subTest(scale):
                self.set_screen("scale", scale, 1)
                tap = self.ask()
                self.question()
                self.expect_whole()
                self.refuse()
                self.assertEqual(tap.wait(), 1)

    # By its name the last one: the others need the compositor.
    def test_when_the_compositor_ends_nothing_crashes(self):
        self.ask()
        self.question()
        # Its own end keeps it from replying.
        subprocess.run(["swaymsg", "exit"], stderr=subprocess.DEVNULL, check=False)
        self.assertGreater(self.client.wait(), 0)


if __name__ == "__main__":
    unittest.main()
