#!/usr/bin/env python3
# SPDX-License-Identifier: Apache-2.0
"""What `pct verify` says of packages that openssl has signed, as they are and altered.

tst_pct_verify.py PCT SAMPLE-PACKAGE
"""
import json
import os
import resource
import struct
import subprocess
import sys
import unittest

sys.path.insert(0, os.path.join(os.path.dirname(os.path.abspath(__file__)), "../support"))
import costs  # noqa: E402
import signed_package as sp  # noqa: E402

PCT, SAMPLE = [os.path.abspath(path) for path in sys.argv[1:3]]
MAKE_VARIANT = os.path.join(sp.SUPPORT, "make-xar-variant.py")
TEAM = "ABCDE12345"
SIGNER = "Developer ID Installer: Example Org (%s)" % TEAM
IN_2020 = 1593561600
IN_2090 = 3786825600


class VerifyTest(sp.FolderTest):
    def signer(self, *options, use="packages"):
        return sp.authorities().issue(SIGNER, self.path("signer.pem"), "--team", TEAM, *options, use=use)

    def signed(self, *options, use="packages", **further):
        return sp.sign_by_openssl(SAMPLE, self.path("signed.pkg"), self.signer(*options, use=use), **further)

    def clock(self, name="Time"):
        return sp.authorities().issue(name, self.path("time.pem"), use="timestamps")

    def verify(self, package, *options, trusts=True):
        """Exit code, the object of the JSON and the messages, within the limits of time and memory."""
        anchors = ["--trust-anchors", sp.authorities().root] if trusts else []
        begin = sp.processor_seconds()
        result = subprocess.run([PCT, "verify", "--json", package, *anchors, *options], capture_output=True, check=False)
        self.assertLess(sp.processor_seconds() - begin, costs.seconds(5))
        self.assertLess(resource.getrusage(resource.RUSAGE_CHILDREN).ru_maxrss, costs.mebibytes(256) * 1024)
        return result.returncode, json.loads(result.stdout), result.stderr.decode()

    def assert_accepted(self, package, *options):
        code, result, errors = self.verify(package, *options)
        self.assertEqual((code, result["accepted"], errors), (0, True, ""))
        return result["signature"]

    def assert_refused(self, package, words, *options, trusts=True):
        code, result, errors = self.verify(package, *options, trusts=trusts)
        self.assertEqual((code, result["accepted"]), (1, False))
        self.assertEqual(errors.count("\n"), 1, errors)
        self.assertIn(words, errors)
        self.assertIn(words, result["problem"]["text"])
        return result["signature"]


