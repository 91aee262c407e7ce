#!/usr/bin/env python3
# SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
# SPDX-License-Identifier: LGPL-2.1-or-later
"""Shows a phone in a window and, beside it, the panel that holds things against it, until the panel is closed."""

import argparse

from faces import Phone
from stage import Stage


def show(role, line):
    print(f"{role:>8} | {line}", flush=True)


def main():
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("programs", help="the folder with nfcd-sim, nfc-ui, nfc-panel and sample-handler")
    try:
        with Stage(parser.parse_args().programs, show, face=Phone) as stage:
            # The panel can bring a daemon back that has crashed.
            stage.lets_the_bus_start_the_daemon()
            stage.notebook_comes()
            stage.start("panel", "nfc-panel").is_closed()
    except KeyboardInterrupt:
        print()


if __name__ == "__main__":
    main()
