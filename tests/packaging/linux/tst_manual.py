# SPDX-License-Identifier: Apache-2.0
"""The manual pages render without complaint and say what pct says about itself."""

import re
import subprocess
import unittest

import pct_help
from surroundings import BUILD, ROOT, VERSION, environment, run

HELP = {"-h", "--help"}


def page(name):
    return BUILD / "man" / f"{name}.1"


def rendered(name, width="200"):
    text = run("man", "-l", page(name), env=environment(MANWIDTH=width))
    return re.sub(".\b", "", text)


def sections(text, indent):
    """The text below each heading that stands in this column."""
    parts = re.split(rf"^ {{{indent}}}(\S.*)\n", text, flags=re.MULTILINE)
    return dict(zip(parts[1::2], parts[2::2]))


def options_in(text):
    return set(re.findall(r"(?<![\w-])(--?[a-z][a-z-]*)", text))


def variables_read_in(folders):
    """The variables of ours that sources read, and the one that many programs share."""
    sources = [path.read_text() for folder in folders for path in (ROOT / folder).rglob("*.cpp")]
    read = r'(?:qgetenv|getenv|qEnvironmentVariable)\(\s*"(PCT_\w+|SOURCE_DATE_EPOCH)"'
    return {name for source in sources for name in re.findall(read, source)}


class ManualPages(unittest.TestCase):
    def test_both_render_without_warnings(self):
        for name in ("pct", "pelix-customization-tool"):
            with self.subTest(name):
                result = subprocess.run(
                    ["man", "--warnings", "-E", "UTF-8", "-l", "-Tutf8", "-Z", str(page(name))],
                    capture_output=True, text=True, check=True)
                self.assertEqual(result.stderr, "")
                self.assertGreater(len(result.stdout), 1000)

    def test_no_option_stands_in_two_parts(self):
        for width in ("60", "72", "80", "132"):
            with self.subTest(width):
                text = rendered("pct", width)
                self.assertIn("--allow-any-certificate", text)
                self.assertNotRegex(text, r"(?<![\w-])--[a-z-]+[-\u2010]\n")

    def test_both_have_the_usual_sections(self):
        for name in ("pct", "pelix-customization-tool"):
            with self.subTest(name):
                found = sections(rendered(name), 0)
                for wanted in ("NAME", "SYNOPSIS", "DESCRIPTION", "OPTIONS", "EXIT STATUS", "ENVIRONMENT", "FILES",
                               "EXAMPLES", "SEE ALSO"):
                    self.assertIn(wanted, found)
                self.assertRegex(found["NAME"], rf"^ +{name} - \w")

    def test_the_version_is_that_of_the_program(self):
        self.assertIn(f"Pelix Customization Tool {VERSION}", rendered("pct"))

    def test_every_verb_has_a_part_and_every_part_is_a_verb(self):
        parts = sections(sections(rendered("pct"), 0)["VERBS"], 3)
        self.assertEqual({title.replace("pct ", "") for title in parts}, set(pct_help.verbs()))

    def test_every_verb_has_its_options_and_no_others(self):
        parts = sections(sections(rendered("pct"), 0)["VERBS"], 3)
        for verb, options in pct_help.verbs().items():
            with self.subTest(verb):
                self.assertEqual(options_in(parts[f"pct {verb}"]) - {"-q"}, options - HELP - {"-q"})
                self.assertEqual("-q" in options_in(parts[f"pct {verb}"]), "-q" in options)

    def test_the_general_options_are_those_of_the_program(self):
        self.assertEqual(options_in(sections(rendered("pct"), 0)["OPTIONS"]), pct_help.general_options())

    def test_every_exit_code_has_its_meaning(self):
        codes = re.findall(r"constexpr int \w+ = (\d)", (ROOT / "cli/ExitCode.h").read_text())
        told = re.findall(r"^ +(\d) ", sections(rendered("pct"), 0)["EXIT STATUS"], re.MULTILINE)
        self.assertEqual(set(told), set(codes))

    def test_every_variable_that_a_program_reads_is_told(self):
        for name, folders in (("pct", ("cli", "config", "core", "hosttools", "package", "profile")),
                              ("pelix-customization-tool", ("app", "pages", "welcome"))):
            with self.subTest(name):
                told = set(re.findall(r"\b[A-Z]+(?:_[A-Z]+)+\b", sections(rendered(name), 0)["ENVIRONMENT"]))
                self.assertEqual(variables_read_in(folders) - told, set())


if __name__ == "__main__":
    unittest.main()
