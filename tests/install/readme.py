# SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
# SPDX-License-Identifier: LGPL-2.1-or-later
"""readme.py README PREFIX FOLDER [CMAKE-ARGUMENT...]: builds and runs the first program, both ways."""

import sys

import pages
from newcomer import Newcomer, expect

readme, prefix, folder, *cmake_arguments = sys.argv[1:]
newcomer = Newcomer(prefix, folder, cmake_arguments)
source = newcomer.folder / "first-program"
expect(pages.extract(readme, source), ["main.cpp", "CMakeLists.txt", "compile.sh"])

expect(newcomer.run(newcomer.build(source) / "first-program"), "NFC is on\n")

newcomer.run("sh", "-e", "compile.sh", cwd=source)
expect(newcomer.run("./first-program", cwd=source), "NFC is on\n")
