#!/usr/bin/env python3
# SPDX-License-Identifier: Apache-2.0
"""make-search-index.py OUTPUT PAGE...: writes what the page Search of the guide looks through, a script with the texts of all
sections. A script and not data, because a page that is opened as a file may load nothing else from beside it."""

import json
import pathlib
import sys
import urllib.parse
import xml.etree.ElementTree as ET

HEADINGS = {"h1", "h2", "h3", "h4"}
INLINE = {"a", "b", "code", "em", "i", "kbd", "samp", "strong"}


def words(element):
    """The text of an element without the sections inside, in one line."""
    return " ".join("".join(pieces(element)).split())


def pieces(element):
    yield element.text or ""
    for child in element:
        if child.tag != "section" and child.tag not in HEADINGS:
            yield from pieces(child)
        yield "" if child.tag in INLINE else " "
        yield child.tail or ""


def heading(element):
    found = next(child for child in element if child.tag in HEADINGS)
    return " ".join("".join(found.itertext()).split())


def sections(page):
    main = ET.parse(page).getroot().find(".//main")
    title = heading(main)
    address = urllib.parse.quote(page.name)
    yield {"address": address, "page": title, "title": title, "text": words(main)}
    for section in main.iter("section"):
        yield {"address": address + "#" + urllib.parse.quote(section.get("id")), "page": title, "title": heading(section),
               "text": words(section)}


def main():
    output, *pages = map(pathlib.Path, sys.argv[1:])
    index = [section for page in sorted(pages) if page.name != "Search.html" for section in sections(page)]
    text = json.dumps(index, ensure_ascii=False, indent=0, sort_keys=True)
    output.write_text("window.guideIndex = " + text + ";\n", encoding="utf-8")


main()
