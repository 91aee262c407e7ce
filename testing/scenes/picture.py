#!/usr/bin/env python3
# SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
# SPDX-License-Identifier: LGPL-2.1-or-later
"""Takes a moving picture of the demo on the current X screen: a phone number is held against the phone, and called."""

import argparse
import os
import pathlib
import subprocess
import tempfile
import time

from faces import Phone
from stage import Stage

# Debian's own: another one may be first in the path.
CONVERT = "/usr/bin/convert"
PHONE = "Phone"
PANEL = "Hold something against the phone"
# In pixels, of a screen of WIDTHx800.
WIDTH = 1340
PHONE_WIDTH = 454
# In seconds: a question takes no taps at first, and the banner goes after two seconds.
TAKES_TAPS = 1
BANNER_GONE = 3


def xdotool(*arguments):
    subprocess.run(["xdotool", *arguments], check=True)


def place(title, left, width):
    """Gives a window a part of the screen, from top to bottom."""
    xdotool("search", "--sync", "--onlyvisible", "--name", title, "windowmove", "--sync", str(left), "0",
            "windowsize", "--sync", str(width), "100%")


def grab(path):
    subprocess.run(["import", "-window", "root", path], check=True)
    return subprocess.run(["identify", "-format", "%#", path], check=True, capture_output=True).stdout


def settled(path, still):
    """Takes a picture of the screen once nothing has moved on it for so many seconds."""
    before, since = grab(path), time.monotonic()
    while time.monotonic() - since < still:
        if (now := grab(path)) != before:
            before, since = now, time.monotonic()
    return path


def main():
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("programs", help="the folder with nfcd-sim, nfc-ui, nfc-panel and sample-handler")
    parser.add_argument("picture", help="the file to write, a GIF")
    arguments = parser.parse_args()
    folder = tempfile.TemporaryDirectory(dir=os.environ["HOME"])
    frames = [pathlib.Path(folder.name, f"{i}.png") for i in range(3)]
    with folder, Stage(arguments.programs, face=Phone) as stage:
        stage.start("panel", "nfc-panel")
        place(PHONE, 0, PHONE_WIDTH)
        place(PANEL, PHONE_WIDTH, WIDTH - PHONE_WIDTH)
        settled(frames[0], TAKES_TAPS)
        # The second button is the phone number, about which the user is always asked.
        xdotool("search", "--name", PANEL, "windowfocus", "--sync", "key", "Tab", "key", "space")
        stage.client.says("+15550100")
        settled(frames[1], TAKES_TAPS)
        stage.client.hears("press Call")
        stage.dials("tel:+15550100")
        settled(frames[2], BANNER_GONE)
        # Every frame stays for as long as it takes to read it, in hundredths of a second.
        subprocess.run([CONVERT, "-loop", "0", "-delay", "150", frames[0], "-delay", "300", *frames[1:],
                        "-layers", "Optimize", arguments.picture], check=True)


if __name__ == "__main__":
    main()
