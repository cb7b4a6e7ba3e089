#!/usr/bin/env python3
# SPDX-License-Identifier: Apache-2.0
"""What `pct sign` and `pct build --sign` make, judged by openssl, and what builds and checks demand of signatures.

tst_pct_sign.py PCT STAND-INS SAMPLE-PACKAGE
"""
import json
import os
import subprocess
import sys
import unittest

sys.path.insert(0, os.path.join(os.path.dirname(os.path.abspath(__file__)), "../support"))
import signed_package as sp  # noqa: E402

PCT, STAND_INS, SAMPLE = [os.path.abspath(path) for path in sys.argv[1:4]]
TEAM = "ABCDE12345"
SIGNER = "Developer ID Installer: Example Org (%s)" % TEAM


class SigningTest(sp.FolderTest):
    folders = ("identities", "tmp")

    def identity(self, name=SIGNER, file="signer.pem", *options, use="packages"):
        return sp.authorities().issue(name, self.path("identities/" + file), "--team", TEAM, *options, use=use)

    def pct(self, *arguments):
        return subprocess.run([PCT, *arguments], capture_output=True, check=False, text=True,
                              env={**os.environ, "PCT_IDENTITIES_DIR": self.path("identities"), "PCT_HOSTTOOLS": STAND_INS,
                                   "TMPDIR": self.path("tmp")})

    def build(self, *options, package=SAMPLE, output="built.pkg"):
        return self.pct("build", "--product", "editor", "--input", package, "--output", self.path(output), *options)

    def assert_holds(self, path):
        package = sp.Package(path)
        self.assertEqual(package.stored_digest(), package.digest)
        self.assertTrue(sp.rsa_holds(package, self.path("tmp")))
        self.assertTrue(sp.cms_holds(package, self.path("tmp"), sp.authorities().root))
        for name in os.listdir(self.path("tmp")):
            self.assertFalse(name.startswith("pct-"), name)

    def assert_refused(self, result, words, output="signed.pkg"):
        self.assertEqual(result.returncode, 1, result.stderr)
        self.assertEqual((result.stderr.count("\n"), result.stdout), (1, ""), result.stderr)
        self.assertIn(words, result.stderr)
        self.assertFalse(os.path.exists(self.path(output)))
        self.assertEqual([name for name in os.listdir(self.folder) if name.startswith(".")], [])


