# SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
# SPDX-License-Identifier: LGPL-2.1-or-later
"""polkit.py SOURCE NFCD-PCSC CALLAS HOLD-TAG

Runs nfcd-pcsc as the user of its package, with the machine's own polkitd and the installed policies, and has two users
register an agent: one whom a rule of polkit allows to, and one whom none does. Then the rule is changed, as if the other
one had taken the seat, and changed back: each tag goes to the user whom polkit allows.

It mounts over the machine's files, and runs in a mount namespace of its own, with a reader: with-reader's.
"""

import contextlib
import os
import pathlib
import pwd
import re
import subprocess
import sys
import tempfile
import time
import xml.etree.ElementTree

import dbus.bus

SOURCE, DAEMON, CALL_AS, HOLD_TAG = pathlib.Path(sys.argv[1]), *sys.argv[2:]
sys.path.insert(0, str(SOURCE / "testing/support"))
from wrapping import Wrapper  # noqa: E402

POLKIT = pathlib.Path("/usr/lib/polkit-1/polkitd")
POLICY = SOURCE / "daemon/com.tavix.nfc.policy"
OWNER = "action/annotate[@key='org.freedesktop.policykit.owner']"
ALLOWED, OTHER = "nobody", "daemon"
RULE = """polkit.addRule(function (action, subject) {
    if (action.id === "com.tavix.nfc.manage" && subject.user === "%s")
        return polkit.Result.YES;
});
"""
# Links to ".org", ".net" and ".com".
TAGS = ("d1010455036f7267", "d1010455036e6574", "d101045503636f6d")


def user_of_the_daemon():
    """The user of the daemon's units, about whom polkit's policy is to know."""
    units = [SOURCE / "daemon/system" / name for name in ("com.tavix.nfc.service.in", "nfcd-pcsc.service.in")]
    users = {re.search("^User=(.*)$", unit.read_text(encoding="utf-8"), re.MULTILINE)[1] for unit in units}
    owners = {owner.text.strip() for owner in xml.etree.ElementTree.parse(POLICY).iterfind(OWNER)}
    if len(users) != 1 or owners != {f"unix-user:{user}" for user in users}:
        sys.exit(f"polkit.py: the units run the daemon as {users}, and polkit answers to {owners or 'root alone'}")
    return users.pop()


def has_all_users():
    """Whether this is root, in a namespace with all users: whoever enters one as somebody else is alone there."""
    return os.geteuid() == 0 and pathlib.Path("/proc/self/uid_map").read_text().split() == ["0", "0", "4294967295"]


def furnish(folder, user):
    """Gives the namespace the daemon's user and nothing of polkit's but what this test needs."""
    users = pathlib.Path("/etc/passwd").read_text(encoding="utf-8")
    if not re.search(f"^{user}:", users, re.MULTILINE):
        free = next(number for number in range(900, 0, -1) if f":{number}:" not in users)
        (folder / "passwd").write_text(f"{users}{user}:x:{free}:65534::/nonexistent:/usr/sbin/nologin\n")
        (folder / "passwd").chmod(0o644)
        subprocess.run(["mount", "--bind", folder / "passwd", "/etc/passwd"], check=True)
    for place in ("/usr/share/polkit-1", "/etc/polkit-1"):
        subprocess.run(["mount", "-t", "tmpfs", "-o", "mode=755", "tmpfs", place], check=True)
        for name in ("actions", "rules.d"):
            pathlib.Path(place, name).mkdir()
    pathlib.Path("/usr/share/polkit-1/actions", POLICY.name).write_bytes(POLICY.read_bytes())
    allow(ALLOWED)


def allow(user):
    """Has polkit allow that user, and no other."""
    pathlib.Path("/usr/share/polkit-1/rules.d/nfc.rules").write_text(RULE % user, encoding="utf-8")


