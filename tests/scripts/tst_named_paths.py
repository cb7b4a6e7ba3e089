# SPDX-License-Identifier: Apache-2.0
"""Every file and folder that the texts for developers name is there."""

import os
import re
import unittest
from fnmatch import fnmatchcase
from pathlib import Path

ROOT = Path(__file__).resolve().parents[2]
TEXTS = ("CONTRIBUTING.md", "docs/design.md")

# What a build makes or an installation has.
MADE = ("build/", "bin/", "lib/pct/", "libexec/pct/", "samples/", "Resources/")
ENDINGS = r"\w\.(h|cpp|mm|m|ui|ts|md|sh|py|lua|txt|yml|yaml|cmake|in|html|json)$"


def paths_below(root):
    """All files and folders, from the root, that are kept in the project."""
    found = []
    for folder, folders, files in os.walk(root):
        folders[:] = [name for name in folders if name not in (".git", "build")]
        place = Path(folder).relative_to(root)
        found += [(place / name).as_posix() for name in folders + files]
    return found


def is_path(word):
    if re.fullmatch(r"[A-Z/]+", word) or not re.fullmatch(r"[\w.<>*-]+(/[\w.<>*-]+)*/?", word):
        return False
    return "/" in word.removeprefix("./") or re.search(ENDINGS, word) is not None


def named_in(text):
    """Paths in code spans and links; those between fences are commands."""
    text = re.sub(r"^```.*?^```$", "", text, flags=re.MULTILINE | re.DOTALL)
    spans = [word for span in re.findall(r"`([^`]+)`", text) for word in span.strip('"').split()]
    return {word.removeprefix("./") for word in spans if is_path(word)}


def linked_in(text):
    return {link.partition("#")[0] for link in re.findall(r"\]\(([^)\s]+)\)", text)
            if "://" not in link and not link.startswith("#")}


def pattern_of(path):
    """As shell patterns go: what stands for a name, <Name> or a leading X_, is any."""
    return re.sub(r"<\w+>|(?<![\w.])X(?=_)", "*", path.rstrip("/"))


def is_there(path, paths):
    """The whole path or the end of one; the ending of a pair of files may be left out."""
    pattern = pattern_of(path)
    forms = (pattern, "*/" + pattern)
    forms += tuple(form + rest for form in forms for rest in (".*", "_*.*"))
    return any(fnmatchcase(candidate, form) for candidate in paths for form in forms)


class NamedPaths(unittest.TestCase):
    def test_each_is_there(self):
        paths = paths_below(ROOT)
        for name in TEXTS:
            text = (ROOT / name).read_text(encoding="utf-8")
            named = named_in(text)
            self.assertGreater(len(named), 20, name)
            missing = [path for path in sorted(named) if not path.startswith(MADE) and not is_there(path, paths)]
            self.assertEqual(missing, [], name)
            for link in sorted(linked_in(text)):
                self.assertTrue((ROOT / name).parent.joinpath(link).exists(), f"{name}: {link}")


class TheSearch(unittest.TestCase):
    def test_paths_are_told_from_other_code(self):
        text = ("`core/Here.h`, `Here.cpp` and `core/`, `\"core/Quoted.h\"`; not `ctest -R it`, `a.b()`, `OWNER/NAME`,"
                " `/usr/bin/env` or `-D A=b/c`\n```sh\nls fenced/file.h\n```\n[page](docs/page.md#part)")
        self.assertEqual(named_in(text), {"core/Here.h", "Here.cpp", "core/", "core/Quoted.h"})
        self.assertEqual(linked_in(text), {"docs/page.md"})

    def test_what_is_gone_is_missed(self):
        paths = ["core", "core/Here.h", "core/Here_linux.cpp", "cli/ShowVerb.cpp"]
        for path in ("core/", "core/Here.h", "Here.h", "core/Here", "cli/<Name>Verb.cpp", "X_linux.cpp", "core/*.h"):
            self.assertTrue(is_there(path, paths), path)
        for path in ("cores/", "core/Gone.h", "Gone.h", "core/Her", "app/<Name>Verb.cpp", "X_mac.cpp", "core/*.mm"):
            self.assertFalse(is_there(path, paths), path)


if __name__ == "__main__":
    unittest.main()
