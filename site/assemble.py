#!/usr/bin/python3
"""Puts the pages together that mkdocs builds the site of: docs/, and what they link to.

  assemble.py FOLDER

Documents at the top of the repository become pages, other files that a page links to are copied as
text, and links are changed to fit.
"""

import os
import pathlib
import re
import shutil
import sys

ROOT = pathlib.Path(__file__).resolve().parent.parent

TOP = {
    "README.md": "overview.md",
    "CONTRIBUTING.md": "contributing.md",
    "CHANGELOG.md": "changelog.md",
    "THIRD-PARTY.md": "third-party.md",
}

# [text](target) and ![text](target); code is left alone by looking for it first.
LINK = re.compile(r"(```.*?^```|`[^`\n]*`)|\]\(([^)\s]+)\)", flags=re.S | re.M)


def documents():
    """All documents, as places in the repository."""
    return [*map(pathlib.Path, TOP),
            *sorted(path.relative_to(ROOT) for path in (ROOT / "docs").rglob("*.md"))]


def is_local(target):
    return not re.match(r"[a-z]+:|#", target)


def place_in_site(place):
    """Where a file of the repository stands in the site."""
    if place.parts[0] == "docs" and place.suffix in (".md", ".svg", ".png"):
        return pathlib.Path(*place.parts[1:])
    if str(place) in TOP:
        return pathlib.Path(TOP[str(place)])
    return pathlib.Path("source", f"{place}.txt")


def linked(document, target):
    """The file of the repository that a link in a document leads to, and the place in it."""
    path, _, anchor = target.partition("#")
    return pathlib.Path(os.path.normpath(document.parent / path)), anchor


def assemble(folder):
    pages = documents()
    others = set()
    for document in pages:
        own = place_in_site(document)

        def changed(found, document=document, own=own):
            if found[1] or not is_local(found[2]):
                return found[0]
            file, anchor = linked(document, found[2])
            if not (ROOT / file).is_file():
                raise FileNotFoundError(f"{document} links to {found[2]}, which is no file")
            if file not in pages:
                others.add(file)
            place = os.path.relpath(place_in_site(file), own.parent)
            return f"]({place}{'#' if anchor else ''}{anchor})"

        page = folder / own
        page.parent.mkdir(parents=True, exist_ok=True)
        text = (ROOT / document).read_text(encoding="utf-8")
        page.write_text(LINK.sub(changed, text), encoding="utf-8")
    for file in others:
        copy = folder / place_in_site(file)
        copy.parent.mkdir(parents=True, exist_ok=True)
        shutil.copy(ROOT / file, copy)
    shutil.copy(ROOT / "site" / "site.css", folder)


def main():
    folder = pathlib.Path(sys.argv[1])
    shutil.rmtree(folder, ignore_errors=True)
    assemble(folder)


if __name__ == "__main__":
    main()