def start_bus(wrapper, folder):
    """Starts a bus as strict as a system's own, with the policies of polkit and of the daemon, and returns its address."""
    policies = ("/usr/share/dbus-1/system.d/org.freedesktop.PolicyKit1.conf", SOURCE / "interfaces/com.tavix.nfc.conf",
                SOURCE / "daemon/system/nfcd-pcsc.conf")
    text = (SOURCE / "tests/interfaces/strict-bus.conf.in").read_text(encoding="utf-8")
    text = text.replace("@FOLDER@", str(folder)).replace("@POLICY@", "</include><include>".join(map(str, policies)))
    (folder / "bus.conf").write_text(text, encoding="utf-8")
    listening, telling = os.pipe()
    wrapper.serve(["dbus-daemon", "--nofork", "--nopidfile", f"--print-address={telling}",
                   f"--config-file={folder / 'bus.conf'}"], pass_fds=[telling], stderr=subprocess.DEVNULL)
    os.close(telling)
    with open(listening, encoding="utf-8") as told:
        return told.readline().strip()


def start(wrapper, bus, name, command, **options):
    """Starts a service, and returns when it has its name on the bus."""
    server = wrapper.serve(command, text=True, **options)
    while not bus.name_has_owner(name):
        if server.poll() is not None:
            sys.exit(f"polkit.py: {command[0]} does not start")
        time.sleep(0.02)
    return server


def register_agent(user, address):
    """Registers an agent as that user, and returns the outcome."""
    return subprocess.run(
        [CALL_AS, str(pwd.getpwnam(user).pw_uid), address, "call", "com.tavix.nfc", "/com/tavix/nfc/adapter0",
         "com.tavix.nfc.Adapter", "RegisterUIAgent", "o:/agent"],
        check=True, stdout=subprocess.PIPE, text=True).stdout.strip()


def wait_for(stream, text):
    """Reads lines up to the first with that text."""
    for line in stream:
        print(line, end="", flush=True)
        if text in line:
            return
    sys.exit(f"polkit.py: it ends without {text}")


def start_agent(wrapper, user, address):
    """Starts an agent that stays, of that user, and returns its output once it is registered."""
    agent = wrapper.serve([sys.executable, "-B", SOURCE / "tests/daemon/stayingagent.py", address], user=user,
                          extra_groups=[], stdout=subprocess.PIPE, text=True)
    wait_for(agent.stdout, "registered")
    return agent.stdout


def touch(message, agent):
    """Holds a tag against the reader until the agent is asked about it."""
    with subprocess.Popen([HOLD_TAG, "type2", message], stdout=subprocess.DEVNULL) as tag:
        wait_for(agent, message)
        tag.terminate()


def change_seats(wrapper, address, log):
    """Has the users take the seat in turn, and a tag touched each time."""
    first = start_agent(wrapper, ALLOWED, address)
    touch(TAGS[0], first)
    allow(OTHER)
    wait_for(log, "is put aside")
    second = start_agent(wrapper, OTHER, address)
    touch(TAGS[1], second)
    allow(ALLOWED)
    wait_for(log, "is put aside")
    wait_for(log, "is in use again")
    touch(TAGS[2], first)


def main():
    user = user_of_the_daemon()
    if not has_all_users() or not POLKIT.exists():
        print("polkit.py: skipped: it takes root, and polkitd")
        return 77
    with contextlib.ExitStack() as stack:
        wrapper = stack.enter_context(Wrapper())
        folder = pathlib.Path(stack.enter_context(tempfile.TemporaryDirectory(prefix="connui.", dir="/run")))
        folder.chmod(0o755)
        furnish(folder, user)
        address = start_bus(wrapper, folder)
        os.environ["DBUS_SYSTEM_BUS_ADDRESS"] = address
        bus = dbus.bus.BusConnection(address)
        start(wrapper, bus, "org.freedesktop.PolicyKit1", [str(POLKIT), "--no-debug"])
        daemon = start(wrapper, bus, "com.tavix.nfc", [DAEMON], user=user, extra_groups=[], stderr=subprocess.PIPE)
        outcomes = {name: register_agent(name, address) for name in (ALLOWED, OTHER)}
        print(outcomes)
        change_seats(wrapper, address, daemon.stderr)
    return outcomes != {ALLOWED: "done", OTHER: "org.freedesktop.DBus.Error.AccessDenied"}


if __name__ == "__main__":
    sys.exit(main())
