#!/usr/bin/env python3
# SPDX-License-Identifier: Apache-2.0
"""Runs what a Mac runs with its shell, over commands that are BSD's and with none that a Mac lacks.

tst_mac_shell.py PROJECT PCT STAND-INS SAMPLES
"""
import os
import re
import shutil
import subprocess
import sys
import tempfile
import unittest

PROJECT, PCT, STAND_INS, SAMPLES = [os.path.abspath(path) for path in sys.argv[1:5]]
APPLE_LIKE = os.path.join(PROJECT, "tests/support/apple-like")
VENDOR_PACKAGE = os.path.join(PROJECT, "tests/support/vendorpackage/make-vendor-package")
SANDBOX = os.path.join(PROJECT, "tests/support/installsandbox/run-install-script")
TITLES = {"editor": "Pelix PDF Editor", "reader": "Pelix PDF Reader"}
# What Linux and a Mac have alike, as far as our scripts ask for it.
COMMON = """awk basename bash cat chmod cksum cp cut diff dirname echo env expr false getconf gzip head iconv id ln ls
mkdir mv od openssl printenv printf python3 pwd rmdir sh sleep sort tail tee touch tr true uname uniq wc""".split()
# What bash 3.2 does not know, each with a line that has it.
TOO_NEW = {
    r"\b(mapfile|readarray)\b": "mapfile -t lines",
    r"\b(declare|typeset|local)\s+-\w*[Agn]": "declare -A table",
    r"\$\{[^}]*(,,|\^\^|@[A-Za-z]\})": "${name,,}",
    r"\|&|&>>|;;&|;&": "make |& tee log",
    r"\[ -v |\[\[ -v ": "[[ -v name ]]",
    r"\bwait -n\b|\bcoproc\b|\bexec \{\w+\}": "wait -n",
    r"%\([^)]*\)T|\$EPOCH": "printf '%(%F)T'",
    r"\bshopt -s (globstar|lastpipe)\b": "shopt -s lastpipe",
    r"\{\w+\.\.\w+\.\.\w+\}": "{1..9..2}",
    r"\$'[^']*\\[uU]": "$'\\u00e4'",
    # Of an array without members, "set -u" says that there is none.
    r"(?<![+])\"\$\{\w+\[@\]\}\"": '"${list[@]}"',
}
PLAYED = {
    "uname": "echo Darwin",
    "brew": """case $1 in
list) [ "$2" = --versions ] && [ $# -eq 3 ] && { echo "$3 1.0"; exit; }
    shift 2; for name in $*; do echo "$name 1.0"; done ;;
deps) echo zlib ;;
esac""",
    "cmake": 'echo "cmake $*" >>"$LOG"',
    "ctest": 'echo "ctest $*" >>"$LOG"',
    "lupdate": 'echo "lupdate $*" >>"$LOG"',
    "reuse": 'echo "reuse $*" >>"$LOG"',
}


def read(*path):
    with open(os.path.join(*path), encoding="utf-8") as file:
        return file.read()


def write(content, *path, mode=0o644):
    name = os.path.join(*path)
    os.makedirs(os.path.dirname(name), exist_ok=True)
    with open(name, "w", encoding="utf-8") as file:
        file.write(content)
    os.chmod(name, mode)


def bytes_of(path):
    with open(path, "rb") as file:
        return file.read()


def tree_of(folder):
    """Every file in a folder with what it holds."""
    paths = [os.path.join(place, name) for place, _, names in os.walk(folder) for name in names]
    return {os.path.relpath(path, folder): bytes_of(path) for path in paths}


def too_new(script):
    return [pattern for pattern in TOO_NEW if re.search(pattern, script)]


