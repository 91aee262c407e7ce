# SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
# SPDX-License-Identifier: LGPL-2.1-or-later
"""core.py README PREFIX FOLDER [CMAKE-ARGUMENT...]: builds the first program with the library without windows, both ways."""

import sys

import pages
from newcomer import Newcomer, expect

# The names in the README, and those in their place.
NAMES = {
    "CMakeLists.txt": (("find_package(ConnUiNfc ", "find_package(ConnUiNfcCore "), ("ConnUi::Nfc)", "ConnUi::NfcCore)")),
    "compile.sh": (("connui-nfc", "connui-nfc-core"),),
}

readme, prefix, folder, *cmake_arguments = sys.argv[1:]
newcomer = Newcomer(prefix, folder, cmake_arguments)
source = newcomer.folder / "core"
pages.extract(readme, source)
for name, replacements in NAMES.items():
    file = source / name
    text = file.read_text(encoding="utf-8")
    for whole, core in replacements:
        expect(whole in text, True)
        text = text.replace(whole, core)
    file.write_text(text, encoding="utf-8")

programs = [newcomer.build(source) / "first-program", source / "first-program"]
newcomer.run("sh", "-e", "compile.sh", cwd=source)
for program in programs:
    expect(newcomer.run(program), "NFC is on\n")
    libraries = newcomer.run("ldd", program)
    expect("libconnui-nfc-core.so.1" in libraries, True)
    expect([name for name in ("libQt6Gui", "libQt6Widgets", "libquenzotouchcore", "libconnui-nfc.so") if name in libraries], [])
