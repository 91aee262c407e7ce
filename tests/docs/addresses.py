# SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
# SPDX-License-Identifier: LGPL-2.1-or-later
"""addresses.py REPOSITORY DOXYFILE FOLDER: pages and packages have the public addresses that are set, and no others."""

import pathlib
import re
import shutil
import subprocess
import sys

repository, doxyfile, folder = (pathlib.Path(name).resolve() for name in sys.argv[1:])
HOME, CONTACT = "https://connui.test/nfc", "team@connui.test"
FILES = ("control", "changelog", "copyright")


def expect(what, seen, wanted):
    if seen != wanted:
        sys.exit(f"{what}: expected {wanted!r}, saw {seen!r}")


def packaged(name, repository_address, contact):
    """The files of the packages of a tree in which these addresses are set."""
    tree = folder / name
    shutil.copytree(repository / "debian", tree / "debian")
    build = (repository / "CMakeLists.txt").read_text()
    for variable, value in (("REPOSITORY", repository_address), ("CONTACT", contact)):
        build, count = re.subn(rf"^set\(CONNUI_{variable} .*$", f'set(CONNUI_{variable} "{value}")', build, flags=re.MULTILINE)
        expect(f"settings of {variable}", count, 1)
    (tree / "CMakeLists.txt").write_text(build)
    subprocess.run([tree / "debian/addresses", tree], check=True)
    return "".join((tree / "debian" / name).read_text() for name in FILES)


def main_page(name, **settings):
    """The first page of a reference that is made with these settings of Doxygen."""
    output = folder / name
    output.mkdir(parents=True)
    lines = [doxyfile.read_text(), f"OUTPUT_DIRECTORY = {output}", *(f"{key} = {value}" for key, value in settings.items())]
    (output / "Doxyfile").write_text("\n".join(lines) + "\n")
    subprocess.run(["doxygen", output / "Doxyfile"], check=True)
    return (output / "html/index.html").read_text()


shutil.rmtree(folder, ignore_errors=True)
unset = packaged("unset", "", "")
expect("addresses in packages", re.findall(r"^(?:Homepage|Source): http.*|<[^>]*@(?!unset\.invalid>)[^>]*>", unset, re.MULTILINE), [])
texts = packaged("set", HOME, CONTACT)
for line in (f"Homepage: {HOME}", f"Source: {HOME}", f"Maintainer: The ConnUi NFC authors <{CONTACT}>"):
    expect(line, line in texts.splitlines(), True)
expect("invalid addresses", "@unset.invalid" in texts, False)

expect("addresses on the main page", "Report vulnerabilities" in main_page("without", ENABLED_SECTIONS=""), False)
page = main_page("with", ALIASES=f'repository={HOME} tracker= contact={CONTACT}', ENABLED_SECTIONS="hasREPOSITORY hasCONTACT")
expect("the repository", HOME in page, True)
expect("the contact", "Report vulnerabilities" in page, True)
expect("the tracker", "Report bugs" in page, False)