class Signers(VerifyTest):
    def test_a_good_signature_with_all_that_is_told_of_it(self):
        signature = self.assert_accepted(self.signed())
        blocks = sp.pem_blocks(self.path("signer.pem"))
        names = (SIGNER, "Pelix Issuer", "Pelix Root")
        self.assertEqual(signature.pop("chain"), [
            {"name": name, "team": TEAM if number == 0 else None, "validFrom": "2020-01-01T00:00:00Z",
             "expires": "2099-12-31T00:00:00Z", "sha256": sp.fingerprint(block).lower(), "forPackages": number == 0}
            for number, (name, block) in enumerate(zip(names, blocks))])
        self.assertTrue(signature.pop("judgedAt"))
        self.assertEqual(signature, {
            "signed": True, "holds": True, "trusted": True, "digest": True, "rsa": True, "cms": True, "anchor": "file",
            "team": TEAM, "timestamp": None, "ticket": False, "problems": []})

    def test_text_says_the_same(self):
        result = subprocess.run([PCT, "verify", self.signed(), "--trust-anchors", sp.authorities().root], check=True,
                                capture_output=True)
        text = result.stdout.decode()
        fingerprint = sp.fingerprint(sp.der(self.path("signer.pem")))
        for words in (SIGNER, "Pelix Root", TEAM, "holds", "2099-12-31T00:00:00Z",
                      ":".join(fingerprint[at:at + 2] for at in range(0, 64, 2))):
            self.assertIn(words, text)

    def test_a_package_that_nobody_signed(self):
        code, result, errors = self.verify(SAMPLE)
        self.assertEqual((code, result["signature"]["signed"]), (0, False))
        self.assertIn("is not signed", errors)
        self.assert_refused(SAMPLE, "is not signed", "--require-signed")
        self.assert_refused(SAMPLE, "is not signed", "--require-team", TEAM)

    def test_a_chain_that_ends_in_nobody_known(self):
        signature = self.assert_refused(self.signed(), "ends neither in Apple's root", trusts=False)
        self.assertEqual((signature["holds"], signature["trusted"], signature["anchor"]), (True, False, None))

    def test_the_team(self):
        self.assert_accepted(self.signed(), "--require-team", TEAM)
        self.assert_refused(self.signed(), 'by the team "%s", not by "OTHER12345"' % TEAM, "--require-team", "OTHER12345")

    def test_sha256_digests_and_one_signature_of_two(self):
        self.assert_accepted(self.signed(digest="sha256"))
        self.assertEqual(self.assert_accepted(self.signed(parts=("signature",)))["cms"], None)
        self.assertEqual(self.assert_accepted(self.signed(parts=("x-signature",)))["rsa"], None)

    def test_certificates_that_are_not_for_packages(self):
        signature = self.assert_refused(self.signed(use="code"), "not for installer packages")
        self.assertTrue(signature["holds"])

    def test_an_application_certificate_alone_and_without_its_issuers(self):
        package = self.signed("--bare", use="code", parts=("signature",))
        signature = self.assert_refused(package, "not for installer packages")
        self.assertEqual([one["name"] for one in signature["chain"]], [SIGNER])

    def test_times(self):
        self.assert_refused(self.signed("--validity", "past"), "had expired")
        self.assert_refused(self.signed("--validity", "future"), "was not valid yet")

    def test_it_is_judged_at_the_time_of_a_timestamp(self):
        token = sp.timestamp_token(self.clock(), IN_2020)
        signature = self.assert_accepted(self.signed("--validity", "past", timestamp=token))
        self.assertEqual(signature["judgedAt"], "2020-07-01T00:00:00Z")
        self.assertEqual(signature["timestamp"], {"time": "2020-07-01T00:00:00Z", "service": "Time", "counts": True,
                                                  "problem": None})

    def test_timestamps_that_count_for_nothing(self):
        stranger = sp.make_identity("Stranger", self.path("stranger.pem"), "--use", "timestamps")
        mail = sp.authorities().issue("Mail", self.path("mail.pem"), use="mail")
        for words, clock in (("unknown", stranger), ("not for timestamps", mail)):
            package = self.signed("--validity", "past", timestamp=sp.timestamp_token(clock, IN_2020))
            signature = self.assert_refused(package, "had expired")
            self.assertIn(words, signature["timestamp"]["problem"])

    def test_timestamps_that_are_forged(self):
        token = sp.timestamp_token(self.clock(), IN_2020)
        forgeries = {"lies in the future": sp.timestamp_token(self.clock(), IN_2090),
                     "of another signature": lambda signed: token(b"something else"),
                     "own signature does not hold": lambda signed: token(signed)[:-1] + b"x",
                     "own signature": lambda signed: sp.tlv(0x30, b"garbage")}
        for words, forgery in forgeries.items():
            self.assert_refused(self.signed(timestamp=forgery), words)

    def test_a_stapled_ticket(self):
        with open(self.signed(), "ab") as file:
            end = struct.pack("<4sHHII", b"t8lr", 1, 1, 0, 0)
            file.write(end + b"s8ch" + b"ticket" * 10 + struct.pack("<4sHHII", b"t8lr", 1, 2, 64, 0))
        self.assertTrue(self.assert_accepted(self.path("signed.pkg"))["ticket"])

    def test_trust_anchors_that_are_none(self):
        sp.write(self.path("anchors"), b"nothing")
        for path, words in ((self.path("anchors"), "has no certificate"), (self.path("missing"), "cannot be read")):
            self.assert_refused(self.signed(), words, "--trust-anchors", path, trusts=False)


