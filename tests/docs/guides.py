# SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
# SPDX-License-Identifier: LGPL-2.1-or-later
"""guides.py REPOSITORY PROGRAMS FOLDER [CMAKE-ARGUMENT...]: the handlers and the daemon of the guides do what these say."""

import os
import pathlib
import re
import shutil
import signal
import subprocess
import sys
import time

import dbus

repository, programs, folder, *cmake_arguments = sys.argv[1:]
repository, programs, folder = (pathlib.Path(name).resolve() for name in (repository, programs, folder))
sys.path[:0] = [str(repository / "tests/install"), str(repository / "testing/scenes")]

import pages  # noqa: E402
from actor import Actor  # noqa: E402

PYTHON = "/usr/bin/python3"
OUTPUT = re.compile(r"^<!-- output: nfctap conformance -->\n```\n(.*?)^```$", re.MULTILINE | re.DOTALL)
LIST = b"milk, bread"


def expect(seen, wanted):
    if seen != wanted:
        sys.exit(f"expected {wanted!r}, saw {seen!r}")


def fill(source):
    """A folder with the files of both guides, as somebody who copies them has it."""
    shutil.rmtree(folder, ignore_errors=True)
    expect(sorted(pages.extract(repository / "docs/handler-guide.md", source)),
           ["CMakeLists.txt", "main.cpp", "org.example.Shopping.service", "shopping.desktop", "shopping.handler",
            "shopping.py"])
    expect(pages.extract(repository / "docs/daemon-guide.md", source), ["daemon.py"])


def install(source, command):
    """Installs the handler for this user, to be started by the bus with this command."""
    data = pathlib.Path(os.environ["XDG_DATA_HOME"])
    for name, place in (("shopping.handler", "connui-nfc/handlers"), ("shopping.desktop", "applications")):
        (data / place).mkdir(parents=True, exist_ok=True)
        shutil.copy(source / name, data / place)
    # The output of a program that the bus starts is lost: here it goes into a file.
    start = folder / "start.sh"
    start.write_text(f'echo $$ >"{folder}/pid"; exec {command} >"{folder}/output"\n')
    service = (source / "org.example.Shopping.service").read_text()
    service = re.sub("Exec=.*", f'Exec=/bin/sh "{start}"', service)
    (data / "dbus-1/services/org.example.Shopping.service").write_text(service)
    session.call_blocking("org.freedesktop.DBus", "/", "org.freedesktop.DBus", "ReloadConfig", "", ())


def deliver(source, command):
    """Has a tag with a shopping list delivered, and returns what the handler printed before it is ended."""
    install(source, command)
    client = Actor("client", [programs / "nfc-ui", "--console"])
    client.says("the NFC daemon is here")
    (folder / "list.txt").write_bytes(LIST)
    tap = Actor("tap", [programs / "nfctap", "mime", "application/x-shopping-list", folder / "list.txt"])
    client.says("[")
    client.hears("shopping")
    tap.says("granted")
    client.is_dismissed()
    os.kill(int((folder / "pid").read_text()), signal.SIGTERM)
    while session.name_has_owner("org.example.Shopping"):
        time.sleep(0.02)
    return (folder / "output").read_text()


def commands(page, name):
    """The commands of the page under this name, as they are printed."""
    return re.search(rf"^<!-- commands: {name} -->\n```sh\n(.*?)^```$", (repository / "docs" / page).read_text(),
                     re.MULTILINE | re.DOTALL).group(1)


def shell(page, command, **variables):
    """A shell in the source tree that runs the commands, and sees the programs where a build of the tree has them."""
    tree = folder / "tree"
    if not tree.exists():
        (tree / "build/dev").mkdir(parents=True)
        (tree / "build/dev/bin").symlink_to(programs)
        (tree / "testing").symlink_to(repository / "testing")
    settings = [f"{name}={value}" for name, value in variables.items()]
    return ["env", "-C", tree, "PATH=/usr/bin:/bin", *settings, "bash", "-e", "-c", commands(page, command)]


def try_as_printed():
    """Follows "Trying it" of the handler guide."""
    user = Actor("user", shell("handler-guide.md", "shell", HANDLER=source))
    user.hears(commands("handler-guide.md", "handler"))
    user.hears("gdbus wait --session org.example.Shopping")
    user.hears(commands("handler-guide.md", "tag"))
    user.says("1) shopping")
    user.says("[Open]")
    user.hears("1")
    user.says("taken: d2")
    user.says("granted")
    user.hears_the_end()
    user.leaves()


session = dbus.SessionBus()
source = folder / "source"
fill(source)
message = bytes([0xd2, 27, len(LIST)]) + b"application/x-shopping-list" + LIST

subprocess.run(["cmake", "-S", source, "-B", folder / "build", "-G", "Ninja", *cmake_arguments], check=True,
               stdout=subprocess.DEVNULL)
subprocess.run(["cmake", "--build", folder / "build"], check=True, stdout=subprocess.DEVNULL)
daemon = Actor("daemon", [programs / "nfcd-sim"])
daemon.says("ready")
for command in (f'"{folder}/build/shopping"', f'{PYTHON} "{source}/shopping.py"'):
    expect(deliver(source, command).splitlines()[0], f"taken: {message.hex()}")
daemon.is_dismissed()
try_as_printed()

# Into a file: the daemon, which goes with its bus, would keep a pipe open.
output = folder / "conformance"
with output.open("w") as file:
    check = subprocess.run(shell("daemon-guide.md", "conformance", DAEMON=source), stdout=file, check=False)
expect(output.read_text(), OUTPUT.search((repository / "docs/daemon-guide.md").read_text()).group(1))
expect(check.returncode, 0)
