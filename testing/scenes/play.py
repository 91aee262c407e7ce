#!/usr/bin/env python3
# SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
# SPDX-License-Identifier: LGPL-2.1-or-later
"""Plays every scene and prints a transcript: a line per step and, last, how many passed and failed.

With --reader it plays those with tags on a reader, under with-reader.
"""

import argparse
import sys

# Each of these adds its scenes, which are played in this order.
import scenes
import tagscenes  # noqa: F401
import peerscenes  # noqa: F401
import transferscenes  # noqa: F401
import settingsscenes  # noqa: F401
import clientscenes  # noqa: F401
import readerscenes  # noqa: F401
from actor import Unmet
from faces import Screen, Terminal
from listener import Listener
from readerstage import ReaderStage
from stage import Stage


class Transcript:
    """Takes the steps of all scenes and counts them."""

    def __init__(self, stage):
        self._stage = stage
        self.passed = 0
        self.failed = 0

    def title(self, scene, face):
        print(f"\n{scene.__doc__}, {face.name}", flush=True)

    def step(self, words, happens):
        try:
            happens()
        except (Unmet, AssertionError, OSError, ValueError) as reason:
            print(f"  FAILED  {words}\n          {reason}", flush=True)
            raise Unmet(words) from None
        self.passed += 1
        print(f"  ok  {words}", flush=True)

    def play(self, scene, face, programs):
        self.title(scene, face)
        try:
            with self._stage(programs, face=face) as stage:
                scene(stage, self.step)
                self.step("everybody leaves in good order", stage.all_leave)
                self.step("each question of the daemon has had exactly one answer", stage.wire.all_answered_once)
        except Unmet as reason:
            self.failed += 1
            print(f"  the rest of the scene is not played: {reason}", flush=True)


def arguments():
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("programs", help="the folder with the daemon, nfctap, nfc-ui and sample-handler")
    parser.add_argument("--reader", action="store_true", help="play the scenes with tags on a reader")
    parser.add_argument("--by-ear", action="store_true",
                        help="play what has a screen and a terminal as somebody hears it who sees neither")
    parser.add_argument("--loop-watch", metavar="LIBRARY",
                        help="end a client that waits for another program in its event loop")
    parser.add_argument("--only", default="", help="play the scenes with this in their names")
    return parser.parse_args()


def faces_of(scene, by_ear):
    if not by_ear:
        return scene.faces
    return [Listener] if scene.faces == [Terminal, Screen] else []


def main():
    wishes = arguments()
    Stage.loop_watch = wishes.loop_watch
    transcript = Transcript(ReaderStage if wishes.reader else Stage)
    for scene in scenes.READER_SCENES if wishes.reader else scenes.SCENES:
        for face in faces_of(scene, wishes.by_ear):
            if wishes.only in scene.__name__:
                transcript.play(scene, face, wishes.programs)
    print(f"\n{transcript.passed} passed, {transcript.failed} failed")
    return 0 if transcript.failed == 0 else 1


if __name__ == "__main__":
    sys.exit(main())
