#!/usr/bin/env python3
# SPDX-License-Identifier: Apache-2.0
"""Walks the table of the macOS commands and holds the stand-ins and the Apple-like commands to its rows.

tst_macos_commands.py TABLE STAND-INS APPLE-LIKE SAMPLE-PACKAGE
"""
import functools
import getpass
import os
import plistlib
import re
import shlex
import shutil
import subprocess
import sys
import tempfile
import unittest

TABLE, STAND_INS, APPLE_LIKE, SAMPLE = [os.path.abspath(path) for path in sys.argv[1:5]]
IDENTITY = "Pelix Deployment"
PROFILE = {"PayloadType": "Configuration", "PayloadVersion": 1, "PayloadIdentifier": "of.the.user",
           "PayloadUUID": "A1B2", "PayloadDisplayName": "A profile", "PayloadContent": [
               {"PayloadType": "org.example.settings", "PayloadIdentifier": "org.example", "PayloadUUID": "C3D4"},
               {"PayloadType": "com.apple.ManagedClient.preferences", "PayloadIdentifier": "org.example.forced",
                "PayloadUUID": "E5F6", "PayloadContent": {"org.example.settings": {"Forced": [
                    {"mcx_preference_settings": {"Key": 1}}]}}}]}
# The states that a row begins with, when it is not the plain one.
WITH_PROFILES = {"profiles-user", "profiles-root", "profiles-forced", "report"}
AS_ROOT = {"profiles-none-root", "profiles-root"}
REJECTED = {"notarytool-invalid"}
WITHOUT_IDENTITY = {"security-identities-none"}


def rows():
    """The rows by their ids."""
    found = {}
    with open(TABLE, encoding="utf-8") as table:
        for line in table:
            cells = [cell.strip() for cell in line.strip().strip("|").split("|")]
            if len(cells) != 7 or not cells[0].startswith("`"):
                continue
            row = dict(zip(("id", "call", "exit", "says", "effects", "held", "source"), cells))
            for key in ("id", "call", "says"):
                row[key] = row[key].removeprefix("`").removesuffix("`")
            assert row["id"] not in found, row["id"]
            found[row["id"]] = row
    return found


def openssl(*arguments):
    return subprocess.run(["openssl", *arguments], check=True, capture_output=True).stdout


@functools.cache
def identity():
    """A certificate that can sign code, with its key."""
    with tempfile.TemporaryDirectory() as folder:
        key, certificate = os.path.join(folder, "key"), os.path.join(folder, "certificate")
        openssl("req", "-x509", "-nodes", "-newkey", "rsa:2048", "-days", "2", "-subj", "/CN=" + IDENTITY, "-addext",
                "keyUsage=critical,digitalSignature", "-addext", "extendedKeyUsage=codeSigning", "-keyout", key,
                "-out", certificate)
        with open(key, "rb") as first, open(certificate, "rb") as second:
            return first.read() + second.read()


class Place:
    """A folder with everything that the calls name, and the programs of one set."""

    def __init__(self, programs, row):
        self.programs = programs
        self.folder = tempfile.TemporaryDirectory()
        self.environment = {**os.environ, "LC_ALL": "C.UTF-8", "TMPDIR": self.path("tmp"),
                            "APPLE_LIKE_REAL": STAND_INS, "PCT_PROFILES_DIR": self.path("profiles"),
                            "PCT_IDENTITIES_DIR": self.path("identities"),
                            "APPLE_LIKE_ROOT": "1" if row["id"] in AS_ROOT else "",
                            "APPLE_LIKE_VERDICT": "Invalid" if row["id"] in REJECTED else "Accepted"}
        self.words = {word: self.path(word) for word in ("NEW", "MISSING", "FOLDER", "COPY", "LINK", "PARTS")}
        self.words.update(PKG=self.path("PKG.pkg"), PLAIN=self.path("PLAIN.pkg"),
                          PROFILE=self.path("PROFILE.mobileconfig"), SIGNED=self.path("SIGNED"),
                          HOLLOW=self.path("HOLLOW"), SCRIPTS=self.path("SCRIPTS"),
                          IDENTITY=IDENTITY, NOBODY="Nobody at all")
        self.fill(row)

    def path(self, name):
        return os.path.join(self.folder.name, name)

    def write(self, name, content):
        with open(self.path(name), "wb") as file:
            file.write(content)

    def read(self, word):
        with open(self.words[word], "rb") as file:
            return file.read()

    def fill(self, row):
        for name in ("tmp", "profiles", "identities", "FOLDER"):
            os.mkdir(self.path(name))
        for name in ("PKG.pkg", "COPY"):
            shutil.copyfile(SAMPLE, self.path(name))
        self.write("PLAIN.pkg", b"plain\n")
        self.write("FOLDER/inside", b"inside\n")
        os.symlink("PLAIN.pkg", self.path("LINK"))
        self.write("PROFILE.mobileconfig", plistlib.dumps(PROFILE))
        if row["id"] not in WITHOUT_IDENTITY:
            self.write("identities/one.pem", identity())
            os.chmod(self.path("identities/one.pem"), 0o600)
        if row["call"].startswith("security cms -D"):
            self.sign("PROFILE.mobileconfig", "SIGNED")
            self.write("empty", b"")
            self.sign("empty", "HOLLOW")
        if "PARTS" in row["call"] or "SCRIPTS" in row["call"]:
            self.stand_in("pkgutil", "--expand", self.path("PKG.pkg"), self.path("PARTS"))
            self.pack_scripts()
        if row["id"] in WITH_PROFILES:
            self.install("User", "of.the.user")
            self.install("System", "of.the.device")

    def sign(self, source, target):
        pem = self.path("identities/one.pem")
        openssl("cms", "-sign", "-binary", "-nodetach", "-outform", "DER", "-signer", pem, "-inkey", pem, "-in", self.path(source), "-out", self.path(target))

    def pack_scripts(self):
        folder = os.path.join(self.path("PARTS"), "Pelix_PDF_Editor.pkg", "Scripts")
        subprocess.run(["bsdtar", "-cf", self.path("SCRIPTS"), "--format", "odc", "-C", folder, "."], check=True)

    def install(self, scope, identifier):
        self.write("one", plistlib.dumps({**PROFILE, "PayloadScope": scope, "PayloadIdentifier": identifier}))
        self.stand_in("profiles", "install", "-path", self.path("one"))

    def stand_in(self, name, *arguments):
        subprocess.run([os.path.join(STAND_INS, name), *arguments], check=True, env=self.environment,
                       capture_output=True)

    def call(self, row):
        name, *arguments = [self.words.get(word, word) for word in shlex.split(row["call"].replace("\\", "\\\\"))]
        shell = os.path.join(self.programs, "shell", name)
        program = shell if os.path.exists(shell) else os.path.join(self.programs, name)
        return subprocess.run([program, *arguments], env=self.environment, cwd=self.path("tmp"), capture_output=True,
                              check=False, stdin=subprocess.DEVNULL)


