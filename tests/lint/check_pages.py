#!/usr/bin/python3
"""Holds the documents together: links, the navigation of the site, and the list of headers.

  check_pages.py REPOSITORY

A link to a file that does not exist is a problem, and so is one to a heading that is not there; a
page that the navigation does not lead to; and a list of headers that is not that of today.
"""

import pathlib
import re
import sys


def headings(text):
    """The anchors of a document's headings."""
    without_code = re.sub(r"^```.*?^```", "", text, flags=re.S | re.M)
    found = re.findall(r"^#+ (.*)$", without_code, flags=re.M)
    return {re.sub(r"[^\w\- ]", "", heading.lower()).strip().replace(" ", "-") for heading in found}


def broken_links(root, documents, assemble):
    for document in documents:
        for found in assemble.LINK.finditer((root / document).read_text(encoding="utf-8")):
            target = found[2]
            if not target or re.match(r"[a-z]+:", target):
                continue
            file, anchor = assemble.linked(document, target)
            if target.startswith("#"):
                file = document
            if not (root / file).is_file():
                yield f"{document}: {target} leads to no file"
            elif anchor and anchor not in headings((root / file).read_text(encoding="utf-8")):
                yield f"{document}: {target} leads to no heading"


def navigation(root, pages):
    """Pages that the navigation lacks, and entries without a page."""
    listed = set(re.findall(r": (\S+\.md)$", (root / "site" / "mkdocs.yml").read_text(
        encoding="utf-8"), flags=re.M))
    for page in sorted(pages - listed):
        yield f"site/mkdocs.yml: nothing leads to {page}"
    for page in sorted(listed - pages):
        yield f"site/mkdocs.yml: there is no {page}"


def main():
    root = pathlib.Path(sys.argv[1]).resolve()
    sys.path.insert(0, str(root / "site"))
    import assemble
    import reference

    documents = assemble.documents()
    problems = list(broken_links(root, documents, assemble))
    problems += navigation(root, {str(assemble.place_in_site(path)) for path in documents})
    if (root / "docs" / "headers.md").read_text(encoding="utf-8") != reference.headers_page():
        problems.append("docs/headers.md: not the headers of today; script/docs --reference")
    print("\n".join(problems) or f"{len(documents)} documents hold together")
    return 1 if problems or not documents else 0


if __name__ == "__main__":
    sys.exit(main())
