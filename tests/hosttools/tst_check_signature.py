#!/usr/bin/env python3
# SPDX-License-Identifier: Apache-2.0
"""What `pkgutil --check-signature` says of packages that openssl has signed.

tst_check_signature.py STAND-INS SAMPLE-PACKAGE
"""
import os
import subprocess
import sys
import unittest

sys.path.insert(0, os.path.join(os.path.dirname(os.path.abspath(__file__)), "../support"))
import signed_package as sp  # noqa: E402

STAND_INS, SAMPLE = [os.path.abspath(path) for path in sys.argv[1:3]]
MAKE_VARIANT = os.path.join(sp.SUPPORT, "make-xar-variant.py")
SIGNER = "Developer ID Installer: Example Org (ABCDE12345)"
IN_2020 = 1593561600


class SignatureTest(sp.FolderTest):
    folders = ("identities",)

    def trust(self):
        sp.write(self.path("identities/root.cer"), sp.der(sp.authorities().root))

    def signer(self, *options):
        return sp.authorities().issue(SIGNER, self.path("signer.pem"), *options)

    def signed(self, *options, **further):
        return sp.sign_by_openssl(SAMPLE, self.path("signed.pkg"), self.signer(*options), **further)

    def check(self, package):
        result = subprocess.run([os.path.join(STAND_INS, "pkgutil"), "--check-signature", package], capture_output=True,
                                check=False, env={**os.environ, "PCT_IDENTITIES_DIR": self.path("identities")})
        return result.returncode, result.stdout.decode().splitlines(), result.stderr.decode()

    def assert_status(self, package, code, status):
        exit_code, lines, errors = self.check(package)
        self.assertEqual((exit_code, errors), (code, ""))
        self.assertEqual(lines[:2], ['Package "%s":' % os.path.basename(package), "   Status: " + status])
        return lines[2:]

    def altered(self, where, change=lambda byte: byte ^ 1):
        """The signed package with another byte, `where` says at which place of a Package."""
        package = sp.Package(self.signed())
        content = bytearray(package.bytes)
        place = where(package)
        content[place] = change(content[place])
        sp.write(self.path("altered.pkg"), bytes(content))
        return self.path("altered.pkg")


class States(SignatureTest):
    def test_no_signature(self):
        self.assertEqual(self.assert_status(SAMPLE, 1, "no signature"), [])

    def test_a_signer_whom_nobody_knows(self):
        self.assert_status(self.signed(), 0, "signed by untrusted certificate")

    def test_a_signer_whom_the_user_trusts_with_the_chain(self):
        self.trust()
        lines = self.assert_status(self.signed(), 0, "signed by a certificate trusted by macOS")
        expected = ["   Certificate Chain:"]
        for number, (name, certificate) in enumerate(zip((SIGNER, "Pelix Issuer", "Pelix Root"),
                                                         sp.pem_blocks(self.path("signer.pem"))), 1):
            digits = sp.fingerprint(certificate)
            pairs = [digits[at:at + 2] for at in range(0, 64, 2)]
            expected += ["       " + "-" * 72] if number > 1 else []
            expected += ["    %d. %s" % (number, name), "       Expires: 2099-12-31 00:00:00 +0000",
                         "       SHA256 Fingerprint:", "           " + " ".join(pairs[:22]),
                         "           " + " ".join(pairs[22:])]
        self.assertEqual(lines, expected)

    def test_an_expired_certificate(self):
        self.trust()
        self.assert_status(self.signed("--validity", "past"), 0, "signed by a certificate that has since expired")

    def test_a_timestamp_prolongs_a_certificate(self):
        self.trust()
        clock = sp.authorities().issue("Time", self.path("time.pem"), use="timestamps")
        package = self.signed("--validity", "past", timestamp=sp.timestamp_token(clock, IN_2020))
        lines = self.assert_status(package, 0, "signed by a certificate trusted by macOS")
        self.assertEqual(lines[0], "   Signed with a trusted timestamp on: 2020-07-01 00:00:00 +0000")

    def test_a_timestamp_of_nobody_counts_for_nothing(self):
        self.trust()
        clock = sp.make_identity("Nobody", self.path("time.pem"), "--use", "timestamps")
        package = self.signed("--validity", "past", timestamp=sp.timestamp_token(clock, IN_2020))
        self.assert_status(package, 0, "signed by a certificate that has since expired")

    def test_one_of_the_two_signatures_is_enough(self):
        self.trust()
        for parts in (("signature",), ("x-signature",)):
            self.assert_status(self.signed(parts=parts), 0, "signed by a certificate trusted by macOS")

    def test_digests_of_sha256(self):
        self.trust()
        self.assert_status(self.signed(digest="sha256"), 0, "signed by a certificate trusted by macOS")

    def test_what_is_no_package(self):
        sp.write(self.path("plain"), b"plain")
        code, lines, errors = self.check(self.path("plain"))
        self.assertEqual((code, lines), (1, []))
        self.assertIn("not a flat package", errors)