class Alterations(VerifyTest):
    def altered_byte(self, place):
        package = sp.Package(self.signed())
        content = bytearray(package.bytes)
        content[place(package)] ^= 1
        sp.write(self.path("altered.pkg"), bytes(content))
        return self.path("altered.pkg")

    def altered_table(self, old, new):
        self.assertIn(old, sp.Package(self.signed()).text)
        sp.rewrite_table(self.signed(), self.path("altered.pkg"), lambda toc: toc.replace(old, new, 1))
        return self.path("altered.pkg")

    def with_heap(self, change):
        package = sp.Package(self.signed())
        sp.write(self.path("altered.pkg"), package.bytes[:package.heap_start] + change(package))
        return self.path("altered.pkg")

    def test_bytes(self):
        for words, place in {
                "digest of its table of contents is wrong": lambda package: package.heap_start + 7,
                "RSA signature is wrong": lambda package: package.heap_start + 20,
                "CMS signature is wrong": lambda package: package.heap_start + 276 + len(package.cms()) - 5}.items():
            self.assert_refused(self.altered_byte(place), words)

    def test_a_byte_of_the_header_or_the_table(self):
        for place in (0, 5, 10, 20, 28, 40, 200):
            code, _, _ = self.verify(self.altered_byte(lambda _, place=place: place))
            self.assertEqual(code, 1, place)

    def test_a_mode_a_name_and_a_checksum_in_the_table(self):
        text = sp.Package(self.signed()).text
        checksum = text[text.index(b'<extracted-checksum style="sha1">') + 33:][:40]
        for old, new in ((b"<mode>0644", b"<mode>0755"), (b"<name>Distribution", b"<name>distribution"),
                         (checksum, b"0" * 40), (b"</toc>", b"<file id=\"99\"><name>new</name></file></toc>")):
            self.assert_refused(self.altered_table(old, new), "RSA signature is wrong")

    def test_signatures_of_two_people(self):
        other = sp.authorities().issue("Other", self.path("other.pem"))

        def change(package):
            message = sp.cms_signature(other, package.digest, "sha1").ljust(9216, b"\0")
            return package.heap[:276] + message + package.heap[276 + 9216:]
        self.assert_refused(self.with_heap(change), "by somebody else")

    def test_signatures_that_are_exchanged_or_empty(self):
        self.assert_refused(self.with_heap(lambda package: package.heap[:20] + b"\0" * 256 + package.heap[276:]), "RSA")
        self.assert_refused(self.with_heap(lambda package: package.heap[:276] + b"\0" * 9216 + package.heap[9492:]), "CMS")

    def test_a_chain_of_another_signer(self):
        package = sp.Package(self.signed())
        other = sp.authorities().issue("Other", self.path("other.pem"))
        listed = sp.signature_element("signature", 20, 256, package.certificates()).encode()
        replaced = sp.signature_element("signature", 20, 256, sp.pem_blocks(other)).encode()
        self.assert_refused(self.altered_table(listed, replaced), "RSA signature is wrong")

    def test_the_table_of_another_package(self):
        other = sp.Package(SAMPLE)
        package = sp.Package(self.signed())
        sp.write(self.path("altered.pkg"), struct.pack(">4sHHQQI", b"xar!", 28, 1, len(other.packed), len(other.text), 1)
                 + other.packed + package.heap)
        code, result, _ = self.verify(self.path("altered.pkg"), "--require-signed")
        self.assertEqual((code, result["accepted"]), (1, False))