class Sign(SigningTest):
    def sign(self, *options, package=SAMPLE, identity=SIGNER):
        return self.pct("sign", package, "--output", self.path("signed.pkg"), "--identity", identity, *options)

    def test_openssl_accepts_what_is_made(self):
        self.identity()
        result = self.sign()
        self.assertEqual((result.returncode, result.stdout, result.stderr), (0, self.path("signed.pkg") + "\n", ""))
        self.assert_holds(self.path("signed.pkg"))
        verified = self.pct("verify", self.path("signed.pkg"), "--trust-anchors", sp.authorities().root)
        self.assertEqual(verified.returncode, 0, verified.stderr)

    def test_json_says_who_signed(self):
        self.identity()
        result = json.loads(self.sign("--json").stdout)
        self.assertEqual((result["succeeded"], result["problem"], result["output"]), (True, None, self.path("signed.pkg")))
        self.assertEqual((result["signature"]["team"], result["signature"]["holds"]), (TEAM, True))

    def test_who_cannot_sign(self):
        self.assert_refused(self.sign(), "there is no identity")
        self.identity(use="code")
        self.assert_refused(self.sign(), "not for installer packages")
        self.identity(SIGNER, "signer.pem", "--validity", "past")
        self.assert_refused(self.sign(), "has expired")

    def test_in_house_trust(self):
        self.identity(use="code")
        self.assertEqual(self.sign("--allow-any-certificate").returncode, 0)
        self.assert_holds(self.path("signed.pkg"))

    def test_keys_that_others_can_read(self):
        os.chmod(self.identity(), 0o644)
        self.assert_refused(self.sign("--strict-keys"), "others can read this private key")
        result = self.sign("--json")
        self.assertEqual(result.returncode, 0)
        self.assertEqual(result.stderr.count("warning: "), 1)
        warnings = json.loads(result.stdout)["warnings"]
        self.assertEqual([warning["code"] for warning in warnings], ["signing-identity"])
        self.assertIn("others can read this private key", warnings[0]["text"])
        self.assertIn("identities/signer.pem", warnings[0]["text"])
        os.chmod(self.path("identities/signer.pem"), 0o600)
        result = self.sign("--force", "--strict-keys", "--json")
        self.assertEqual((result.returncode, result.stderr, json.loads(result.stdout)["warnings"]), (0, "", []))

    def test_a_timestamp(self):
        self.identity()
        clock = sp.authorities().issue("Time", self.path("time.pem"), use="timestamps")
        with sp.TimestampService(self.path("tmp"), clock) as service:
            self.assertEqual(self.sign("--timestamp", service.url).returncode, 0)
        self.assert_holds(self.path("signed.pkg"))
        verified = self.pct("verify", "--json", self.path("signed.pkg"), "--trust-anchors", sp.authorities().root)
        timestamp = json.loads(verified.stdout)["signature"]["timestamp"]
        self.assertEqual((timestamp["service"], timestamp["counts"]), ("Time", True))
        os.remove(self.path("signed.pkg"))
        self.assert_refused(self.sign("--timestamp", service.url), "timestamp service cannot be asked")

    def test_files(self):
        self.identity()
        with open(self.path("signed.pkg"), "wb") as there:
            there.write(b"there")
        self.assertIn("exists already", self.sign().stderr)
        with open(self.path("signed.pkg"), "rb") as there:
            self.assertEqual(there.read(), b"there")
        self.assertEqual(self.sign("--force").returncode, 0)
        self.assert_holds(self.path("signed.pkg"))
        same = self.pct("sign", SAMPLE, "--output", SAMPLE, "--identity", SIGNER, "--force")
        self.assertEqual(same.returncode, 1)

    def test_what_is_no_package(self):
        self.identity()
        sp.write(self.path("plain.pkg"), b"plain\n")
        self.assert_refused(self.sign(package=self.path("plain.pkg")), "not a flat package")
        self.assert_refused(self.sign(package=self.path("missing.pkg")), "does not exist")

    def test_a_signature_that_does_not_hold_never_takes_the_place(self):
        self.identity()
        os.mkdir(self.path("tools"))
        for name in os.listdir(STAND_INS):
            os.symlink(os.path.join(STAND_INS, name), self.path("tools/" + name))
        os.remove(self.path("tools/productsign"))
        sp.write(self.path("tools/productsign"), b'#!/bin/bash\n"%s/productsign" "$@" && printf x | dd of="${@: -1}" bs=1 seek=%d '
                 b"conv=notrunc 2>/dev/null\n" % (STAND_INS.encode(), 4000))
        os.chmod(self.path("tools/productsign"), 0o755)
        environment = {**os.environ, "PCT_IDENTITIES_DIR": self.path("identities"), "PCT_HOSTTOOLS": self.path("tools")}
        result = subprocess.run([PCT, "sign", SAMPLE, "--output", self.path("signed.pkg"), "--identity", SIGNER], text=True,
                                capture_output=True, check=False, env=environment)
        self.assert_refused(result, "cannot be signed")


class Identities(SigningTest):
    def test_those_for_packages_and_those_for_profiles(self):
        self.identity()
        self.identity("For Profiles", "profiles.pem", use="code")
        self.assertEqual(self.pct("identities", "--for", "packages").stdout, SIGNER + "\n")
        for options in ([], ["--for", "profiles"]):
            self.assertEqual(self.pct("identities", *options).stdout, "For Profiles\n")


