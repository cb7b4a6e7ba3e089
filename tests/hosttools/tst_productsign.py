#!/usr/bin/env python3
# SPDX-License-Identifier: Apache-2.0
"""What `productsign` makes, judged by openssl and by a reader of its own.

tst_productsign.py STAND-INS SAMPLE-PACKAGE
"""
import os
import socket
import subprocess
import sys
import unittest

sys.path.insert(0, os.path.join(os.path.dirname(os.path.abspath(__file__)), "../support"))
import signed_package as sp  # noqa: E402

STAND_INS, SAMPLE = [os.path.abspath(path) for path in sys.argv[1:3]]
MAKE_VARIANT = os.path.join(sp.SUPPORT, "make-xar-variant.py")
SIGNER = "Developer ID Installer: Example Org (ABCDE12345)"
TIMESTAMP_ATTRIBUTE = b"id-smime-aa-timeStampToken"


class SigningTest(sp.FolderTest):
    folders = ("identities",)

    def identity(self, name=SIGNER, file="signer.pem", *options, use="packages"):
        return sp.authorities().issue(name, self.path("identities/" + file), *options, use=use)

    def run_tool(self, *arguments, environment=()):
        return subprocess.run([os.path.join(STAND_INS, arguments[0]), *arguments[1:]], capture_output=True, check=False,
                              env={**os.environ, "PCT_IDENTITIES_DIR": self.path("identities"), **dict(environment)})

    def sign(self, package, *options, output="signed.pkg", identity=SIGNER, environment=()):
        return self.run_tool("productsign", *options, "--sign", identity, package, self.path(output),
                             environment=environment)

    def signed(self, package=SAMPLE, *options, output="signed.pkg", **further):
        result = self.sign(package, *options, output=output, **further)
        self.assertEqual((result.returncode, result.stderr), (0, b""))
        return sp.Package(self.path(output))

    def assert_holds(self, package):
        self.assertTrue(package.is_sha1)
        self.assertEqual(package.stored_digest(), package.digest)
        self.assertTrue(sp.rsa_holds(package, self.folder), "RSA")
        self.assertTrue(sp.cms_holds(package, self.folder, sp.authorities().root), "CMS")

    def assert_refused(self, result, words):
        self.assertEqual(result.returncode, 1, result.stderr)
        self.assertTrue(result.stderr.startswith(b"productsign: ") and result.stderr.count(b"\n") == 1, result.stderr)
        self.assertIn(words, result.stderr.decode())
        self.assertFalse(os.path.exists(self.path("signed.pkg")))
        self.assertEqual([name for name in os.listdir(self.folder) if name.startswith(".")], [])

    def variant(self, name):
        subprocess.run([sys.executable, MAKE_VARIANT, name, self.path("variant.pkg")], check=True)
        return self.path("variant.pkg")