class Hostile(VerifyTest):
    def lying(self, lie):
        sp.rewrite_table(self.signed(), self.path("lying.pkg"),
                         lambda toc: toc.replace(b"<offset>20</offset><size>256<", lie))
        return self.path("lying.pkg")

    def test_places(self):
        for words, lie in {"outside": (b"99999999", b"256"), "would lie outside": (b"20", b"-1"), "lie outside": (b"-20", b"256"),
                           "lie outside of it": (b"20", b"0"), "signature would lie": (b"20", b"9" * 30),
                           "overlap": (b"300", b"256")}.items():
            self.assert_refused(self.lying(b"<offset>%s</offset><size>%s<" % lie), words)

    def test_a_message_of_a_hundred_megabytes(self):
        sp.rewrite_table(self.signed(), self.path("huge.pkg"),
                         lambda toc: toc.replace(b"<size>9216<", b"<size>100000000<"),
                         heap=lambda heap: heap[:276] + b"\x30\x84\x05\xf5\xe0\xfa" + b"\0" * 100000000)
        self.assert_refused(self.path("huge.pkg"), "larger than 1 MiB")

    def test_weak_keys_and_elliptic_curves(self):
        self.assert_refused(self.signed("--bits", "512"), "has only 512 bits")
        curve = sp.authorities().issue(SIGNER, self.path("curve.pem"), "--key", "ec")
        package = sp.sign_by_openssl(SAMPLE, self.path("curve.pkg"), curve, parts=("x-signature",))
        self.assert_accepted(package)
        mixed = sp.sign_by_openssl(SAMPLE, self.path("mixed.pkg"), self.signer(), certificates=sp.pem_blocks(curve))
        self.assert_refused(mixed, "RSA signature is wrong")

    def test_chains_that_go_round(self):
        first = sp.make_identity("Round A", self.path("a.pem"), "--use", "authority")
        second = sp.make_identity("Round B", self.path("b.pem"), "--use", "authority", "--issuer", first)
        again = sp.make_identity("Round A", self.path("c.pem"), "--use", "authority", "--issuer", second)
        signer = sp.make_identity(SIGNER, self.path("signer.pem"), "--use", "packages", "--issuer", again, "--bare")
        blocks = [sp.der(path) for path in (signer, again, second)]
        package = sp.sign_by_openssl(SAMPLE, self.path("round.pkg"), signer, certificates=blocks)
        self.assert_refused(package, "ends neither in Apple's root")

    def test_many_certificates_and_large_ones(self):
        root = sp.der(sp.authorities().root)
        package = sp.sign_by_openssl(SAMPLE, self.path("many.pkg"), self.signer(), certificates=[root] * 10000)
        self.assert_refused(package, "too many or too large certificates")
        package = sp.sign_by_openssl(SAMPLE, self.path("large.pkg"), self.signer(), certificates=[b"\x30" * 1000000])
        self.assert_refused(package, "too many or too large certificates")

    def test_a_certificate_of_ten_thousand_names(self):
        names = ",".join("DNS:a%d.example" % number for number in range(10000))
        sp.write(self.path("names.cnf"), ("[req]\ndistinguished_name=dn\nprompt=no\nx509_extensions=ext\n[dn]\nCN=%s\n[ext]\n"
                                          "extendedKeyUsage=1.2.840.113635.100.4.13\nsubjectAltName=%s\n" % (SIGNER, names)).encode())
        sp.openssl("req", "-x509", "-nodes", "-newkey", "rsa:2048", "-config", self.path("names.cnf"), "-days", "2",
                   "-keyout", self.path("names.key"), "-out", self.path("names.crt"))
        with open(self.path("names.pem"), "wb") as both:
            for part in ("names.crt", "names.key"):
                with open(self.path(part), "rb") as file:
                    both.write(file.read())
        package = sp.sign_by_openssl(SAMPLE, self.path("names.pkg"), self.path("names.pem"), reserved=1 << 19)
        signature = self.assert_refused(package, "ends neither in Apple's root")
        self.assertEqual(signature["chain"][0]["name"], SIGNER)
        self.assertTrue(signature["holds"])

    def test_archives_that_are_hostile(self):
        for name in ("signed", "nested-too-deeply", "wrong-toc-checksum", "offset-beyond"):
            subprocess.run([sys.executable, MAKE_VARIANT, name, self.path("variant.pkg")], check=True)
            self.verify(self.path("variant.pkg"))
        subprocess.run([sys.executable, MAKE_VARIANT, "signed", self.path("noise.pkg")], check=True)
        self.assert_refused(self.path("noise.pkg"), "no certificate that can be read")

    def test_what_is_no_package(self):
        sp.write(self.path("plain"), b"plain\n" * 100)
        for path, words in ((self.path("plain"), "is not an installer package"), (self.path("missing"), "does not exist"),
                            (self.folder, "is a folder")):
            self.assert_refused(path, words)


if __name__ == "__main__":
    unittest.main(argv=sys.argv[:1])
