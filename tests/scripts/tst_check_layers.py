# SPDX-License-Identifier: Apache-2.0
"""check-layers.sh finds what goes against the table of folders, and where table and folders differ."""

import subprocess
import tempfile
import unittest
from pathlib import Path

ROOT = Path(__file__).resolve().parents[2]

TABLE = """
| Folder | What it holds | May include |
| --- | --- | --- |
| `ground/` | what all stand on | |
| `ground/narrow/` | with rules of its own | |
| `house/` | `rooms/`, which follow the rules of the house | ground |
| `trials/` | what tries the others | everything |
| `papers/` | no sources | |
"""


class Layers(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.project = Path(folder.name)
        self.write("CONTRIBUTING.md", f"# Contributing\n\n## Layout\n{TABLE}\n## Further\n\n| `later/` | | |\n")
        self.write("ground/Stone.h", "")
        self.write("ground/CMakeLists.txt", "")
        self.write("ground/narrow/Gap.cpp", '#include "ground/narrow/Gap.h"\n')
        self.write("house/Door.cpp", '#include "house/rooms/Room.h"\n#include "ground/Stone.h"\n#include <vector>\n')
        self.write("house/rooms/Room.cpp", '#include "house/Door.h"\n#include "ground/narrow/Gap.h"\n')
        self.write("trials/Trial.cpp", '#include "house/Door.h"\n#include "trials/Trial.moc"\n')
        self.write("papers/notes.md", "")

    def write(self, path, text):
        file = self.project / path
        file.parent.mkdir(parents=True, exist_ok=True)
        file.write_text(text)

    def replace_in_table(self, old, new):
        file = self.project / "CONTRIBUTING.md"
        text = file.read_text()
        self.assertIn(old, text)
        file.write_text(text.replace(old, new))

    def found(self):
        result = subprocess.run([ROOT / "scripts/check-layers.sh", self.project],
                                capture_output=True, text=True, check=False)
        self.assertEqual(result.stdout, "")
        self.assertEqual(result.returncode != 0, result.stderr != "")
        return result.stderr.splitlines()

    def test_what_keeps_to_the_table_is_silent(self):
        self.assertEqual(self.found(), [])

    def test_an_include_upwards_is_found_with_its_place(self):
        self.write("ground/Stone.h", '#pragma once\n#include "house/Door.h"\n')
        self.assertEqual(self.found(), ["ground/Stone.h:2: ground/ may not include house/Door.h"])

    def test_imports_of_objective_c_count(self):
        for ending in ("m", "mm"):
            with self.subTest(ending):
                self.write(f"ground/Stone.{ending}", '#import "house/Door.h"\n')
                self.assertIn(f"ground/Stone.{ending}:1: ground/ may not include house/Door.h", self.found())

    def test_a_folder_without_a_row_keeps_the_rules_above_it(self):
        self.write("house/rooms/deeper/Bed.h", '#include "trials/Trial.h"\n')
        self.assertEqual(self.found(), ["house/rooms/deeper/Bed.h:1: house/ may not include trials/Trial.h"])

    def test_a_folder_with_a_row_has_its_own_rules_only(self):
        self.write("ground/narrow/Gap.h", '#include "ground/Stone.h"\n')
        self.assertEqual(self.found(), ["ground/narrow/Gap.h:1: ground/narrow/ may not include ground/Stone.h"])

    def test_a_name_that_only_begins_alike_is_another_folder(self):
        self.write("ground/narrower/Gap.h", '#include "ground/Stone.h"\n')
        self.assertEqual(self.found(), [])

    def test_a_folder_of_sources_needs_a_row(self):
        self.write("shed/CMakeLists.txt", "")
        self.assertEqual(self.found(), ["CONTRIBUTING.md: shed/ has no row"])

    def test_an_included_folder_needs_a_row(self):
        self.write("shed/Tool.h", "")
        self.write("house/Door.h", '#include "shed/Tool.h"\n')
        self.assertEqual(self.found(), ["house/Door.h:1: shed/ has no row in CONTRIBUTING.md"])

    def test_an_including_folder_needs_a_row(self):
        self.write("shed/Tool.h", '#include "ground/Stone.h"\n')
        self.assertEqual(self.found(), ["shed/Tool.h:1: shed/ has no row in CONTRIBUTING.md"])

    def test_a_row_needs_a_folder(self):
        self.replace_in_table("| `papers/`", "| `attic/` | nothing | |\n| `papers/`")
        self.assertEqual(self.found(), ["CONTRIBUTING.md: there is no folder attic/"])

    def test_each_folder_has_one_row(self):
        self.replace_in_table("| `papers/`", "| `ground/` | once more | house |\n| `papers/`")
        self.assertIn("CONTRIBUTING.md: ground/ has two rows", self.found())

    def test_what_may_be_included_is_a_folder(self):
        self.replace_in_table("| ground |", "| ground, grounds |")
        self.assertEqual(self.found(), ["CONTRIBUTING.md: there is no folder grounds/"])

    def test_without_a_table_nothing_passes(self):
        self.replace_in_table("## Layout", "## Elsewhere")
        self.assertIn("CONTRIBUTING.md: there is no table of folders", self.found())


if __name__ == "__main__":
    unittest.main()