class Results(SigningTest):
    def test_openssl_accepts_both_signatures(self):
        self.identity()
        self.assert_holds(self.signed())

    def test_both_signatures_name_the_chain_from_the_signer_to_the_root(self):
        signer = self.identity()
        package = self.signed()
        expected = [sp.der(signer), sp.der(sp.authorities().issuer), sp.der(sp.authorities().root)]
        self.assertEqual(package.certificates("signature"), expected)
        self.assertEqual(package.certificates("x-signature"), expected)

    def test_the_chain_is_found_in_the_folder(self):
        self.identity(SIGNER, "signer.pem", "--bare")
        for name in ("root", "issuer"):
            sp.write(self.path("identities/%s.cer" % name), sp.der(sp.authorities().path(name + ".pem")))
        self.assertEqual(len(self.signed().certificates()), 3)

    def test_it_is_laid_out_as_apple_does(self):
        self.identity()
        toc = self.signed().toc
        places = [(toc.find(name).get("style"), toc.find(name).findtext("offset"), toc.find(name).findtext("size"))
                  for name in ("checksum", "signature", "x-signature")]
        self.assertEqual(places, [("sha1", "0", "20"), ("RSA", "20", "256"), ("CMS", "276", "9216")])
        self.assertLess(list(toc).index(toc.find("x-signature")), list(toc).index(toc.find("file")))

    def test_the_signed_attributes_are_those_of_apples(self):
        self.identity()
        sp.write(self.path("message"), self.signed().cms())
        text = sp.openssl("cms", "-cmsout", "-print", "-noout", "-inform", "DER", "-in", self.path("message")).decode()
        for word in ("contentType", "signingTime", "messageDigest", "eContent: <ABSENT>", "algorithm: sha1 "):
            self.assertIn(word, text)
        self.assertNotIn("S/MIME Capabilities", text)

    def test_members_and_what_is_known_of_them_stay(self):
        self.identity()
        for name in ("plain", "signed", "xz", "base64-names", "sha256", "no-toc-checksum", "gaps-and-trailer", "longer-header"):
            with self.subTest(name):
                original = SAMPLE if name == "plain" else self.variant(name)
                package = self.signed(original)
                self.assertEqual(package.members(), sp.Package(original).members())
                self.assert_holds(package)

    def test_an_earlier_signature_and_a_ticket_go(self):
        self.identity()
        package = self.signed(self.variant("signed"))
        self.assertEqual(len(package.toc.findall("signature")), 1)
        self.assertEqual(len(package.toc.findall("x-signature")), 1)
        self.assertNotIn(b"S" * 64, package.bytes)
        self.assertNotIn(b"t8lr", package.bytes)
        self.assertEqual(package.end_of_members(), len(package.heap))

    def test_a_package_can_be_signed_again_and_again(self):
        self.identity()
        size = len(self.signed().bytes)
        for _ in range(3):
            result = self.sign(self.path("signed.pkg"))
            self.assertEqual(result.returncode, 0)
            package = sp.Package(self.path("signed.pkg"))
            self.assert_holds(package)
            self.assertLessEqual(len(package.bytes), size + 4096)

    def test_members_move_by_whole_pages(self):
        self.identity()
        before, after = sp.Package(SAMPLE), self.signed()
        data = before.toc.find(".//data/offset"), after.toc.find(".//data/offset")
        places = [package.heap_start + int(offset.text) for package, offset in zip((before, after), data)]
        self.assertNotEqual(*places)
        self.assertEqual((places[1] - places[0]) % 4096, 0)

    def test_other_readers_take_the_package(self):
        self.identity()
        self.signed()
        names = [subprocess.run(["bsdtar", "-tf", path], check=True, capture_output=True).stdout
                 for path in (SAMPLE, self.path("signed.pkg"))]
        self.assertEqual(*names)
        self.assertEqual(self.run_tool("pkgutil", "--expand", self.path("signed.pkg"), self.path("x")).returncode, 0)

    def test_it_says_what_it_has_done(self):
        self.identity()
        lines = self.sign(SAMPLE).stdout.decode().splitlines()
        self.assertEqual(lines, [
            'productsign: signing product with identity "%s" from %s' % (SIGNER, self.path("identities")),
            'productsign: adding certificate "%s"' % SIGNER, 'productsign: adding certificate "Pelix Issuer"',
            'productsign: adding certificate "Pelix Root"',
            "productsign: Wrote signed product archive to " + self.path("signed.pkg")])

    def test_a_longer_key_has_a_longer_signature(self):
        self.identity(SIGNER, "signer.pem", "--bits", "4096")
        package = self.signed()
        self.assertEqual(package.toc.find("signature").findtext("size"), "512")
        self.assert_holds(package)

    def test_an_identity_is_known_by_its_fingerprint_too(self):
        digest = sp.fingerprint(sp.der(self.identity()), "sha1")
        self.assert_holds(self.signed(SAMPLE, identity=digest))
        self.assert_holds(self.signed(SAMPLE, identity=digest.lower()))

    def test_an_identity_can_lie_in_a_locked_file(self):
        self.identity(SIGNER, "signer.p12", "--password", "secret")
        self.assert_holds(self.signed(SAMPLE, environment={"PCT_IDENTITIES_PASSWORD": "secret"}))
        os.remove(self.path("signed.pkg"))
        self.assert_refused(self.sign(SAMPLE, environment={"PCT_IDENTITIES_PASSWORD": "wrong"}), "PCT_IDENTITIES_PASSWORD")

    def test_a_key_that_others_can_read_is_told(self):
        os.chmod(self.identity(), 0o644)
        result = self.sign(SAMPLE)
        self.assertEqual(result.returncode, 0)
        self.assertIn(b"others can read this private key", result.stderr)
        os.remove(self.path("signed.pkg"))
        self.assert_refused(self.sign(SAMPLE, "--strict-keys"), "others can read this private key")

    def test_a_key_of_the_owner_alone_is_strict_enough(self):
        self.identity()
        self.assert_holds(self.signed(SAMPLE, "--strict-keys"))
        os.remove(self.path("signed.pkg"))
        for mode in (0o640, 0o604):
            os.chmod(self.path("identities/signer.pem"), mode)
            self.assert_refused(self.sign(SAMPLE, "--strict-keys"), "chmod 600")


