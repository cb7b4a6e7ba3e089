#!/usr/bin/env python3
# SPDX-License-Identifier: Apache-2.0
"""Signatures that lie or cost, given to everything that reads a package.

tst_pct_hostile_signatures.py PCT STAND-INS SAMPLE-PACKAGE

The packages are written here, byte by byte, and signed by openssl. Whatever reads one must end by itself, within 5 s of
processor time and 256 MiB, and must have written either a whole package or nothing.
"""
import hashlib
import json
import os
import re
import struct
import sys
import unittest
import zlib

sys.path.insert(0, os.path.join(os.path.dirname(os.path.abspath(__file__)), "../support"))
import measured_run  # noqa: E402
import signed_package as sp  # noqa: E402

PCT, STAND_INS, SAMPLE = [os.path.abspath(path) for path in sys.argv[1:4]]
SIGNER = "Developer ID Installer: Example Org (ABCDE12345)"
IN_2090 = 3786825600
RSA, CMS = "signature", "x-signature"


class Writer:
    """A signed package with everything where it is wanted."""

    def __init__(self, signer):
        self.signer = signer
        self.style, self.algorithm = "sha1", "sha1"
        self.digest_place = (0, 20)
        self.places = {RSA: (20, 256), CMS: (276, 9216)}
        self.claims = {}
        self.members_at = 9492
        self.member_claim = None
        self.certificates = sp.pem_blocks(signer)
        self.timestamp = None
        self.change_message = lambda message: message
        self.message = None

    def elements(self):
        text = '<checksum style="%s"><offset>%d</offset><size>%d</size></checksum>' % (self.style, *self.digest_place)
        for name, place in self.places.items():
            text += sp.signature_element(name, *place, self.certificates)
        return text.encode()

    def table(self, package):
        text = re.sub(rb"<checksum .*?</checksum>\s*", b"", package.text, 1).replace(b"<toc>", b"<toc>" + self.elements(), 1)
        text = re.sub(rb"(<offset>)(\d+)(</offset><size>\d+</size><encoding)",
                      lambda found: b"%s%d%s" % (found[1], int(found[2]) - 20 + self.members_at, found[3]), text)
        for name, claim in self.claims.items():
            offset, size = self.places[name]
            honest = b"<offset>%d</offset><size>%d</size>" % (offset, size)
            assert honest in text
            text = text.replace(honest, b"<offset>%s</offset><size>%s</size>" % claim, 1)
        if self.member_claim is not None:
            text = re.sub(rb"<offset>\d+(</offset><size>\d+</size><encoding)", rb"<offset>%d\1" % self.member_claim, text, 1)
        return text

    def write(self, path):
        package = sp.Package(SAMPLE)
        text = self.table(package)
        packed = zlib.compress(text)
        digest = hashlib.new(self.algorithm, packed).digest()
        heap = bytearray(self.members_at) + package.heap[20:]
        self.put(heap, self.digest_place[0], digest)
        if CMS in self.places:
            message = self.message or self.change_message(sp.cms_signature(self.signer, digest, self.algorithm, self.timestamp))
            self.put(heap, self.places[CMS][0], message)
        if RSA in self.places:
            self.put(heap, self.places[RSA][0], sp.rsa_signature(self.signer, digest, self.algorithm))
        number = {"sha1": 1, "sha256": 3, "sha512": 4}[self.algorithm]
        sp.write(path, struct.pack(">4sHHQQI", b"xar!", 28, 1, len(packed), len(text), number) + packed + bytes(heap))
        return path

    @staticmethod
    def put(heap, at, content):
        heap[at:at + len(content)] = content