def digest_of(message):
    text = openssl("cms", "-cmsout", "-print", "-inform", "DER", "-in", message).decode()
    return re.search(r"digestAlgorithms:\s+algorithm: (\S+)", text).group(1)


def content_of(message):
    return subprocess.run(["openssl", "cms", "-verify", "-noverify", "-binary", "-inform", "DER", "-in", message],
                          check=True, capture_output=True).stdout


class Effects:
    """What each call leaves behind; the names are those of the rows."""

    def __init__(self, test, place, result):
        self.test, self.place, self.out = test, place, result.stdout

    def exists(self, *path):
        return os.path.lexists(os.path.join(*path))

    def nothing_new(self):
        self.test.assertFalse(self.exists(self.place.words["NEW"]))

    def folder_as_it_was(self):
        self.test.assertEqual(os.listdir(self.place.words["FOLDER"]), ["inside"])

    def plain_as_it_was(self):
        self.test.assertEqual(self.place.read("PLAIN"), b"plain\n")

    def pkgutil_expand(self):
        component = os.path.join(self.place.words["NEW"], "Pelix_PDF_Editor.pkg")
        self.test.assertTrue(os.path.isdir(os.path.join(component, "Scripts")))
        self.test.assertTrue(os.path.isfile(os.path.join(component, "Payload")))

    pkgutil_expand_existing = folder_as_it_was
    pkgutil_expand_foreign = pkgutil_expand_missing = pkgutil_expand_bundle = nothing_new
    pkgutil_flatten_missing = nothing_new

    def pkgutil_flatten(self):
        self.test.assertEqual(self.place.read("NEW")[:4], b"xar!")

    def installer_info(self):
        self.test.assertGreater(self.out.count(b"\n"), 1)

    def xar_extract(self):
        self.test.assertTrue(self.exists(self.place.words["FOLDER"], "Distribution"))

    def ditto_extract(self):
        self.test.assertTrue(self.exists(self.place.words["NEW"], "postinstall"))

    def profiles_user(self):
        self.test.assertEqual(list(plistlib.loads(self.out)), [getpass.getuser()])

    def profiles_root(self):
        self.test.assertEqual(list(plistlib.loads(self.out)), ["_computerlevel"])

    def profiles_forced(self):
        items = plistlib.loads(self.out)[getpass.getuser()][0]["ProfileItems"]
        self.test.assertEqual(items[1]["PayloadContent"],
                              {"PayloadContentManagedPreferences": PROFILE["PayloadContent"][1]["PayloadContent"]})

    def profiles_none_root(self):
        start, end = self.out.split(b"</plist>")
        self.test.assertEqual(plistlib.loads(start + b"</plist>"), {})
        self.test.assertEqual(end.count(b"\n"), 2)

    def profiles_none(self):
        self.test.assertEqual(self.out.count(b"\n"), 1)

    def profiles_all(self):
        self.test.assertFalse(self.out.startswith(b"<"))

    def profiles_install(self):
        self.test.assertEqual(os.listdir(self.place.path("profiles")), [])

    def report(self):
        for word in (b"of.the.user", b"of.the.device", b"spconfigprofile_section_deviceconfigprofiles"):
            self.test.assertIn(word, self.out)

    def security_sign(self):
        self.test.assertEqual(digest_of(self.place.words["NEW"]), "sha1")
        self.test.assertEqual(content_of(self.place.words["NEW"]), self.place.read("PROFILE"))

    def security_sign_sha256(self):
        self.test.assertEqual(digest_of(self.place.words["NEW"]), "sha256")
        self.test.assertEqual(content_of(self.place.words["NEW"]), self.place.read("PROFILE"))

    def security_sign_in_place(self):
        self.test.assertEqual(content_of(self.place.words["PROFILE"]), b"")

    def security_sign_stranger(self):
        self.test.assertEqual(self.place.read("PROFILE"), b"")

    def security_decode(self):
        self.test.assertEqual(self.out, self.place.read("PROFILE"))

    def security_decode_hollow(self):
        self.test.assertEqual(self.out, b"")

    def security_decode_headers(self):
        self.test.assertNotIn(b"<plist", self.out)

    def security_identities(self):
        self.test.assertTrue(self.out.splitlines()[0].endswith(b'"' + IDENTITY.encode() + b'"'))

    def sed_in_place(self):
        self.test.assertEqual(self.place.read("PLAIN"), b"edited\n")
        self.test.assertEqual([name for name in os.listdir(self.place.folder.name) if name.startswith("PLAIN")],
                              ["PLAIN.pkg"])

    sed_gnu_in_place = rm_long_option = plain_as_it_was

    def sed_basic_plus(self):
        self.test.assertEqual(self.out, b"plain\n")

    def rm_recursive(self):
        self.test.assertFalse(self.exists(self.place.words["FOLDER"]))

    bsdtar_write_xar = nothing_new

    def bsdtar_ustar(self):
        self.test.assertEqual(self.place.read("NEW")[257:262], b"ustar")

    def find_path(self):
        self.test.assertEqual(self.out.decode(), os.path.join(self.place.words["FOLDER"], "inside") + "\n")

    def stat_owner(self):
        self.test.assertEqual(self.out.decode(), getpass.getuser() + "\n")

    def date_seconds(self):
        self.test.assertEqual(self.out, b"1970\n")

    def mktemp_folder(self):
        made = self.out.decode().strip()
        self.test.assertEqual(os.path.dirname(made), self.place.path("tmp"))
        self.test.assertTrue(os.path.isdir(made))

    def mktemp_gnu(self):
        self.test.assertEqual(os.listdir(self.place.path("tmp")), [])

    def readlink_one(self):
        self.test.assertEqual(self.out, b"PLAIN.pkg\n")