class Refusals(SigningTest):
    def test_certificates_that_do_not_fit(self):
        cases = {
            "not for installer packages": {"use": "code"},
            "has expired": {"options": ["--validity", "past"]},
            "not valid yet": {"options": ["--validity", "future"]},
            "its key is not RSA": {"options": ["--key", "ec"]},
            "its key has fewer than 2048 bits": {"options": ["--bits", "512"]},
        }
        for words, case in cases.items():
            with self.subTest(words):
                self.identity(SIGNER, "signer.pem", *case.get("options", []), use=case.get("use", "packages"))
                self.assert_refused(self.sign(SAMPLE), words)

    def test_a_key_of_another_certificate(self):
        self.identity(SIGNER, "signer.crt")
        self.identity("Another", "another.crt")
        os.replace(self.path("identities/another.key"), self.path("identities/signer.key"))
        os.remove(self.path("identities/another.crt"))
        self.assert_refused(self.sign(SAMPLE), "has no certificate that belongs to its private key")

    def test_an_identity_that_is_not_there(self):
        self.assert_refused(self.sign(SAMPLE), "there is no identity")

    def test_in_house_trust_needs_a_word(self):
        self.identity("In House", "signer.pem", use="code")
        self.assert_refused(self.sign(SAMPLE, identity="In House"), "not for installer packages")
        self.assert_holds(self.signed(SAMPLE, "--allow-any-certificate", identity="In House"))

    def test_in_house_trust_does_not_prolong_a_certificate(self):
        self.identity(SIGNER, "signer.pem", "--validity", "past")
        self.assert_refused(self.sign(SAMPLE, "--allow-any-certificate"), "has expired")

    def test_what_is_no_package(self):
        self.identity()
        sp.write(self.path("plain"), b"plain\n" * 100)
        self.assert_refused(self.sign(self.path("plain")), "not a flat package")
        self.assert_refused(self.sign(self.path("missing")), "cannot be opened")

    def test_hostile_packages_leave_nothing_behind(self):
        self.identity()
        os.mkdir(self.path("hostile"))
        subprocess.run([sys.executable, MAKE_VARIANT, "--all", "hostile", self.path("hostile")], check=True)
        for name in os.listdir(self.path("hostile")):
            with self.subTest(name):
                result = self.sign(self.path("hostile/" + name))
                if result.returncode == 0:
                    os.remove(self.path("signed.pkg"))
                else:
                    self.assert_refused(result, "")

    def test_tables_that_lie_about_places(self):
        self.identity()
        lies = {
            "a member lies where": lambda toc: toc.replace(
                b"<toc>", b'<toc><signature style="RSA"><offset>20</offset><size>256</size></signature>'),
            "leads beyond its end": lambda toc: toc.replace(b"</data>", b'</data><ea id="0"><offset>5000</offset><length>'
                                                            b"99999999</length></ea>", 1),
            "does not say where": lambda toc: toc.replace(b"</data>", b'</data><ea id="0"><offset>-5</offset><length>1'
                                                          b"</length></ea>", 1),
        }
        for words, lie in lies.items():
            with self.subTest(words):
                sp.rewrite_table(SAMPLE, self.path("lying.pkg"), lie)
                self.assert_refused(self.sign(self.path("lying.pkg")), words)

    def test_an_output_that_is_there_stays_after_a_failure(self):
        sp.write(self.path("there.pkg"), b"there")
        self.assertEqual(self.sign(SAMPLE, output="there.pkg").returncode, 1)
        with open(self.path("there.pkg"), "rb") as file:
            self.assertEqual(file.read(), b"there")

    def test_wrong_usage(self):
        for arguments in ([], [SAMPLE, "x"], ["--sign", SIGNER, SAMPLE], ["--sign", SIGNER, "--what", SAMPLE, "x"],
                          ["--sign", SIGNER, "--timestamp", SAMPLE, "x"]):
            result = self.run_tool("productsign", *arguments)
            self.assertEqual(result.returncode, 2)
            self.assertTrue(result.stderr.startswith(b"usage: productsign "))


