# SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
# SPDX-License-Identifier: LGPL-2.1-or-later
"""links.py REPOSITORY: every relative link of the Markdown pages, and every path that they show as code, leads somewhere.

And every folder of the repository has its place in README's table of them.
"""

import pathlib
import re
import sys

LINK = re.compile(r"\[[^\]]*\]\(([^)\s]+)\)")
FENCE = re.compile(r"^```.*?^```$", re.MULTILINE | re.DOTALL)
HEADING = re.compile(r"^#+ +(.*)$", re.MULTILINE)
# A path is code with one of the tree's folders in front. A pattern or a placeholder is none.
FOLDERS = ("benchmarks client cmake completions daemon debian docs examples include interfaces platform qml scripts simulator"
           " src testing tests tools translations viewer").split()
CODE = re.compile(rf"`((?:{'|'.join(FOLDERS)})/[\w./-]*)`")
LAYOUT = re.compile(r"^## Layout$(.*?)^## ", re.MULTILINE | re.DOTALL)
# The folder of builds and the texts of the licenses are not part of the layout.
UNTOLD = {"build", "LICENSES"}


def anchor(heading):
    """The anchor that a heading gets: lower case, words joined by dashes."""
    return re.sub(r"[^\w\- ]", "", heading.lower()).replace(" ", "-")


def anchors(page):
    text = FENCE.sub("", page.read_text(encoding="utf-8"))
    return {anchor(heading) for heading in HEADING.findall(text)}


def is_there(page, link):
    path, _, fragment = link.partition("#")
    target = page.parent / path if path else page
    return target.exists() and (not fragment or fragment in anchors(target))


def broken(repository, page):
    text = FENCE.sub("", page.read_text(encoding="utf-8"))
    links = [link for link in LINK.findall(text) if not re.match(r"\w+:", link)]
    return [link for link in links if not is_there(page, link)] + [
        path for path in CODE.findall(text) if not (repository / path).exists()
    ]


def untold(repository):
    """The folders that README's table does not name."""
    layout = LAYOUT.search((repository / "README.md").read_text(encoding="utf-8"))[1]
    folders = {path.name for path in repository.iterdir() if path.is_dir() and not path.name.startswith(".")}
    return sorted(folders - UNTOLD - {path.rstrip("/") for path in CODE.findall(layout)})


root = pathlib.Path(sys.argv[1])
pages = [page for folder in (".", "docs") for page in sorted((root / folder).glob("*.md"))]
if not pages:
    sys.exit(f"no pages in {root}")
failures = [f"{page.relative_to(root)}: {link}" for page in pages for link in broken(root, page)]
failures += [f"README.md: the layout lacks {folder}/" for folder in untold(root)]
sys.exit("\n".join(failures) or 0)
