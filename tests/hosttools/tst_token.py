#!/usr/bin/env python3
# SPDX-License-Identifier: Apache-2.0
"""Signing with a key that never leaves its token, here one of SoftHSM.

tst_token.py STAND-INS SAMPLE-PACKAGE
"""
import glob
import os
import shutil
import subprocess
import sys
import unittest

sys.path.insert(0, os.path.join(os.path.dirname(os.path.abspath(__file__)), "../support"))
import signed_package as sp  # noqa: E402

STAND_INS, SAMPLE = [os.path.abspath(path) for path in sys.argv[1:3]]
SIGNER = "Developer ID Installer: Example Org (ABCDE12345)"
PIN = "31415926"
ADDRESS = "pkcs11:token=signing;object=installer;type=private"
MODULES = glob.glob("/usr/lib/softhsm/libsofthsm2.so") + glob.glob("/usr/lib/*/softhsm/libsofthsm2.so")


def what_is_missing():
    if not shutil.which("softhsm2-util") or not MODULES:
        return "softhsm2 is not installed"
    listed = subprocess.run(["openssl", "list", "-providers", "-provider", "pkcs11"], capture_output=True, check=False,
                            env={**os.environ, "PKCS11_PROVIDER_MODULE": MODULES[0]})
    return "" if listed.returncode == 0 else "OpenSSL has no provider for PKCS #11 (pkcs11-provider)"


MISSING = what_is_missing()


class TokenTest(sp.FolderTest):
    folders = ("identities", "tokens")

    def run_tool(self, *arguments, pin=PIN):
        environment = {**os.environ, "PCT_IDENTITIES_DIR": self.path("identities"), "SOFTHSM2_CONF": self.path("softhsm2.conf"),
                       "PCT_IDENTITIES_PASSWORD": pin}
        if MODULES:
            environment["PKCS11_PROVIDER_MODULE"] = MODULES[0]
        return subprocess.run([os.path.join(STAND_INS, arguments[0]), *arguments[1:]], capture_output=True, check=False,
                              env=environment)

    def sign(self, **options):
        return self.run_tool("productsign", "--sign", SIGNER, SAMPLE, self.path("signed.pkg"), **options)

    def address(self, text=ADDRESS):
        """The certificate, and a file that says where its key lies; anybody may read both."""
        signer = sp.authorities().issue(SIGNER, self.path("signer.crt"))
        shutil.copy(signer, self.path("identities/signer.crt"))
        sp.write(self.path("identities/signer.key"), text.encode() + b"\n")
        os.chmod(self.path("identities/signer.key"), 0o644)

    def make_token(self):
        sp.write(self.path("softhsm2.conf"), ("directories.tokendir = %s\nlog.level = ERROR\n" % self.path("tokens")).encode())
        for arguments in (["--init-token", "--free", "--label", "signing", "--so-pin", PIN, "--pin", PIN],
                          ["--import", self.path("signer.key"), "--token", "signing", "--label", "installer", "--id", "a1",
                           "--pin", PIN]):
            subprocess.run(["softhsm2-util", *arguments], check=True, capture_output=True,
                           env={**os.environ, "SOFTHSM2_CONF": self.path("softhsm2.conf")})


@unittest.skipIf(MISSING, MISSING)
class WithToken(TokenTest):
    def setUp(self):
        super().setUp()
        self.address()
        self.make_token()

    def test_openssl_accepts_what_the_token_signs(self):
        result = self.sign()
        self.assertEqual((result.returncode, result.stderr), (0, b""))
        package = sp.Package(self.path("signed.pkg"))
        self.assertTrue(sp.rsa_holds(package, self.folder))
        self.assertTrue(sp.cms_holds(package, self.folder, sp.authorities().root))
        self.assertEqual(len(package.certificates()), 3)

    def test_it_is_listed(self):
        listed = self.run_tool("security", "find-identity", "-v", "-p", "basic")
        self.assertIn(('"%s"' % SIGNER).encode(), listed.stdout)

    def test_a_wrong_password_is_told(self):
        result = self.sign(pin="wrong")
        self.assertEqual(result.returncode, 1)
        self.assertIn(b"PCT_IDENTITIES_PASSWORD", result.stderr)
        self.assertNotIn(b"wrong", result.stderr)
        self.assertFalse(os.path.exists(self.path("signed.pkg")))


class WithoutToken(TokenTest):
    def test_a_key_that_cannot_be_reached_is_told(self):
        self.address("pkcs11:token=nowhere;object=nothing;type=private")
        sp.write(self.path("softhsm2.conf"), b"directories.tokendir = %s\n" % self.path("tokens").encode())
        result = self.sign()
        self.assertEqual((result.returncode, result.stderr.count(b"\n")), (1, 1), result.stderr)
        self.assertIn(b"identities/signer.key", result.stderr)

    @unittest.skipIf(not MISSING.startswith("OpenSSL") and not MISSING.startswith("softhsm2"), "there is a provider")
    def test_without_a_provider_it_says_what_to_install(self):
        self.address()
        self.assertIn(b"pkcs11-provider", self.sign().stderr)


if __name__ == "__main__":
    print("with a token: " + (MISSING or "yes"))
    unittest.main(argv=sys.argv[:1])
