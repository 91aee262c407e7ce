# SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
# SPDX-License-Identifier: LGPL-2.1-or-later
"""commands.py REPOSITORY BUILD: every command on a page is run by a test, or is listed here with the reason why not."""

import pathlib
import re
import subprocess
import sys

repository, build = (pathlib.Path(name).resolve() for name in sys.argv[1:])
PAGES = [page for folder in (".", "docs") for page in sorted((repository / folder).glob("*.md"))]
FENCE = re.compile(r"^```.*?^```$", re.MULTILINE | re.DOTALL)
MARKED = re.compile(r"^<!-- (?:commands|file): (\S+) -->\n```sh$", re.MULTILINE)
SHELL = re.compile(r"(.*)\n```sh$", re.MULTILINE)
# In a paragraph: code that begins with one of our scripts, or with the runner of the tests.
INLINE = re.compile(r"`((?:[A-Z_]+=\S+ )*(?:scripts/|ctest )[^`]*)`")
# A block of commands: indented lines after an empty one. An option or a variable that is set may stand in front.
BLOCK = re.compile(r"(?<=\n\n)((?: {4,}.*\n)+)")
SCRIPT = re.compile(r"(?:[A-Z_]+=\S+ )*scripts/")
# A test's own program, with more work than in the test.
PROGRAM = re.compile(r"(?:[A-Z_]+=\S+ )*testing/support/with-buses build/dev/bin/tst_(\w+)$")

# The tests that run the blocks which are marked with a name.
MARKS = {
    "compile.sh": "install.readme", "handler": "docs.guides", "shell": "docs.guides", "tag": "docs.guides",
    "conformance": "docs.guides",
}
# The other commands, by the beginning of each: the test that runs it.
TESTED = {
    "cmake -S . -B build && cmake --build build": "install.clientguide",
    "nfctap uri https://www.example.org": "install.clientguide",
    "cmake -S . -B build -DCONNUI_PLATFORM=system": "install.platform",
    "systemd-analyze security --offline=true": "client.sandbox",
    "tests/abi/dump": "abi.connui-nfc",
    "debian/symbols": "abi.symbols",
    "testing/reader/with-reader": "daemon.withreader",
    "cmake --install": "install.files",
    "nfctap write uri": "simulator.nfctap",
    "busctl call com.tavix.nfc": "daemon.nfcdpcsc",
}
UNTESTED = {
    "cmake -S . -B build -G Ninja -DCMAKE_BUILD_TYPE=Debug": "is the preset dev, without its settings for speed",
    "cmake --build build": "the same",
    "ctest --test-dir build -j4": "the same",
    "cmake --preset release": "takes ten minutes; .ci/run builds this preset",
    "cmake --build --preset release": "the same",
    "cmake --preset clang": "takes a quarter of an hour; scripts/lint compiles with Clang as well",
    "cmake --preset arm64": "needs a root for arm64; scripts/portable arm64 makes one and builds this preset",
    "ctest --preset arm64": "the same",
    "sudo apt install": "needs an archive of the packages; scripts/package --check installs them",
    "journalctl": "needs systemd as the first process",
    "pcsc_scan": "a program of Debian's",
    "printf 'blacklist": "changes the kernel",
    "sudo modprobe": "changes the kernel",
    "setfacl": "changes the home folder; needs the user nfcd",
    "npm install": "needs the network; the test that uses it is skipped otherwise",
    "export CONNUI_UNDER": "takes half an hour",
}


def commands(page):
    """The commands of a page, each in one line."""
    text = page.read_text(encoding="utf-8")
    for line in SHELL.findall(text):
        mark = MARKED.match(line + "\n```sh")
        yield mark[1] if mark else f"a block without a mark, after {line!r}"
    text = FENCE.sub("", text)
    yield from INLINE.findall(re.sub(r"\n(?=\S)", " ", text))
    for block in BLOCK.findall(text):
        lines = [line.strip() for line in block.splitlines()]
        # After a prompt, lines without one are output.
        if lines[0].startswith("$ "):
            lines = [line[2:] for line in lines if line.startswith("$ ")]
        # A quoted argument goes on in the next line.
        whole = re.sub(r'("[^"\n]*)\n([^"\n]*")', r"\1 \2", "\n".join(lines))
        yield from (re.sub(r" +# .*", "", line) for line in whole.split("\n") if not line.startswith("→ "))


def tests(*arguments):
    listing = subprocess.run(["ctest", "--test-dir", build, "-N", *arguments], check=True, stdout=subprocess.PIPE, text=True).stdout
    return set(re.findall(r"Test +#\d+: (\S+)", listing))


def problem(command):
    """What is wrong with a command, or None."""
    if SCRIPT.match(command):
        return None  # scripts.arguments has each run as it is printed.
    if selection := re.match(r"ctest (?:--preset dev )?(-R .*)", command):
        return None if tests(*selection[1].replace("'", "").split()) else "selects no test"
    if program := PROGRAM.match(command):
        return None if any(test.endswith(f".{program[1]}") for test in known) else "that program is not a test"
    if found := [test for start, test in (MARKS | TESTED).items() if command.startswith(start)]:
        used.add(found[0])
        return None if found[0] in known else f"the test {found[0]} does not exist"
    if any(command.startswith(start) for start in UNTESTED):
        return None
    return "no test runs it"


known, used = tests(), set()
failures = [f"{page.relative_to(repository)}: {command}: {wrong}" for page in PAGES for command in commands(page)
            if (wrong := problem(command))]
failures += [f"no page has the command of {test}" for test in sorted(set((MARKS | TESTED).values()) - used)]
sys.exit("\n".join(failures) or 0)
