# SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
# SPDX-License-Identifier: LGPL-2.1-or-later
"""links.py REPOSITORY: every relative link of the Markdown pages, and every path that they show as code, leads somewhere."""

import pathlib
import re
import sys

LINK = re.compile(r"\[[^\]]*\]\(([^)\s]+)\)")
FENCE = re.compile(r"^```.*?^```$", re.MULTILINE | re.DOTALL)
HEADING = re.compile(r"^#+ +(.*)$", re.MULTILINE)
# A path is code with one of the tree's folders in front. A pattern or a placeholder is none.
CODE = re.compile(
    r"`((?:benchmarks|client|cmake|daemon|docs|examples|include|interfaces|platform|scripts|simulator|src|tests|translations|viewer)"
    r"/[\w./-]*)`"
)


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


root = pathlib.Path(sys.argv[1])
pages = [page for folder in (".", "docs") for page in sorted((root / folder).glob("*.md"))]
if not pages:
    sys.exit(f"no pages in {root}")
failures = [f"{page.relative_to(root)}: {link}" for page in pages for link in broken(root, page)]
sys.exit("\n".join(failures) or 0)
