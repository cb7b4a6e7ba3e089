#!/usr/bin/env python3
# SPDX-License-Identifier: Apache-2.0
"""What holds for the documents of the project: each is indexed, links lead somewhere, no row of a table stands twice, and
every picture is indexed once and is no copy of another.

tst_documents.py ROOT
"""
import hashlib
import pathlib
import re
import sys
import unittest
import urllib.parse
import xml.etree.ElementTree as ET

ROOT = pathlib.Path(sys.argv[1]).resolve()
GUIDE = ROOT / "resources/help/en-US"
PICTURES = ROOT / "docs/screenshots"
LINK = re.compile(r"\]\(([^)\s]+)\)")
CODE = re.compile(r"^```.*?^```$", re.MULTILINE | re.DOTALL)


def documents():
    """Not by git: a copy of the sources without a history is tested, too."""
    return [path for path in ROOT.rglob("*.md") if path.relative_to(ROOT).parts[0] not in ("build", ".git")]


def prose(document):
    return CODE.sub("", document.read_text())


def links(document):
    """Those into the checkout; the platform's own pages and the web are left to their readers."""
    for link in LINK.findall(prose(document)):
        if not re.match(r"[a-z]+:|\.\./\.\./releases$", link):
            yield urllib.parse.unquote(link)


def anchor(heading):
    return re.sub(r"[^\w\- ]", "", heading.strip().lower()).replace(" ", "-")


def anchors(document):
    return {anchor(heading) for heading in re.findall(r"^#+ (.*)$", prose(document), re.MULTILINE)}


def indexed(document):
    return {(document.parent / link.partition("#")[0]).resolve() for link in links(document)}


class Documents(unittest.TestCase):
    def test_there_are_some(self):
        self.assertGreater(len(documents()), 10)

    def test_each_is_in_the_index(self):
        index = ROOT / "docs/index.md"
        missing = set(documents()) - indexed(index) - {index}
        self.assertEqual(sorted(str(path.relative_to(ROOT)) for path in missing), [])

    def test_links_lead_somewhere(self):
        for document in documents():
            for link in links(document):
                path, _, fragment = link.partition("#")
                target = (document.parent / path).resolve() if path else document
                with self.subTest(document=document.name, link=link):
                    self.assertTrue(target.exists())
                    if fragment and target.suffix == ".md":
                        self.assertIn(fragment, anchors(target))

    def test_no_row_of_a_table_stands_twice(self):
        for document in documents():
            for table in re.findall(r"(?:^\|.*\n)+", prose(document), re.MULTILINE):
                rows = [row for row in table.splitlines() if not re.match(r"\|[ -]*-[-| ]*$", row)]
                self.assertEqual(len(rows), len(set(rows)), document)

    def test_no_list_has_a_gap(self):
        changelog = (ROOT / "CHANGELOG.md").read_text()
        self.assertNotRegex(changelog, r"(?m)^(- |  ).*\n\n- ")


class GuideWords(unittest.TestCase):
    # What files and controls are called in the products and on a Mac stays as it is there.
    NAMES = re.compile(r"Device Management|Mark the plugin to disable|Document Management|Quick Access Toolbar|mobile device management")
    OTHERS = {"settings file": r"configuration (document|file)", "quick-access": r"quick access",
              "plug-in": r"\bplugin", "signing certificate": r"code.?sign(ing)? certificate", "MDM": r"device management"}

    @staticmethod
    def told(page):
        """What a page says itself: no samples, messages and names of controls."""
        main = ET.parse(page).getroot().find(".//main")
        for parent in list(main.iter()):
            for quoted in [child for child in parent if child.tag in ("pre", "samp", "code", "b")]:
                quoted.clear()
        return " ".join("".join(main.itertext()).split())

    def test_a_thing_has_one_name(self):
        for page in sorted(GUIDE.glob("*.html")):
            text = self.NAMES.sub("", self.told(page)).replace("Plugins", "")
            for word, other in self.OTHERS.items():
                with self.subTest(page=page.name, word=word):
                    self.assertNotRegex(text, "(?i)" + other)

    def test_no_list_has_a_term_twice(self):
        for page in sorted(GUIDE.glob("*.html")):
            for terms in ET.parse(page).getroot().iter("dl"):
                pairs = ["".join(term.itertext()) for term in terms.iter("dt")]
                self.assertEqual(len(pairs), len(set(pairs)), page.name)

    def test_the_glossary_has_ten_words_in_order(self):
        words = ["".join(term.itertext()) for term in ET.parse(GUIDE / "Glossary.html").getroot().iter("dt")]
        self.assertEqual((len(words), words), (10, sorted(words, key=str.lower)))


class Pictures(unittest.TestCase):
    def test_each_is_in_the_index_once(self):
        named = re.findall(r"\((\S+\.png)\)", (PICTURES / "README.md").read_text())
        self.assertEqual(sorted(named), sorted(path.name for path in PICTURES.glob("*.png")))

    def test_none_is_a_copy(self):
        digests = {}
        for path in sorted(PICTURES.glob("*.png")):
            digests.setdefault(hashlib.sha256(path.read_bytes()).hexdigest(), []).append(path.name)
        self.assertEqual([names for names in digests.values() if len(names) > 1], [])


if __name__ == "__main__":
    unittest.main(argv=sys.argv[:1], verbosity=2)