class MacShell(unittest.TestCase):

    @classmethod
    def setUpClass(cls):
        cls.folder = tempfile.mkdtemp()
        for name in COMMON:
            os.makedirs(cls.at("bin"), exist_ok=True)
            os.symlink(shutil.which(name), cls.at("bin", name))
        for name, script in PLAYED.items():
            write(f"#!/bin/sh\n{script}\n", cls.at("played", name), mode=0o755)

    @classmethod
    def tearDownClass(cls):
        shutil.rmtree(cls.folder)

    @classmethod
    def at(cls, *path):
        return os.path.join(cls.folder, *path)

    def setUp(self):
        self.log = self.at(self.id() + ".log")

    def macs_path(self, played=False):
        folders = [self.at("played")] if played else []
        return ":".join(folders + [APPLE_LIKE + "/shell", APPLE_LIKE, self.at("bin")])

    def run_it(self, *command, path=None, **environment):
        kept = {name: value for name, value in os.environ.items()
                if name not in ("SOURCE_DATE_EPOCH", "DISPLAY", "WAYLAND_DISPLAY")}
        return subprocess.run(command, check=False, capture_output=True, text=True, env={
            **kept, "PATH": path or self.macs_path(), "APPLE_LIKE_REAL": STAND_INS, "LOG": self.log, **environment})

    def logged(self):
        return read(self.log).splitlines() if os.path.exists(self.log) else []

    def test_what_a_mac_lacks_is_not_found(self):
        for name in ("sha256sum", "realpath", "nproc", "timeout", "tac", "md5sum"):
            self.assertNotEqual(self.run_it("/bin/sh", "-c", "command -v " + name).returncode, 0, name)

    def test_the_sample_packages_are_the_same_bytes(self):
        for product, title in TITLES.items():
            package = self.at(product + ".pkg")
            made = self.run_it(VENDOR_PACKAGE, "--product", product, "--output", package)
            self.assertEqual((made.returncode, made.stderr), (0, ""))
            self.assertEqual(bytes_of(package), bytes_of(os.path.join(SAMPLES, title + ".pkg")))

    def scripts_of(self, product):
        """The install scripts of a customized package."""
        package, parts = self.at(product + " out.pkg"), self.at(product + " parts")
        if not os.path.exists(parts):
            document = os.path.join(PROJECT, "tests/fuzz/seeds/document", product + ".xml")
            for command in ([PCT, "build", "-q", "--product", product, "--config", document, "--output", package,
                             "--input", os.path.join(SAMPLES, TITLES[product] + ".pkg")],
                            [os.path.join(STAND_INS, "pkgutil"), "--expand", package, parts]):
                subprocess.run(command, check=True, env={**os.environ, "PCT_HOSTTOOLS": STAND_INS})
        return os.path.join(parts, TITLES[product].replace(" ", "_") + ".pkg", "Scripts")

    def install(self, product, path, user):
        """What both scripts of a package do: exit codes, words, calls and files."""
        home = self.at("home")
        shutil.rmtree(home, ignore_errors=True)
        write("old", home, "Library/Application Support/Pelix Software/Pelix PDF", TITLES[product].split()[-1],
              "ProfStore.xml")
        calls, said = self.at("calls"), []
        open(calls, "w", encoding="utf-8").close()
        for name in ("preinstall", "postinstall"):
            run = self.run_it(SANDBOX, os.path.join(self.scripts_of(product), name), path=path, SANDBOX_HOME=home,
                              SANDBOX_CONSOLE_USER=user, SANDBOX_LOG=calls)
            said.append((run.returncode, run.stdout, run.stderr))
        return said, read(calls), tree_of(home)

    def test_patched_scripts_do_the_same_as_elsewhere(self):
        for product in TITLES:
            for user in ("jane", ""):
                with self.subTest(product=product, user=user):
                    on_a_mac = self.install(product, self.macs_path(), user)
                    self.assertEqual(on_a_mac, self.install(product, os.environ["PATH"], user))

    def test_patched_scripts_install_for_the_user_at_the_console(self):
        for product in TITLES:
            said, calls, files = self.install(product, self.macs_path(), "jane")
            self.assertEqual([code for code, _, _ in said], [0, 0], said)
            self.assertNotRegex(said[0][2] + said[1][2], "illegal|usage|not found")
            self.assertIn("currentuser: jane", said[1][1])
            self.assertIn("sudo -u jane", calls)
            document = [content for name, content in files.items() if name.endswith("ProfStore.xml")]
            self.assertEqual(document, [bytes_of(os.path.join(self.scripts_of(product), "ProfStore.xml"))])

    def test_patched_scripts_end_when_nobody_is_logged_in(self):
        for product in TITLES:
            said, _, files = self.install(product, self.macs_path(), "")
            self.assertEqual([code for code, _, _ in said], [1, 1], said)
            self.assertIn("Failed to get current logged-in user.", said[1][1])
            self.assertEqual(list(files.values()), [b"old"])

    def test_no_script_needs_a_newer_bash(self):
        for pattern, line in TOO_NEW.items():
            self.assertEqual(too_new(line), [pattern])
        self.assertEqual(too_new('${list[@]+"${list[@]}"} "$@" ${name%%.*} [[ $a =~ b ]] {1..9} <<< "$a"'), [])
        scripts = [os.path.join(PROJECT, name) for name in ("run", "test")] + [VENDOR_PACKAGE, SANDBOX]
        for folder in ("scripts", "packaging/macos", "packaging/release", "tests/support/installsandbox/commands"):
            names = os.listdir(os.path.join(PROJECT, folder))
            scripts += [os.path.join(PROJECT, folder, name) for name in names if name.endswith(".sh") or "." not in name]
        for product in TITLES:
            scripts += [os.path.join(self.scripts_of(product), name) for name in ("preinstall", "postinstall")]
        scripts.append(os.path.join(PROJECT, "resources/duti/duti"))
        self.assertGreater(len(scripts), 30)
        for script in scripts:
            self.assertEqual(too_new(read(script)), [], script)

    def checkout(self, *files):
        """A folder with some of the project's files."""
        folder = tempfile.mkdtemp(dir=self.folder)
        for name in files:
            os.makedirs(os.path.dirname(os.path.join(folder, name)), exist_ok=True)
            shutil.copy(os.path.join(PROJECT, name), os.path.join(folder, name))
        return folder

    def test_run_builds_and_opens_the_window(self):
        folder = self.checkout("run", "scripts/setup.sh", "scripts/packages-homebrew.txt")
        program = "build/dev/bin/Pelix Customization Tool.app/Contents/MacOS/Pelix Customization Tool"
        write('#!/bin/sh\necho "the window" >>"$LOG"\n', folder, program, mode=0o755)
        run = self.run_it(os.path.join(folder, "run"), path=self.macs_path(played=True))
        self.assertEqual((run.returncode, run.stderr), (0, ""))
        self.assertEqual(self.logged(), ["cmake --preset dev", "cmake --build --preset dev --target pct_window pct "
                                         "hosttools samples", "the window"])

    def test_test_leaves_out_what_is_not_for_a_mac(self):
        folder = self.checkout("test", "scripts/setup.sh", "scripts/packages-homebrew.txt")
        for arguments, presets, left_out in (([], ["ci", "asan"], "none|not-on-mac"),
                                             (["--quick"], ["ci"], "none|thorough|not-on-mac")):
            open(self.log, "w", encoding="utf-8").close()
            run = self.run_it(os.path.join(folder, "test"), *arguments, path=self.macs_path(played=True))
            self.assertEqual((run.returncode, run.stderr), (0, ""))
            self.assertEqual([line for line in self.logged() if "--build" in line],
                             ["cmake --build --preset " + preset for preset in presets])
            for line in [line for line in self.logged() if line.startswith("ctest")]:
                self.assertRegex(line, r"--parallel [1-9]\d* ")
                self.assertTrue(line.endswith("--label-exclude " + left_out), line)

    def test_the_layers_are_checked(self):
        folder = self.checkout("scripts/check-layers.sh")
        write("## Layout\n| `core/` | | |\n| `app/` | | core |\n", folder, "CONTRIBUTING.md")
        write("", folder, "app/a.h")
        write('#include "app/a.h"\n', folder, "core/a.h")
        run = self.run_it(os.path.join(folder, "scripts/check-layers.sh"))
        self.assertEqual((run.returncode, run.stderr), (1, "core/a.h:1: core/ may not include app/a.h\n"))
        write("", folder, "core/a.h")
        self.assertEqual(self.run_it(os.path.join(folder, "scripts/check-layers.sh")).returncode, 0)

    def test_licenses_are_checked(self):
        folder = self.checkout("scripts/check-licenses.sh")
        check = os.path.join(folder, "scripts/check-licenses.sh")
        self.assertEqual(self.run_it(check, path=self.macs_path(played=True)).returncode, 0)
        self.assertEqual(self.logged(), ["reuse lint"])
        write("int a;\n", folder, "a.cpp")
        refused = self.run_it(check, path=self.macs_path(played=True))
        self.assertEqual((refused.returncode, refused.stderr.splitlines()[1]), (1, "./a.cpp"))

    def test_the_changelog_is_checked(self):
        run = self.run_it(os.path.join(PROJECT, "scripts/check-changelog.sh"), PCT, PCT_HOSTTOOLS=STAND_INS)
        self.assertEqual((run.returncode, run.stderr), (0, ""))

    def test_translations_are_updated(self):
        run = self.run_it(os.path.join(PROJECT, "scripts/update-translations.sh"), self.at("played", "lupdate"), "a.ts")
        self.assertEqual(run.returncode, 0)
        self.assertTrue(self.logged()[0].endswith(" -ts a.ts"))

    def test_what_homebrew_has_is_listed(self):
        run = self.run_it(os.path.join(PROJECT, "packaging/release/list-brewed.sh"), "qtbase",
                          path=self.macs_path(played=True))
        self.assertEqual(run.stdout, "pkg:brew/qtbase@1.0\npkg:brew/zlib@1.0\n")


if __name__ == "__main__":
    unittest.main(argv=sys.argv[:1], verbosity=1)
