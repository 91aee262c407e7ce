# SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
# SPDX-License-Identifier: LGPL-2.1-or-later
"""windows.py PROGRAMS SOURCE

Holds the windows of the programs in the folder PROGRAMS to what task switchers and compositors' rules go by: a title, an
icon, the name of the desktop file, and a size that fits the screen; questions keep above. To be run by with-compositor, so that
there are both a Wayland compositor and an X server.
"""

import contextlib
import os
import pathlib
import re
import shutil
import subprocess
import sys
import time

PROGRAMS, SOURCE = map(pathlib.Path, sys.argv[1:])
PATIENCE = 60  # seconds, on a busy machine
DAEMON = "com.tavix.nfc"
WIDTH, HEIGHT = map(int, os.environ["CONNUI_WAYLAND_SIZE"].split("x"))


def until(found, what):
    last = time.monotonic() + PATIENCE
    while not (value := found()):
        if time.monotonic() > last:
            sys.exit(f"windows: {what}")
        time.sleep(0.05)
    return value


@contextlib.contextmanager
def running(*command, log=None, **environment):
    with open(log or os.devnull, "w", encoding="utf-8") as output:
        process = subprocess.Popen([PROGRAMS / command[0], *command[1:]], stdout=subprocess.DEVNULL, stderr=output,
                                   env=os.environ | environment)
    try:
        yield process
    finally:
        end(process)


def end(process):
    process.terminate()
    try:
        process.wait(PATIENCE)
    except subprocess.TimeoutExpired:
        sys.exit(f"windows: {process.args[0]} does not end: {threads_of(process)}")


def threads_of(process):
    """Of each thread its name, and which part of the kernel it waits in."""
    return [[(task / name).read_text().strip() for name in ("comm", "wchan")]
            for task in pathlib.Path(f"/proc/{process.pid}/task").iterdir()]


def output_of(*command):
    return subprocess.run(command, stdout=subprocess.PIPE, stderr=subprocess.DEVNULL, text=True, check=False,
                          timeout=PATIENCE).stdout


def is_on_bus(bus, name):
    return f'"{name}"' in output_of("dbus-send", f"--{bus}", "--print-reply", "--dest=org.freedesktop.DBus", "/",
                                    "org.freedesktop.DBus.ListNames")


@contextlib.contextmanager
def question():
    """Something that nfc-ui asks about, once it is there."""
    until(lambda: is_on_bus("system", DAEMON), "no daemon")
    tap = None
    try:
        # A client that has just come may not have registered yet: then nobody takes the tag.
        def is_taken():
            nonlocal tap
            if tap is None or tap.poll() == 3:
                tap = subprocess.Popen([PROGRAMS / "nfctap", "pair", "00:11:22:33:44:55", "Evil name", "0x240404"],
                                       stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
            try:
                return tap.wait(1) != 3
            except subprocess.TimeoutExpired:
                return True
        until(is_taken, "nobody takes the tag")
        yield
    finally:
        if tap:
            end(tap)


def windows_of(process):
    """The windows but the banner, which is a notification."""
    found = output_of("xdotool", "search", "--onlyvisible", "--pid", str(process.pid)).split()
    properties = {window: output_of("xprop", "-id", window, "_NET_WM_NAME", "_NET_WM_WINDOW_TYPE") for window in found}
    return [window for window, text in properties.items() if "UTF8_STRING" in text and "_TYPE_NOTIFICATION" not in text]


def check(holds, fault):
    if not holds:
        sys.exit(f"windows: {fault}")


def wayland_window_is_named(program, title, asking):
    log = pathlib.Path(os.environ["HOME"], f"{program}.log")

    def requests():
        text = log.read_text(errors="replace")
        return text if ".set_title(" in text and ".set_app_id(" in text else None

    with running(program, log=log, WAYLAND_DEBUG="client"), asking():
        said = until(requests, f"{program} has no name on Wayland")
    check(f'.set_app_id("{program}")' in said, f"{program} names another desktop file")
    check(f'.set_title("{title}")' in said, f"{program}: {re.findall('set_title.*', said)}")


def x11_window_is_whole(program, title, asking, above):
    with running(program, QT_QPA_PLATFORM="xcb") as process, asking():
        window = until(lambda: windows_of(process), f"{program} shows no window")[0]
        properties = output_of("xprop", "-id", window, "_NET_WM_NAME", "_NET_WM_STATE")
        check(f'= "{title}"' in properties, f"{program}: {properties}")
        check(("_NET_WM_STATE_ABOVE" in properties) == above, f"{program}: {properties}")
        check("Icon (" in output_of("xprop", "-id", window, "_NET_WM_ICON"), f"{program} has no icon")
        place = output_of("xwininfo", "-id", window)
        width, height = (int(re.search(rf"{side}: (\d+)", place)[1]) for side in ("Width", "Height"))
        # The X screen is a column wider than weston's.
        check(width <= WIDTH + 1 and height <= HEIGHT, f"{program} is {width}x{height}")


def main():
    icons = pathlib.Path(os.environ["XDG_DATA_HOME"], "icons", "hicolor", "scalable", "apps")
    icons.mkdir(parents=True)
    for icon in ("client/session/nfc-ui.svg", "client/session/nfc-settings.svg", "viewer/nfc-viewer.svg"):
        shutil.copy(SOURCE / icon, icons)
    # The viewer's window comes with a tag or, without one, when it is launched.
    @contextlib.contextmanager
    def launched():
        until(lambda: is_on_bus("session", "org.connui.NfcViewer"), "no viewer")
        output_of("dbus-send", "--session", "--print-reply", "--dest=org.connui.NfcViewer", "/org/orvik/m",
                  "com.tavix.MApplicationIf.launch")
        yield

    with running("nfcd-sim"):
        for program, title, asking, above in (("nfc-ui", "NFC touch", question, True),
                                              ("nfc-settings", "NFC settings", contextlib.nullcontext, False),
                                              ("nfc-viewer", "On the tag", launched, False)):
            wayland_window_is_named(program, title, asking)
            x11_window_is_whole(program, title, asking, above)
        # For the screen of a desktop, whatever its size.
        wayland_window_is_named("nfc-panel", "Hold something against the phone", contextlib.nullcontext)


if __name__ == "__main__":
    main()
