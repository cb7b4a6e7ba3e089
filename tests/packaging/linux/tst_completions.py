# SPDX-License-Identifier: Apache-2.0
"""What real shells offer for pct is what pct takes."""

import pathlib
import subprocess
import tempfile
import unittest

import pct_help
from surroundings import BUILD, environment, run

COMPLETIONS = BUILD / "completions"
# The same of a table with verbs below verbs.
SAMPLES = BUILD / "tests/completions"
HERE = pathlib.Path(__file__).parent

BASH = """
source "$1"
compopt() { :; }  # only an interactive shell has it
read -ra COMP_WORDS <<<"$2"
[[ $2 == *' ' ]] && COMP_WORDS+=('')
COMP_CWORD=$((${#COMP_WORDS[@]} - 1))
_pct
printf '%s\\n' "${COMPREPLY[@]}"
"""


class Shell:
    """A folder with files and a pct; offered() asks the shell, which reads the completions of `source`."""

    source = COMPLETIONS

    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.folder = pathlib.Path(folder.name)
        for name in ("vendor.pkg", "settings.xml", "old.mobileconfig", "notes.txt"):
            (self.folder / name).touch()
        (self.folder / "sub").mkdir()
        pct = self.folder / "bin/pct"
        pct.parent.mkdir()
        pct.write_text("#!/bin/sh\ntest \"$*\" = identities && echo 'Acme IT'\n")
        pct.chmod(0o755)
        self.environment = environment(PATH=f"{pct.parent}:/usr/bin:/bin", HOME=folder.name, TERM="xterm")

    def words(self, line):
        return set(self.offered(line))

    def files(self, line):
        return {name.rstrip("/") for name in self.offered(line)} - {"bin", "sub"}

    def ask(self, *command):
        lines = run(*command, env=self.environment, cwd=self.folder).splitlines()
        return [line for line in lines if line]


class Completions:
    """The same expectations of every shell."""

    def test_the_first_word_is_a_verb(self):
        verbs = {word for word in self.words("pct ") if not word.startswith("-")}
        self.assertEqual(verbs, pct_help.first_words() | {"help"})

    def test_help_takes_a_verb(self):
        self.assertEqual(self.words("pct help "), pct_help.first_words())

    def test_general_options_are_those_of_pct(self):
        self.assertEqual(self.words("pct -"), pct_help.general_options())

    def test_options_of_every_verb_are_those_of_pct(self):
        for verb, options in pct_help.verbs().items():
            with self.subTest(verb):
                self.assertEqual(self.words(f"pct {verb} -"), options)

    def test_a_product_is_editor_or_reader(self):
        for verb in ("check", "build", "profile"):
            with self.subTest(verb):
                self.assertEqual(self.words(f"pct {verb} --product "), {"editor", "reader"})
        self.assertEqual(self.words("pct build --product ed"), {"editor"})

    def test_files_are_offered_by_their_kind(self):
        for line, wanted in (
            ("pct check ", "vendor.pkg"),
            ("pct build --input ", "vendor.pkg"),
            ("pct build --output ", "vendor.pkg"),
            ("pct build --config ", "settings.xml"),
            ("pct build --keep-config ", "settings.xml"),
            ("pct profile --config ", "settings.xml"),
            ("pct profile --from ", "old.mobileconfig"),
            ("pct profile --output ", "old.mobileconfig"),
        ):
            with self.subTest(line):
                self.assertEqual(self.files(line), {wanted})

    def test_settings_are_in_documents_profiles_and_packages(self):
        settings = {"vendor.pkg", "settings.xml", "old.mobileconfig"}
        for line in ("pct show ", "pct diff ", "pct diff settings.xml "):
            with self.subTest(line):
                self.assertEqual(self.files(line), settings)

    def test_identities_are_asked_from_pct(self):
        (offer,) = self.words("pct profile --sign ")
        self.assertEqual(offer.replace("\\", ""), "Acme IT")

    def test_free_texts_offer_nothing(self):
        for option in ("--identifier", "--uuid"):
            with self.subTest(option):
                self.assertEqual(self.words(f"pct profile {option} "), set())


class SubVerbs:
    """Verbs below verbs, and operands and options of every kind."""

    source = SAMPLES

    def test_a_verb_with_others_below_it_offers_them(self):
        self.assertEqual(self.words("pct config ") - {"-h", "--help"}, {"new", "get"})
        self.assertEqual(self.words("pct config n"), {"new"})
        self.assertEqual(self.words("pct ") & {"config", "pick", "new", "get"}, {"config", "pick"})

    def test_help_goes_on_below_a_verb(self):
        self.assertEqual(self.words("pct help config "), {"new", "get"})
        self.assertEqual(self.words("pct help pick "), set())

    def test_options_are_those_of_the_verb_below(self):
        self.assertEqual(self.words("pct config new -"), {"--set", "--output", "-h", "--help"})
        self.assertEqual(self.words("pct config get -"), {"-h", "--help"})
        self.assertEqual(self.words("pct config -"), {"-h", "--help"})

    def test_values_are_those_of_the_verb_below(self):
        self.assertEqual(self.files("pct config new --output "), {"settings.xml"})
        self.assertEqual(self.words("pct pick --one "), {"a", "b"})

    def test_every_operand_is_a_file(self):
        settings = {"vendor.pkg", "settings.xml", "old.mobileconfig"}
        for line in ("pct lint ", "pct lint settings.xml ", "pct lint a b "):
            with self.subTest(line):
                self.assertEqual(self.files(line), settings)

    def test_an_option_can_be_repeated(self):
        self.assertIn("--set", self.words("pct config new --set a=1 -"))


class Bash(Shell):
    def offered(self, line):
        return self.ask("bash", "--norc", "-c", BASH, "bash", self.source / "pct.bash", line)

    def test_the_script_is_sound(self):
        subprocess.run(["shellcheck", "--shell=bash", self.source / "pct.bash"], check=True)

    def test_the_function_is_registered(self):
        command = f"source {self.source / 'pct.bash'}; complete -p pct"
        self.assertEqual(self.ask("bash", "--norc", "-c", command), ["complete -F _pct pct"])


class Fish(Shell):
    def offered(self, line):
        command = f"source {self.source / 'pct.fish'}; complete -C '{line}'"
        return [line.split("\t")[0] for line in self.ask("fish", "--no-config", "-c", command)]


class Zsh(Shell):
    @classmethod
    def setUpClass(cls):
        folder = tempfile.TemporaryDirectory()
        cls.addClassCleanup(folder.cleanup)
        cls.cache = pathlib.Path(folder.name) / "functions"

    def offered(self, line):
        return self.ask("zsh", "-f", HERE / "complete.zsh", self.source, self.cache, line)

    def test_the_syntax_is_sound(self):
        subprocess.run(["zsh", "-n", self.source / "_pct"], check=True)


for shell in (Bash, Fish, Zsh):
    for expectations in (Completions, SubVerbs):
        name = shell.__name__ + expectations.__name__
        globals()[name] = type(name, (expectations, shell, unittest.TestCase), {})


if __name__ == "__main__":
    unittest.main()
