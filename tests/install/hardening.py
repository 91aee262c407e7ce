# SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
# SPDX-License-Identifier: LGPL-2.1-or-later
"""hardening.py PREFIX [--optimized]: holds every program and library that is installed to what the build promises.

The compiler's flags are read from the debug information, where there is any. What only optimized code has, calls that
know the size of what they write to, is asked for with --optimized.
"""

import pathlib
import platform
import re
import subprocess
import sys

COMPILED = {
    "x86_64": ["-fstack-protector-strong", "-fstack-clash-protection", "-fcf-protection"],
    "aarch64": ["-fstack-protector-strong", "-fstack-clash-protection", "-mbranch-protection=standard"],
}.get(platform.machine(), ["-fstack-protector-strong", "-fstack-clash-protection"])
ASSERTIONS = "_ZSt21__glibcxx_assert_fail"


def readelf(file, *options):
    return subprocess.run(["readelf", "--wide", *options, file], check=True, capture_output=True, text=True,
                          env={"LC_ALL": "C"}).stdout


def elf_files(prefix):
    for file in sorted(pathlib.Path(prefix).rglob("*")):
        if file.is_file() and not file.is_symlink():
            with file.open("rb") as content:
                if content.read(4) == b"\x7fELF":
                    yield file


def weaknesses(file):
    """What a file lacks."""
    header, dynamic = readelf(file, "--file-header", "--program-headers"), readelf(file, "--dynamic")
    if not re.search(r"Type:\s+DYN", header):
        yield "has its code at a fixed address"
    if "INTERP" in header and not re.search(r"FLAGS_1.*\bPIE\b", dynamic):
        yield "is no position independent program"
    if "GNU_RELRO" not in header:
        yield "leaves its tables writable"
    if not re.search(r"FLAGS.*\b(BIND_)?NOW\b", dynamic):
        yield "binds late"
    if not re.search(r"GNU_STACK.* RW ", header):
        yield "has a stack that code runs on"
    for path in re.findall(r"R(?:UN)?PATH.*\[(.*)\]", dynamic):
        if any(not part.startswith("$ORIGIN") for part in path.split(":")):
            yield f"looks for libraries in {path}"
    for unit in re.findall(r"DW_AT_producer\s*:.*?(GNU C\+\+.*)", readelf(file, "--debug-dump=info", "--dwarf-depth=1")):
        for flag in COMPILED:
            if flag not in unit:
                yield f"is compiled without {flag}"


def main():
    prefix = sys.argv[1]
    files = list(elf_files(prefix))
    found = {f"{file.relative_to(prefix)} {weakness}" for file in files for weakness in weaknesses(file)}
    imports = "".join(readelf(file, "--dyn-syms") for file in files)
    if not files:
        found.add("there is no program and no library")
    if "__stack_chk_fail" not in imports:
        found.add("nothing watches its stack")
    if ASSERTIONS not in imports:
        found.add("the standard library checks nothing")
    if "--optimized" in sys.argv and not re.search(r"UND __\w+_chk\b", imports):
        found.add("nothing checks the sizes that it writes to")
    print(*sorted(found), sep="\n")
    return 1 if found else 0


if __name__ == "__main__":
    sys.exit(main())
