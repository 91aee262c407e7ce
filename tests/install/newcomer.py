# SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
# SPDX-License-Identifier: LGPL-2.1-or-later
"""Someone who has installed the library and copies programs from its pages into an empty folder."""

import os
import pathlib
import shutil
import subprocess
import sys


class Newcomer:
    def __init__(self, prefix, folder, cmake_arguments):
        self._prefix = pathlib.Path(prefix)
        self._cmake_arguments = cmake_arguments
        self.folder = pathlib.Path(folder)
        shutil.rmtree(self.folder, ignore_errors=True)
        self.folder.mkdir(parents=True)
        # A shell takes what pkg-config prints apart at every blank.
        link = pathlib.Path(os.environ["HOME"], "prefix")
        link.symlink_to(self._prefix)
        libraries = next(link.glob("lib*/**/libconnui-nfc.so")).parent
        # Building must know the prefix; what is in it, and what is built, runs without.
        self._environment = dict(
            os.environ,
            PATH=f"{self._prefix}/bin:{os.environ['PATH']}",
            PKG_CONFIG_PATH=f"{libraries}/pkgconfig",
            QML_IMPORT_PATH=":".join(str(qmldir.parents[3]) for qmldir in self._prefix.glob("lib*/**/nfc/qmldir")),
            QT_QUICK_BACKEND="software",
        )
        for name in "LD_LIBRARY_PATH", "XDG_DATA_DIRS", "QT_PLUGIN_PATH":
            self._environment.pop(name, None)
        self._activate_daemon()

    def _activate_daemon(self):
        """Lets the bus start the installed daemon, as a machine's own bus does."""
        service = self._prefix / "share/dbus-1/system-services/com.tavix.nfc.service"
        lines = service.read_text().splitlines()
        daemon = f'Exec="{self._prefix}/bin/nfcd-sim"'
        text = "\n".join(daemon if line.startswith("Exec=") else line for line in lines)
        pathlib.Path(os.environ["CONNUI_SYSTEM_SERVICES"], service.name).write_text(text + "\n")
        self.run("dbus-send", "--system", "--print-reply", "--dest=com.tavix.nfc", "/",
                 "com.tavix.nfc.Manager.DefaultAdapter")

    def build(self, source):
        """Builds a project with CMake, and returns the folder with its programs."""
        binary = self.folder / "build" / pathlib.Path(source).name
        self.run("cmake", "-S", source, "-B", binary, "-G", "Ninja", f"-DCMAKE_PREFIX_PATH={self._prefix}",
                 *self._cmake_arguments)
        self.run("cmake", "--build", binary)
        return binary

    def run(self, *command, cwd=None):
        """Runs a command to its end and returns what it said; ends the test when it fails."""
        done = subprocess.run([str(word) for word in command], env=self._environment, cwd=cwd or self.folder,
                              stdout=subprocess.PIPE, stderr=subprocess.STDOUT, text=True, check=False)
        if done.returncode != 0:
            sys.exit(f"{' '.join(map(str, command))}: exit code {done.returncode}\n{done.stdout}")
        return done.stdout

    def start(self, *command):
        """Starts a program whose lines can be read one by one."""
        return subprocess.Popen([str(word) for word in command], env=self._environment, cwd=self.folder,
                                stdout=subprocess.PIPE, stderr=subprocess.STDOUT, text=True)


def expect(seen, wanted):
    """Ends the test unless both are the same."""
    if seen != wanted:
        sys.exit(f"expected {wanted!r}, saw {seen!r}")