class Build(SigningTest):
    def signed_sample(self, *options, **further):
        signer = sp.authorities().issue(SIGNER, self.path("vendor.pem"), "--team", TEAM, *options)
        return sp.sign_by_openssl(SAMPLE, self.path("vendor.pkg"), signer, **further)

    def test_it_signs_what_it_builds(self):
        self.identity()
        result = self.build("--sign", SIGNER)
        self.assertEqual((result.returncode, result.stderr), (0, ""))
        self.assert_holds(self.path("built.pkg"))
        shown = self.pct("show", self.path("built.pkg"))
        self.assertEqual(shown.returncode, 0, shown.stderr)

    def test_keys_that_others_can_read(self):
        os.chmod(self.identity(), 0o644)
        self.assert_refused(self.build("--sign", SIGNER, "--strict-keys"), "others can read this private key", "built.pkg")
        result = self.build("--sign", SIGNER, "--json")
        self.assertEqual(result.returncode, 0, result.stderr)
        self.assertEqual([warning["code"] for warning in json.loads(result.stdout)["warnings"]], ["signing-identity"])

    def test_without_a_signature_there_is_no_package(self):
        self.assert_refused(self.build("--sign", SIGNER), "there is no identity", output="built.pkg")

    def test_how_to_sign_needs_who_signs(self):
        for options in (["--allow-any-certificate"], ["--strict-keys"], ["--timestamp", "http://localhost/"]):
            result = self.build(*options)
            self.assertEqual(result.returncode, 2)
            self.assertIn("needs --sign", result.stderr)

    def test_a_broken_signature_is_a_warning(self):
        package = self.signed_sample()
        sp.rewrite_table(package, self.path("broken.pkg"), lambda toc: toc.replace(b"<uid>0", b"<uid>1", 1))
        for arguments in (["check", "--product", "editor", "--json", self.path("broken.pkg")],
                          ["build", "--product", "editor", "--json", "--input", self.path("broken.pkg"), "--output",
                           self.path("built.pkg")]):
            result = self.pct(*arguments)
            self.assertEqual(result.returncode, 0, result.stderr)
            codes = [warning["code"] for warning in json.loads(result.stdout)["warnings"]]
            self.assertEqual([code for code in codes if code.startswith("signature")],
                             ["signature-broken", "signature-dropped"])

    def test_what_is_demanded_of_the_vendor(self):
        anchors = ["--trust-anchors", sp.authorities().root]
        good = self.signed_sample()
        sp.rewrite_table(good, self.path("broken.pkg"), lambda toc: toc.replace(b"<uid>0", b"<uid>1", 1))
        refusals = [
            (SAMPLE, ["--require-signed"], "is not signed"), (SAMPLE, ["--vendor-team", TEAM], "is not signed"),
            (good, ["--require-signed"], "is not trusted"), (good, ["--vendor-team", TEAM], "is not trusted"),
            (good, ["--vendor-team", "OTHER12345", *anchors], 'not by "OTHER12345"'),
            (self.path("broken.pkg"), ["--require-signed", *anchors], "does not hold"),
            (self.path("broken.pkg"), ["--vendor-team", TEAM, *anchors], "does not hold")]
        for package, options, words in refusals:
            result = self.build("-q", *options, package=package)
            self.assert_refused(result, words, output="built.pkg")
            options = [option.replace("--vendor-team", "--require-team") for option in options]
            checked = self.pct("check", "-q", "--product", "editor", *options, package)
            self.assertEqual(checked.returncode, 1)
            self.assertIn(words, checked.stderr)
        result = self.build("--vendor-team", TEAM, "--require-signed", *anchors, package=good)
        self.assertEqual(result.returncode, 0, result.stderr)

    def test_a_check_tells_who_signed(self):
        package = self.signed_sample()
        checked = self.pct("check", "--product", "editor", package, "--trust-anchors", sp.authorities().root)
        self.assertEqual(checked.returncode, 0, checked.stderr)
        self.assertIn(SIGNER, checked.stdout)
        result = json.loads(self.pct("check", "--json", "--product", "editor", package).stdout)
        self.assertEqual((result["signature"]["team"], result["signature"]["holds"]), (TEAM, True))


if __name__ == "__main__":
    unittest.main(argv=sys.argv[:1])