class Timestamps(SigningTest):
    def service(self, answer=lambda reply: (200, reply)):
        identity = sp.authorities().issue("Time", self.path("time.pem"), use="timestamps")
        service = sp.TimestampService(self.folder, identity, answer)
        self.addCleanup(service.__exit__)
        return service

    def test_a_timestamp_is_over_the_signature(self):
        self.identity()
        service = self.service()
        package = self.signed(SAMPLE, "--timestamp=" + service.url)
        self.assertEqual(service.questions, 1)
        self.assert_holds(package)
        sp.write(self.path("message"), package.cms())
        text = sp.openssl("cms", "-cmsout", "-print", "-noout", "-inform", "DER", "-in", self.path("message"))
        self.assertIn(TIMESTAMP_ATTRIBUTE, text)
        self.assertIn(b"productsign: using timestamp authority for signature", self.sign(
            SAMPLE, "--timestamp=" + service.url).stdout)

    def test_there_is_none_when_nobody_asks(self):
        self.identity()
        for option in ([], ["--timestamp=none"]):
            self.assertNotIn(b"timeStampToken", sp.openssl(
                "asn1parse", "-inform", "DER", data=self.signed(SAMPLE, *option).cms()))

    def test_a_service_that_fails_is_an_error(self):
        self.identity()
        other = self.service()
        first = []

        def repeated(reply):
            first.append(reply)
            return 200, first[0]
        answers = {"500": lambda reply: (500, reply), "garbage": lambda reply: (200, b"garbage"),
                   "nothing": lambda reply: (200, b""), "broken": lambda reply: (200, reply[:-100]),
                   "endless": lambda reply: (200, reply + b"\0" * (2 << 20))}
        for name, answer in answers.items():
            with self.subTest(name):
                other.answer = answer
                self.assert_refused(self.sign(SAMPLE, "--timestamp=" + other.url), "timestamp service")
        other.answer = repeated
        self.signed(SAMPLE, "--timestamp=" + other.url)
        os.remove(self.path("signed.pkg"))
        self.assert_refused(self.sign(SAMPLE, "--timestamp=" + other.url), "not given the timestamp")

    def test_a_service_that_is_not_there_is_an_error(self):
        self.identity()
        with socket.socket() as closed:
            closed.bind(("127.0.0.1", 0))
            url = "http://127.0.0.1:%d/" % closed.getsockname()[1]
            self.assert_refused(self.sign(SAMPLE, "--timestamp=" + url), "timestamp service cannot be asked")

    def test_only_the_web_is_asked(self):
        self.identity()
        sp.write(self.path("answer"), b"answer")
        self.assert_refused(self.sign(SAMPLE, "--timestamp=file://" + self.path("answer")), "timestamp service")


if __name__ == "__main__":
    unittest.main(argv=sys.argv[:1])
