# SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
# SPDX-License-Identifier: LGPL-2.1-or-later
"""desktop.py PREFIX SOURCE

Holds what is installed in PREFIX to what desktops and phones' shells expect of applications: valid desktop and metainfo
files in every language of the catalogues, the icons that they name, and completions of every program in bash.
"""

import configparser
import pathlib
import subprocess
import sys
from xml.etree import ElementTree

PREFIX, SOURCE = map(pathlib.Path, sys.argv[1:])
SHARE = PREFIX / "share"
# In every language the same word.
NAMES_FOR_ALL = ("NFC",)
LANGUAGE = "{http://www.w3.org/XML/1998/namespace}lang"

LANGUAGES = {catalogue.stem.rpartition("_")[2] for catalogue in SOURCE.glob("translations/*.ts")} - {"en"}
faults = []


def check(holds, fault):
    if not holds:
        faults.append(fault)


def is_accepted(*command):
    outcome = subprocess.run(command, stdout=subprocess.PIPE, stderr=subprocess.STDOUT, text=True, check=False)
    check(outcome.returncode == 0 and "warning" not in outcome.stdout, f"{command[0]}: {outcome.stdout.strip()}")


def entry_of(file):
    reader = configparser.RawConfigParser(interpolation=None)
    reader.optionxform = str
    reader.read(file, encoding="utf-8")
    return reader["Desktop Entry"]


def desktop_file_is_whole(file):
    is_accepted("desktop-file-validate", file)
    entry = entry_of(file)
    visible = entry.get("NoDisplay") != "true"
    texts = ["Name", "Comment"] + ["Keywords"] * visible
    for key in texts:
        check(key in entry, f"{file.name}: no {key}")
        for language in LANGUAGES:
            check(f"{key}[{language}]" in entry or entry.get(key) in NAMES_FOR_ALL, f"{file.name}: no {key}[{language}]")
    icon = SHARE / "icons" / "hicolor" / "scalable" / "apps" / f"{entry['Icon']}.svg"
    check(icon.exists(), f"{file.name}: the icon {entry['Icon']} is not installed")
    check((PREFIX / "bin" / entry["Exec"].split()[0]).exists(), f"{file.name}: {entry['Exec']} is not installed")
    forms = entry.get("X-Purism-FormFactor", ""), entry.get("X-KDE-FormFactors", "")
    check("Mobile" in forms[0] and "handset" in forms[1], f"{file.name}: shells of phones hide it")


def metainfo_is_whole(file):
    outcome = subprocess.run(["appstreamcli", "validate", "--no-net", file], capture_output=True, text=True, check=False)
    # Later releases miss an address, which is there when CONNUI_REPOSITORY is set.
    wrong = [line for line in outcome.stdout.splitlines()
             if line.startswith(("E:", "W:")) and not line.endswith("url-homepage-missing")]
    check(not wrong and (outcome.returncode == 0 or "url-homepage-missing" in outcome.stdout),
          f"appstreamcli: {outcome.stdout.strip()}{outcome.stderr.strip()}")
    component = ElementTree.parse(file).getroot()
    for tag in ("name", "summary", "description/p"):
        found = component.findall(tag)
        missing = LANGUAGES - {element.get(LANGUAGE) for element in found}
        check(not missing or found[0].text in NAMES_FOR_ALL, f"{file.name}: no {tag} in {sorted(missing)}")
    launchable = component.findtext("launchable")
    check((SHARE / "applications" / launchable).exists(), f"{file.name}: {launchable} is not installed")


COMPLETE = """
. /usr/share/bash-completion/bash_completion
_completion_loader "$1"
COMP_WORDS=("$@")
COMP_LINE="$*"
COMP_POINT=${#COMP_LINE}
COMP_CWORD=$(($# - 1))
"$(complete -p "$1" | sed 's/.*-F \\([^ ]*\\).*/\\1/')" "$1" "${COMP_WORDS[COMP_CWORD]}" "${COMP_WORDS[COMP_CWORD - 1]}"
printf '%s\\n' "${COMPREPLY[@]}"
"""


def offers_of(*words):
    outcome = subprocess.run(["bash", "--norc", "-c", COMPLETE, "complete", *words], capture_output=True, text=True,
                             check=False, cwd=PREFIX,
                             env={"PATH": f"{PREFIX}/bin:/usr/bin:/bin", "XDG_DATA_DIRS": f"{SHARE}", "HOME": "/nowhere",
                                  "BASH_COMPLETION_USER_DIR": "/nowhere"})
    check(not outcome.stderr, f"completion of {words}: {outcome.stderr.strip()}")
    return outcome.stdout.split()


def offers(*words, of):
    found = offers_of(*words)
    check(of in found, f"completion of {words}: {found} without {of}")


def main():
    desktop_files = [*SHARE.glob("applications/*.desktop"), *PREFIX.glob("etc/xdg/autostart/*.desktop")]
    for file in desktop_files:
        desktop_file_is_whole(file)
    metainfo_files = [*SHARE.glob("metainfo/*.xml")]
    for file in metainfo_files:
        metainfo_is_whole(file)
    programs = [program.name for program in (PREFIX / "bin").iterdir()]
    for program in programs:
        offers(program, "--he", of="--help")
    offers("nfc-ui", "--re", of="--remote-control")
    offers("nfcd-sim", "--", of="--handlers")
    offers("nfctap", "uns", of="unsupported")
    offers("nfctap", "write", "ur", of="uri")
    offers("nfctap", "power", "o", of="off")
    offers("nfctap", "message", "share/dbus-1/interfaces/com.tavix.nfc.M", of="share/dbus-1/interfaces/com.tavix.nfc.Manager.xml")
    check((len(desktop_files), len(metainfo_files), len(programs)) == (6, 3, 9), "other files than are known here")
    sys.exit("\n".join(faults) or 0)


if __name__ == "__main__":
    main()
