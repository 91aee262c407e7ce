# SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
# SPDX-License-Identifier: LGPL-2.1-or-later
"""headers.py PROJECT PREFIX FOLDER [CMAKE-ARGUMENT...]: builds the project against what is installed."""

import sys

from newcomer import Newcomer

project, prefix, folder, *cmake_arguments = sys.argv[1:]
newcomer = Newcomer(prefix, folder, cmake_arguments)
binary = newcomer.build(project)
# The folders that pkg-config names have them all, too.
newcomer.run("sh", "-c", "g++ -std=c++20 -fPIC -E headers.cpp -o /dev/null $(pkg-config --cflags connui-nfc)", cwd=binary)
