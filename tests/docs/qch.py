# SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
# SPDX-License-Identifier: LGPL-2.1-or-later
"""qch.py REPOSITORY FOLDER [CMAKE-ARGUMENT...]: the API reference is there as Qt help, with a tag file, and installed."""

import pathlib
import re
import shutil
import sqlite3
import subprocess
import sys

repository, folder, *cmake_arguments = sys.argv[1:]
folder = pathlib.Path(folder)
build, prefix = folder / "build", folder / "prefix"


def run(*command):
    subprocess.run(["cmake", *map(str, command)], check=True, stdout=subprocess.DEVNULL)


def expect(what, seen, wanted):
    if seen != wanted:
        sys.exit(f"{what}: expected {wanted!r}, saw {seen!r}")


shutil.rmtree(folder, ignore_errors=True)
run("-S", repository, "-B", build, "-G", "Ninja", "--log-level=WARNING", "-DBUILD_QCH=ON", "-DBUILD_TESTING=OFF",
    *cmake_arguments)
run("--build", build, "--target", "ConnUiNfc_QCH")
run("--install", build, "--prefix", prefix, "--component", "reference")
installed = {file.name: file for file in prefix.rglob("*") if file.is_file()}
expect("installed", sorted(str(file.relative_to(prefix)) for file in installed.values()),
       ["share/doc/qch/connui-nfc.qch", "share/doc/qch/connui-nfc.tags"])

# Programs that read the files need them uncompressed. Where packages can be built, they stay so.
if shutil.which("dh_compress"):
    packaged = folder / "packaged/debian/connui-nfc-doc/usr/share/doc/qch"
    packaged.mkdir(parents=True)
    for file in installed.values():
        shutil.copy(file, packaged)
    for name in ("control", "changelog", "rules"):
        shutil.copy(f"{repository}/debian/{name}", folder / "packaged/debian")
    subprocess.run(["debian/rules", "override_dh_compress"], cwd=folder / "packaged", check=True, stdout=subprocess.DEVNULL)
    expect("packaged", sorted(file.name for file in packaged.iterdir()), sorted(installed))

classes = sorted(re.findall(r"^class (?:CONNUI_NFC_(?:CORE_)?EXPORT )(\w+)",
                            "\n".join(header.read_text() for header in pathlib.Path(repository, "include").glob("*/*.h")),
                            re.MULTILINE))
help_file = sqlite3.connect(installed["connui-nfc.qch"])
version = re.search(r"project\(ConnUiNfc VERSION (\S+)", pathlib.Path(repository, "CMakeLists.txt").read_text()).group(1)
expect("namespace", help_file.execute("SELECT Name FROM NamespaceTable").fetchall(),
       [("org.connui.nfc." + version.replace(".", "_"),)])
keywords = {name.removeprefix("ConnUi::") for name, in help_file.execute("SELECT Name FROM IndexTable")}
expect("classes without a keyword", [name for name in classes if name not in keywords], [])
tags = installed["connui-nfc.tags"].read_text(encoding="utf-8")
expect("classes without a tag", [name for name in classes if not re.search(rf"<name>(ConnUi::)?{name}</name>", tags)], [])
