#!/usr/bin/env python3
# SPDX-License-Identifier: Apache-2.0
"""`pct notarize` over commands like Apple's, and without them.

tst_pct_notarize.py PCT STAND-INS APPLE-LIKE SAMPLE-PACKAGE
"""
import json
import os
import subprocess
import sys
import unittest

sys.path.insert(0, os.path.join(os.path.dirname(os.path.abspath(__file__)), "../support"))
import signed_package as sp  # noqa: E402

PCT, STAND_INS, APPLE_LIKE, SAMPLE = [os.path.abspath(path) for path in sys.argv[1:5]]
SIGNER = "Developer ID Installer: Example Org (ABCDE12345)"


class NotarizeTest(sp.FolderTest):
    folders = ("tmp",)

    def signed(self):
        signer = sp.authorities().issue(SIGNER, self.path("signer.pem"), "--team", "ABCDE12345")
        return sp.sign_by_openssl(SAMPLE, self.path("signed.pkg"), signer)

    def notarize(self, package, *options, tools=APPLE_LIKE, profile="release", verdict="Accepted"):
        return subprocess.run([PCT, "notarize", package, "--output", self.path("notarized.pkg"), "--keychain-profile", profile,
                               *options], capture_output=True, check=False, text=True,
                              env={**os.environ, "PCT_HOSTTOOLS": tools, "APPLE_LIKE_REAL": STAND_INS,
                                   "TMPDIR": self.path("tmp"), "APPLE_LIKE_VERDICT": verdict,
                                   "APPLE_LIKE_CALLS": self.path("calls")})

    def calls(self):
        if not os.path.exists(self.path("calls")):
            return []
        with open(self.path("calls"), encoding="utf-8") as calls:
            return [line.split()[:2] for line in calls]

    def assert_refused(self, result, words):
        self.assertEqual((result.returncode, result.stdout), (1, ""), result.stderr)
        self.assertEqual(result.stderr.count("\n"), 1, result.stderr)
        self.assertIn(words, result.stderr)
        self.assertFalse(os.path.exists(self.path("notarized.pkg")))
        self.assertEqual([name for name in os.listdir(self.folder) if name.startswith(".")], [])

    def test_a_ticket_is_stapled_to_a_copy(self):
        package = self.signed()
        before = sp.Package(package).bytes
        result = self.notarize(package)
        self.assertEqual((result.returncode, result.stdout, result.stderr), (0, self.path("notarized.pkg") + "\n", ""))
        self.assertEqual(sp.Package(package).bytes, before)
        notarized = sp.Package(self.path("notarized.pkg")).bytes
        self.assertTrue(notarized.startswith(before))
        self.assertIn(b"t8lr", notarized[len(before):])
        self.assertEqual(self.calls(), [["notarytool", "submit"], ["stapler", "staple"]])

    def test_json(self):
        result = json.loads(self.notarize(self.signed(), "--json").stdout)
        self.assertEqual((result["succeeded"], result["problem"], result["output"]), (True, None, self.path("notarized.pkg")))
        self.assertEqual((result["signature"]["ticket"], result["signature"]["holds"]), (True, True))

    def test_a_verdict_against_it_is_told_with_its_reasons(self):
        result = self.notarize(self.signed(), verdict="Invalid")
        self.assert_refused(result, 'the verdict of the notary service is "Invalid" (The binary is not signed with a valid')
        self.assertEqual(self.calls(), [["notarytool", "submit"], ["notarytool", "log"]])

    def test_what_is_not_signed_or_broken_is_not_submitted(self):
        self.assert_refused(self.notarize(SAMPLE), "it is not signed")
        sp.rewrite_table(self.signed(), self.path("broken.pkg"), lambda toc: toc.replace(b"<uid>0", b"<uid>1", 1))
        self.assert_refused(self.notarize(self.path("broken.pkg")), "its signature does not hold")
        self.assertEqual(self.calls(), [])

    def test_credentials_that_are_not_there(self):
        self.assert_refused(self.notarize(self.signed(), profile="nobody"), "No Keychain password item found")

    def test_an_output_that_is_there(self):
        package = self.signed()
        sp.write(self.path("notarized.pkg"), b"there")
        self.assertIn("exists already", self.notarize(package).stderr)
        self.assertEqual(self.notarize(package, "--force", verdict="Invalid").returncode, 1)
        with open(self.path("notarized.pkg"), "rb") as there:
            self.assertEqual(there.read(), b"there")
        self.assertEqual(self.notarize(package, "--force").returncode, 0)
        self.assertIn(b"t8lr", sp.Package(self.path("notarized.pkg")).bytes)

    def test_without_the_commands_it_says_where_it_can_be_done(self):
        result = self.notarize(self.signed(), tools=STAND_INS)
        self.assert_refused(result, 'packages are notarized on a Mac only; take it to one with Xcode')
        self.assertEqual(self.calls(), [])


if __name__ == "__main__":
    unittest.main(argv=sys.argv[:1])