class Alterations(SignatureTest):
    def setUp(self):
        super().setUp()
        self.trust()

    def assert_invalid(self, package):
        self.assert_status(package, 1, "invalid signature")

    def test_another_digest(self):
        self.assert_invalid(self.altered(lambda package: package.heap_start))

    def test_another_rsa_signature(self):
        self.assert_invalid(self.altered(lambda package: package.heap_start + 100))

    def test_another_message(self):
        self.assert_invalid(self.altered(lambda package: package.heap_start + 276 + len(package.cms()) - 10))

    def test_another_table_with_its_digest(self):
        sp.rewrite_table(self.signed(), self.path("altered.pkg"), lambda toc: toc.replace(b"0644", b"0755"))
        self.assert_invalid(self.path("altered.pkg"))

    def test_another_table_without_its_digest(self):
        package = sp.Package(self.signed())
        changed = sp.zlib.compress(package.text.replace(b"0644", b"0755"))
        header = sp.struct.pack(">4sHHQQI", b"xar!", 28, 1, len(changed), len(package.text), 1)
        sp.write(self.path("altered.pkg"), header + changed + package.heap)
        self.assert_invalid(self.path("altered.pkg"))

    def test_signatures_of_two_signers(self):
        first, second = sp.Package(self.signed()), self.path("other.pem")
        sp.authorities().issue("Another", second)
        heap = bytearray(first.heap)
        message = sp.cms_signature(second, first.digest, "sha1").ljust(9216, b"\0")
        heap[276:276 + 9216] = message
        sp.write(self.path("altered.pkg"), first.bytes[:first.heap_start] + bytes(heap))
        self.assert_invalid(self.path("altered.pkg"))

    def test_signatures_that_are_noise(self):
        subprocess.run([sys.executable, MAKE_VARIANT, "signed", self.path("noise.pkg")], check=True)
        self.assert_invalid(self.path("noise.pkg"))

    def test_places_outside_the_package(self):
        for lie in (b"<offset>99999999</offset><size>256", b"<offset>-5</offset><size>256", b"<offset>20</offset><size>0",
                    b"<offset>20</offset><size>99999999999999999999"):
            sp.rewrite_table(self.signed(), self.path("altered.pkg"),
                             lambda toc, lie=lie: toc.replace(b"<offset>20</offset><size>256", lie))
            self.assert_invalid(self.path("altered.pkg"))

    def test_ten_thousand_certificates_are_not_read(self):
        one = sp.der(sp.authorities().root)
        sp.sign_by_openssl(SAMPLE, self.path("many.pkg"), self.signer(), certificates=[one] * 10000)
        begin = sp.processor_seconds()
        self.assert_invalid(self.path("many.pkg"))
        self.assertLess(sp.processor_seconds() - begin, 5)


if __name__ == "__main__":
    unittest.main(argv=sys.argv[:1])