class MacosCommands(unittest.TestCase):

    def hold(self, row, programs, own_words):
        place = Place(programs, row)
        with place.folder:
            result = place.call(row)
            said = (result.stdout + result.stderr).decode(errors="replace")
            if row["exit"] == "not 0":
                self.assertNotEqual(result.returncode, 0, said)
            else:
                self.assertEqual(result.returncode, int(row["exit"]), said)
            if row["says"] != "–" and not own_words:
                self.assertIn(row["says"], said)
            effect = getattr(Effects(self, place, result), row["id"].replace("-", "_"), None)
            if effect:
                effect()

    def walk(self, programs, holds, own_words=lambda row: False):
        held = [row for row in rows().values() if holds(row)]
        self.assertGreater(len(held), 10)
        for row in held:
            with self.subTest(row["id"]):
                self.hold(row, programs, own_words(row))

    def test_the_apple_like_commands_do_what_every_row_says(self):
        self.walk(APPLE_LIKE, lambda row: True)

    def test_the_stand_ins_do_what_is_held_by_both(self):
        self.walk(STAND_INS, lambda row: row["held"].startswith("both"), lambda row: "own words" in row["held"])

    def test_every_effect_belongs_to_a_row(self):
        known = {identifier.replace("-", "_") for identifier in rows()}
        helpers = {"exists", "nothing_new", "folder_as_it_was", "plain_as_it_was"}
        named = {name for name in vars(Effects) if not name.startswith("_")} - helpers
        self.assertEqual(named - known, set())

    def test_every_row_says_who_holds_it_and_names_a_source(self):
        with open(TABLE, encoding="utf-8") as table:
            listed = set(re.findall(r"^(\d+)\. ", table.read(), re.MULTILINE))
        for row in rows().values():
            self.assertIn(row["held"], ("both", "both, own words", "Apple-like"), row["id"])
            self.assertLessEqual(set(row["source"].split(", ")), listed, row["id"])

    def test_every_command_of_both_sets_has_a_row(self):
        called = {row["call"].split()[0] for row in rows().values()}
        programs = set(os.listdir(STAND_INS)) | set(os.listdir(APPLE_LIKE)) | set(
            os.listdir(os.path.join(APPLE_LIKE, "shell")))
        self.assertEqual(programs - {"common", "shell", "bsd"} - called, set())


if __name__ == "__main__":
    unittest.main(argv=sys.argv[:1], verbosity=1)