class HostileTest(sp.FolderTest):
    folders = ("identities", "tmp", "out")

    def environment(self):
        return {**os.environ, "PCT_IDENTITIES_DIR": self.path("identities"), "PCT_HOSTTOOLS": STAND_INS,
                "TMPDIR": self.path("tmp")}

    def writer(self, *options, use="packages"):
        return Writer(sp.authorities().issue(SIGNER, self.path("hostile.pem"), *options, use=use))

    def judge(self, make, words, status="invalid signature"):
        """What each reader makes of the package; `words` stand in the verdict, `status` is that of pkgutil, if it reads it."""
        sp.authorities().issue(SIGNER, self.path("identities/signer.pem"))
        package = make.write(self.path("hostile.pkg")) if isinstance(make, Writer) else make
        anchors = ["--trust-anchors", sp.authorities().root]
        verified = self.run_tool(PCT, "verify", "--json", *anchors, package)
        self.assertEqual(verified.returncode, 0 if words is None else 1, verified.stderr)
        verdict = json.loads(verified.stdout)
        self.assertIn(words or "", (verdict["problem"] or {"text": ""})["text"])
        self.run_tool(PCT, "check", "--product", "editor", "--json", *anchors, package)
        signature = self.run_tool(os.path.join(STAND_INS, "pkgutil"), "--check-signature", package)
        if status:
            self.assertIn("Status: " + status, signature.stdout + signature.stderr)
        self.assert_all_or_nothing(PCT, "build", "--product", "editor", "--input", package, "--output", self.path("out/made.pkg"))
        self.assert_all_or_nothing(PCT, "build", "--require-signed", *anchors, "--product", "editor", "--input", package,
                                   "--output", self.path("out/made.pkg"), refused=words is not None)
        self.assert_all_or_nothing(PCT, "sign", package, "--identity", SIGNER, "--output", self.path("out/made.pkg"))
        self.assert_all_or_nothing(os.path.join(STAND_INS, "productsign"), "--sign", SIGNER, package,
                                   self.path("out/made.pkg"))

    def run_tool(self, *arguments, before=lambda: None):
        result = measured_run.run(arguments, self.environment(), before)
        self.assertTrue(result.is_within_limits(), "%s: %.1f s, %d MiB" % (arguments, result.seconds, result.mebibytes))
        self.assertIn(result.returncode, (0, 1), (arguments, result.stderr))
        return result

    def assert_all_or_nothing(self, *arguments, refused=False):
        result = self.run_tool(*arguments, before=self.remove_result)
        if result.returncode == 0:
            self.assertFalse(refused, arguments)
            sp.Package(self.path("out/made.pkg"))
        else:
            self.assertEqual(os.listdir(self.path("out")), [], arguments)
            self.assertGreaterEqual(result.stderr.count("\n"), 1)
        self.remove_result()
        self.assertEqual([name for name in os.listdir(self.path("tmp")) if name.startswith("pct")], [])

    def remove_result(self):
        if os.path.exists(self.path("out/made.pkg")):
            os.remove(self.path("out/made.pkg"))


class Places(HostileTest):
    def test_honest_ones_are_accepted(self):
        self.judge(self.writer(), None, "signed by untrusted certificate")

    def lie(self, name, offset, size, words):
        make = self.writer()
        make.claims[name] = (offset, size)
        self.judge(make, words)

    def test_an_offset_beyond_the_end(self):
        self.lie(RSA, b"99999999", b"256", "its RSA signature would lie outside of it")

    def test_an_offset_below_zero(self):
        self.lie(CMS, b"-1", b"9216", "its CMS signature would lie outside of it")

    def test_an_offset_that_is_too_long_a_number(self):
        self.lie(RSA, b"9" * 40, b"256", "its RSA signature would lie outside of it")

    def test_a_size_that_turns_the_sum_round(self):
        self.lie(RSA, b"20", b"18446744073709551600", "its RSA signature would lie outside of it")

    def test_a_size_of_nothing(self):
        self.lie(CMS, b"276", b"0", "its CMS signature would lie outside of it")

    def test_a_size_that_is_too_short(self):
        self.lie(RSA, b"20", b"255", "its RSA signature is wrong")

    def test_a_digest_that_lies_elsewhere(self):
        make = self.writer()
        make.digest_place = (30, 20)
        self.judge(make, "its signatures overlap")

    def test_a_digest_of_another_length(self):
        make = self.writer()
        make.digest_place = (0, 5)
        self.judge(make, "the digest of its table of contents is wrong", None)

    def test_signatures_that_share_their_bytes(self):
        make = self.writer()
        make.places[RSA] = (276 + 9216 - 256, 256)
        self.judge(make, "its signatures overlap")

    def test_a_message_that_reaches_into_the_members(self):
        make = self.writer()
        make.places[CMS] = (276, 9217)
        self.judge(make, "its signatures lie among its members")

    def test_a_member_that_lies_in_a_signature(self):
        make = self.writer()
        make.member_claim = 276
        self.judge(make, "its signatures lie among its members")


