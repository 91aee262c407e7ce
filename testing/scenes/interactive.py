#!/usr/bin/env python3
# SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
# SPDX-License-Identifier: LGPL-2.1-or-later
"""Lets a user play: what is typed goes to the client when it is an answer, and to nfctap otherwise."""

import argparse
import re
import shlex
import subprocess
import sys

from actor import Unmet
from stage import Stage

INTRODUCTION = """\
A phone with NFC, on this terminal. Hold something against it:
    uri https://www.example.org
    text Welcome
    pair 00:16:41:7A:0F:11 Headset 0x240404 1234
    malformed
("help" shows everything.) When the client asks, answer y, n, a number or what stands in the brackets. "start" brings the daemon back after "crash";
"quit" leaves.
"""


def show(role, line):
    print(f"{role:>8} | {line}", flush=True)


def obey(stage, line):
    if re.fullmatch(r"[yYnN]|\d+|View|Discard|Call|Send|Open|Pair|Connect|Disconnect|Continue|Cancel|Close", line):
        stage.client.hears(line)
    elif line == "help":
        subprocess.run([stage.programs / "nfctap", "--help"], check=True)
    elif line == "start":
        stage.daemon_comes()
    elif line:
        stage.tap(*shlex.split(line))


def play(stage):
    print(INTRODUCTION, flush=True)
    for line in map(str.strip, sys.stdin):
        if line == "quit":
            return
        try:
            obey(stage, line)
        except (OSError, ValueError, Unmet) as fault:
            show("demo", fault)


def main():
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("programs", help="the folder with nfcd-sim, nfctap, nfc-ui and sample-handler")
    try:
        with Stage(parser.parse_args().programs, show) as stage:
            play(stage)
    except KeyboardInterrupt:
        print()


if __name__ == "__main__":
    main()
