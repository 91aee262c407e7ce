# SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
# SPDX-License-Identifier: LGPL-2.1-or-later
"""words.py REPOSITORY FOLDER: scripts/words finds what CONTRIBUTING.md refuses, in pages, comments and texts."""

import importlib.machinery
import importlib.util
import pathlib
import shutil
import sys

repository, folder = (pathlib.Path(name).resolve() for name in sys.argv[1:])
loader = importlib.machinery.SourceFileLoader("words", str(repository / "scripts/words"))
words = importlib.util.module_from_spec(importlib.util.spec_from_loader("words", loader))
sys.dont_write_bytecode = True
loader.exec_module(words)

# File, its text, and how often something is refused in it.
CASES = (
    ("page.md", "The person decides.", 1),
    ("page.md", "The user decides; `person` is a name of code.", 0),
    ("page.md", "What waits is told by the daemon.", 2),
    ("page.md", "How many are waiting? Tell the user, who cannot tell apart bytes that are not a message.", 0),
    ("page.md", "Bytes that are no message", 1),
    ("page.md", "There are no messages, and it is no longer there", 0),
    ("daemon.8", "Cards that are no tags", 1),
    ("control", " leaves cards that are no tags alone", 1),
    ("page.md", "<<<<<<< HEAD\nRead the handover.\n=======\nPass the handover on.\n>>>>>>> 0123456 (Hand over)", 3),
    ("page.md", "The D-Bus library hangs.", 1),
    ("code.cpp", "int person = 0; // the person", 1),
    ("code.cpp", "int person = 0; // tell() fails", 0),
    ("code.h", " * Whoever asks gets an answer.", 1),
    ("code.h", "/** What a tag holds. */", 1),
    ("code.py", "tells = 1  # tells apart", 0),
    ("connui-nfc_en.ts", "<source>The tag tells nothing</source>", 1),
)

shutil.rmtree(folder, ignore_errors=True)
folder.mkdir(parents=True)
failures = []
for name, text, count in CASES:
    file = folder / name
    file.write_text(text + "\n")
    found = words.findings(file, words.phrases())
    if len(found) != count:
        failures.append(f"{text!r}: expected {count}, saw {found}")
sys.exit("\n".join(failures) or 0)
