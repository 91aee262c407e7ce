# SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
# SPDX-License-Identifier: LGPL-2.1-or-later
"""The files that a page of the documentation shows: fenced blocks, each after a line <!-- file: NAME -->."""

import pathlib
import re

BLOCK = re.compile(r"^<!-- file: (\S+) -->\n```\w*\n(.*?)^```$", re.MULTILINE | re.DOTALL)


def extract(page, folder):
    """Writes the page's files into the folder, as someone does who copies them, and returns their names."""
    files = BLOCK.findall(pathlib.Path(page).read_text(encoding="utf-8"))
    for name, content in files:
        file = pathlib.Path(folder, name)
        file.parent.mkdir(parents=True, exist_ok=True)
        file.write_text(content, encoding="utf-8")
    return [name for name, _ in files]