class Costs(HostileTest):
    def test_a_message_of_a_hundred_megabytes(self):
        make = self.writer()
        make.places[CMS] = (276, 100 << 20)
        make.members_at = 276 + (100 << 20)
        make.message = b"\x30\x84\x06\x3f\xff\xfa" + b"\0" * 16
        self.judge(make, "its CMS signature is larger than 1 MiB")

    def large(self, change):
        make = self.writer()
        make.places[CMS] = (276, 1 << 20)
        make.members_at = 276 + (1 << 20)
        make.change_message = change
        return make

    def test_a_message_that_is_nested_without_end(self):
        self.judge(self.large(lambda _: b"\x30\x80" * (1 << 19)), "its CMS signature is wrong")

    def test_thousands_of_signers(self):
        def with_signers(message):
            signers = sp.last_of(message, 3)
            one = sp.elements_of(signers)[-1]
            many = one * (((1 << 20) - len(message) - 100) // len(one))
            return sp.with_appended(message, 3, many)
        self.judge(self.large(with_signers), "its CMS signature is wrong")

    def test_ten_thousand_certificates(self):
        make = self.writer()
        make.certificates = make.certificates + [sp.der(sp.authorities().root)] * 10000
        self.judge(make, "too many or too large certificates")

    def test_a_certificate_that_is_larger_than_any(self):
        make = self.writer()
        make.certificates = [b"\x30\x83\x0f\x42\x3b" + b"\x30" * 999995]
        self.judge(make, "too many or too large certificates")

    def certificate_with(self, names, extensions):
        sp.write(self.path("names.cnf"), ("[req]\ndistinguished_name=dn\nprompt=no\nx509_extensions=ext\n[dn]\nCN=%s\n%s[ext]\n"
                                          "extendedKeyUsage=1.2.840.113635.100.4.13\n%s\n" % (SIGNER, names, extensions)).encode())
        sp.openssl("req", "-x509", "-nodes", "-newkey", "rsa:2048", "-config", self.path("names.cnf"), "-days", "2",
                   "-keyout", self.path("names.key"), "-out", self.path("names.crt"))
        content = b""
        for part in ("names.crt", "names.key"):
            with open(self.path(part), "rb") as file:
                content += file.read()
        sp.write(self.path("names.pem"), content)
        make = Writer(self.path("names.pem"))
        make.places[CMS] = (276, 1 << 20)
        make.members_at = 276 + (1 << 20)
        return make

    def test_a_certificate_with_ten_thousand_alternative_names(self):
        names = ",".join("DNS:a%d.example" % number for number in range(10000))
        self.judge(self.certificate_with("", "subjectAltName=" + names), "ends neither in Apple's root",
                   "signed by untrusted certificate")

    def test_a_certificate_whose_subject_has_ten_thousand_parts(self):
        names = "".join("%d.O=a%d\n" % (number, number) for number in range(10000))
        self.judge(self.certificate_with(names, ""), "ends neither in Apple's root", "signed by untrusted certificate")


class Signers(HostileTest):
    def test_a_chain_that_goes_round(self):
        first = sp.make_identity("Round A", self.path("a.pem"), "--use", "authority")
        second = sp.make_identity("Round B", self.path("b.pem"), "--use", "authority", "--issuer", first)
        again = sp.make_identity("Round A", self.path("c.pem"), "--use", "authority", "--issuer", second)
        signer = sp.make_identity(SIGNER, self.path("signer.pem"), "--use", "packages", "--issuer", again, "--bare")
        make = Writer(signer)
        make.certificates = [sp.der(path) for path in (signer, again, second)]
        self.judge(make, "ends neither in Apple's root", "signed by untrusted certificate")

    def test_a_certificate_that_issued_itself_many_times(self):
        make = self.writer()
        make.certificates = make.certificates[:1] + make.certificates[1:] * 15
        self.judge(make, None, "signed by untrusted certificate")

    def test_a_key_of_512_bits(self):
        make = self.writer("--bits", "512")
        make.places = {RSA: (20, 64), CMS: (84, 9216)}
        make.members_at = 9300
        self.judge(make, "has only 512 bits", "signed by untrusted certificate")

    def test_an_elliptic_curve_in_the_place_of_an_rsa_key(self):
        make = self.writer()
        make.certificates = sp.pem_blocks(sp.authorities().issue(SIGNER, self.path("curve.pem"), "--key", "ec"))
        self.judge(make, "its RSA signature is wrong")

    def test_a_message_by_an_elliptic_curve(self):
        make = self.writer("--key", "ec")
        make.places = {CMS: (20, 9216)}
        make.members_at = 9236
        self.judge(make, None, "signed by untrusted certificate")

    def test_a_timestamp_of_the_future(self):
        make = self.writer()
        clock = sp.authorities().issue("Time", self.path("time.pem"), use="timestamps")
        make.timestamp = sp.timestamp_token(clock, IN_2090)
        self.judge(make, "it lies in the future", "signed by untrusted certificate")


class Digests(HostileTest):
    def with_digest(self, style, algorithm):
        make = self.writer()
        length = hashlib.new(algorithm).digest_size
        make.style, make.algorithm = style, algorithm
        make.digest_place = (0, length)
        make.places = {RSA: (length, 256), CMS: (length + 256, 9216)}
        make.members_at = length + 256 + 9216
        return make

    def test_sha256(self):
        self.judge(self.with_digest("sha256", "sha256"), None, "signed by untrusted certificate")

    def test_sha512(self):
        self.judge(self.with_digest("SHA-512", "sha512"), None, "signed by untrusted certificate")

    def test_one_that_nobody_knows(self):
        self.judge(self.with_digest("sha512/256", "sha256"), "the digest of its table of contents is wrong", None)

    def test_one_that_is_no_digest(self):
        self.judge(self.with_digest("none", "sha256"), "the digest of its table of contents is wrong", None)

    def test_one_whose_style_is_another_than_its_bytes(self):
        self.judge(self.with_digest("sha512", "sha256"), "the digest of its table of contents is wrong", None)


if __name__ == "__main__":
    unittest.main(argv=sys.argv[:1])
