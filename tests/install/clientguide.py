# SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
# SPDX-License-Identifier: LGPL-2.1-or-later
"""clientguide.py PAGE PREFIX FOLDER [CMAKE-ARGUMENT...]: builds every stage of the guide and holds tags against it."""

import os
import pathlib
import shutil
import sys

import pages
from gi.repository import GLib
from guidedaemon import GuideDaemon
from newcomer import Newcomer, expect

page, prefix, folder, *cmake_arguments = sys.argv[1:]
LINK = ("uri", "https://www.example.org")
HEADSET = ("00:16:41:7A:0F:11", "Headset", "0x240404")

# The questions for each stage, beside the tag, which it holds open until it ends.
QUESTIONS = {
    "stage3": [LINK],
    "stage4": [
        LINK,
        ("pair", *HEADSET, "1234"),
        ("connect", *HEADSET),
        ("disconnect", *HEADSET),
        ("share-permission", "beach.jpg"),
        ("share-selection",),
    ],
}
QUESTIONS["stage5"] = QUESTIONS["stage4"]


def start(stage):
    """Starts a stage, and returns when the daemon knows it."""
    sheet = source / f"{stage}.qml"
    program = newcomer.start(programs / stage, *([sheet] if sheet.exists() else []))
    hear(program, "The daemon asks this program")
    return program


def hear(program, beginning):
    """Reads what the program says up to a line that begins so. Texts that are not found are heard before."""
    heard = []
    while not heard or not heard[-1].startswith(beginning):
        heard.append(program.stdout.readline().removeprefix("qml: "))
        if not heard[-1] or heard[-1].startswith(("No texts", "QString::arg")):
            sys.exit(f"expected {beginning!r}, heard {heard}")


def outcome(tap):
    """What became of something that was held against the daemon: the word before the colon."""
    return tap.communicate()[0].partition(":")[0]


def leave(program):
    program.terminate()
    program.communicate()


# Before the daemon comes: it looks for folders once.
handlers = pathlib.Path(os.environ["XDG_DATA_HOME"], "connui-nfc/handlers")
handlers.mkdir(parents=True)
shutil.copy(pathlib.Path(prefix, "share/connui-nfc/handlers/sample-handler.handler"), handlers)
newcomer = Newcomer(prefix, folder, cmake_arguments)

source = newcomer.folder / "client"
expect(pages.extract(page, source), ["CMakeLists.txt", "stage1.cpp", "stage2.cpp", "stage3.cpp", "stage4.cpp", "stage5.cpp", "stage5.qml"])
programs = newcomer.build(source)

expect(newcomer.run(programs / "stage1"), "NFC is on\n")

stage2 = start("stage2")
expect(outcome(newcomer.start("nfctap", *LINK)), "rejected")
hear(stage2, "A tag with 16 bytes")
leave(stage2)

for stage, questions in QUESTIONS.items():
    for question in questions:
        program = start(stage)
        tap = newcomer.start("nfctap", *question)
        hear(program, "Asking")
        leave(program)
        expect(outcome(tap), "canceled")


# Questions about one target, of which the second needs no answer of the user's: it must not answer the first.
newcomer.run("nfctap", "crash")
daemon = GuideDaemon()
daemon.comes()
stage4 = newcomer.start(programs / "stage4")
daemon.knows_agents(1)
TARGET = "/target"
pairing = daemon.asks("RequestBTPairing", GLib.Variant("(ossus)", (TARGET, "00:16:41:7A:0F:11", "Headset", 0x240404, "")))
hear(stage4, "Asking")
delivery = daemon.asks("RequestNDEFDataDelivery", GLib.Variant("(a(ssos)oay)", ([], TARGET, b"")))
daemon.tells("NotifyTouch", GLib.Variant("(os)", (TARGET, "ok")))
expect([pairing, delivery], [[], []])

# The last word of a daemon that goes must not take the agent that its successor knows.
daemon.asks("Release")
daemon.goes()
daemon.comes()
daemon.knows_agents(2)
daemon.tells("NotifyTouch", GLib.Variant("(os)", (TARGET, "ok")))
daemon.tells("NotifyTouch", GLib.Variant("(os)", (TARGET, "ok")))
leave(stage4)
