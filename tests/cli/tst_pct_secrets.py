#!/usr/bin/env python3
# SPDX-License-Identifier: Apache-2.0
"""Keys and passwords stay where they are, and a run that is interrupted leaves nothing.

tst_pct_secrets.py PCT STAND-INS SAMPLE-PACKAGE
"""
import base64
import os
import re
import shutil
import signal
import subprocess
import sys
import threading
import unittest

sys.path.insert(0, os.path.join(os.path.dirname(os.path.abspath(__file__)), "../support"))
import signed_package as sp  # noqa: E402

PCT, STAND_INS, SAMPLE = [os.path.abspath(path) for path in sys.argv[1:4]]
SIGNER = "Developer ID Installer: Example Org (ABCDE12345)"
PASSWORD = "s3cret-Zebra-%d" % os.getpid()


class Run:
    """A run of pct that waits for the timestamp service until it is told to go on."""

    def __init__(self, test, arguments, program=PCT):
        self.test, self.asked, self.goes_on = test, threading.Event(), threading.Event()
        clock = sp.authorities().issue("Time", test.path("time.pem"), use="timestamps")
        self.service = sp.TimestampService(test.path("service"), clock, self.answer)
        self.service.server.handle_error = lambda *_: None  # whoever is interrupted does not wait for the answer
        test.addCleanup(self.service.__exit__)
        test.addCleanup(self.goes_on.set)
        arguments = [argument.replace("SERVICE", self.service.url) for argument in arguments]
        self.process = subprocess.Popen([program, *arguments], env=test.environment(), stdout=subprocess.PIPE,
                                        stderr=subprocess.PIPE)
        test.assertTrue(self.asked.wait(120), "nobody has asked for a timestamp")

    def answer(self, reply):
        self.asked.set()
        self.goes_on.wait(120)
        return 200, reply

    def end(self):
        out, err = self.process.communicate(timeout=120)
        return self.process.returncode, out, err


class SecretsTest(sp.FolderTest):
    folders = ("identities", "tmp", "service", "out")

    def setUp(self):
        super().setUp()
        # The certificate, the public key and what openssl makes of the private one do not lie where pct works.
        made = sp.authorities().issue(SIGNER, self.path("service/signer.pem"))
        shutil.copy(made, self.path("service/plain.pem"))
        subprocess.run(["openssl", "pkcs12", "-export", "-in", made, "-inkey", made, "-passout", "pass:" + PASSWORD, "-out",
                        self.path("identities/signer.p12")], check=True)
        os.chmod(self.path("identities/signer.p12"), 0o600)
        self.secrets = [PASSWORD.encode(), base64.b64encode(PASSWORD.encode())] + self.forms_of(self.path("service/plain.pem"))

    @staticmethod
    def forms_of(key):
        """The primes of an RSA key as bytes, digits and text; its modulus is no secret."""
        text = sp.openssl("rsa", "-noout", "-text", "-in", key).decode()
        primes = [bytes.fromhex(re.sub(r"[\s:]", "", re.search(r"%s:((?:\n +[0-9a-f:]+)+)" % name, text)[1])).lstrip(b"\0")
                  for name in ("prime1", "prime2")]
        found = []
        for prime in primes:
            found += [prime[:24], prime[:24].hex().encode(), prime[:24].hex().upper().encode(), prime[:24].hex(":").encode()]
        with open(key, encoding="ascii") as file:
            lines = re.search(r"PRIVATE KEY-----\n(.*?)\n-----END", file.read(), re.S)[1].encode().split()
        # Behind these lies the modulus.
        return found + lines[8:-1]

    def environment(self):
        return {**os.environ, "PCT_IDENTITIES_DIR": self.path("identities"), "PCT_IDENTITIES_PASSWORD": PASSWORD,
                "PCT_HOSTTOOLS": STAND_INS, "TMPDIR": self.path("tmp"), "PCT_DEBUG": "1", "QT_LOGGING_RULES": "*=true"}

    def sign(self):
        return ["sign", SAMPLE, "--json", "--output", self.path("out/signed.pkg"), "--identity", SIGNER, "--timestamp",
                "SERVICE"]

    def build(self):
        return ["build", "--json", "--product", "editor", "--input", SAMPLE, "--output", self.path("out/signed.pkg"), "--sign",
                SIGNER, "--timestamp", "SERVICE"]

    def productsign(self):
        return ["--timestamp=SERVICE", "--sign", SIGNER, SAMPLE, self.path("out/signed.pkg")]

    def assert_silent(self, content, where):
        for secret in self.secrets:
            self.assertNotIn(secret, content, where)

    def assert_no_process_names_them(self):
        seen = 0
        for process in os.listdir("/proc"):
            try:
                with open("/proc/%s/cmdline" % process, "rb") as file:
                    line = file.read()
            except OSError:
                continue
            seen += b"productsign" in line
            self.assert_silent(line, line)
        self.assertGreater(seen, 0, "the process that signs has not been looked at")

    def assert_no_file_holds_them(self):
        for folder in ("tmp", "out"):
            for place, _, names in os.walk(self.path(folder)):
                for name in names:
                    with open(os.path.join(place, name), "rb") as file:
                        self.assert_silent(file.read(), os.path.join(place, name))

    def leftovers(self):
        return sorted(os.listdir(self.path("tmp")) + os.listdir(self.path("out")))


class Silence(SecretsTest):
    def test_the_secrets_are_recognized(self):
        der = sp.openssl("pkey", "-in", self.path("service/plain.pem"), "-outform", "DER")
        with open(self.path("service/plain.pem"), "rb") as file:
            for content in (der, der.hex().encode(), file.read(), b"password " + PASSWORD.encode()):
                self.assertTrue(any(secret in content for secret in self.secrets))

    def test_no_log_no_json_no_process_and_no_file_has_them(self):
        for arguments in (self.sign(), self.build()):
            with self.subTest(arguments[0]):
                run = Run(self, [*arguments, "--force"])
                self.assert_no_process_names_them()
                self.assert_no_file_holds_them()
                run.goes_on.set()
                code, out, err = run.end()
                self.assertEqual(code, 0, err)
                self.assert_silent(out + err, arguments[0])
                self.assert_no_file_holds_them()
                self.assertEqual(self.leftovers(), ["signed.pkg"])

    def test_neither_has_a_failure(self):
        wrong = {**self.environment(), "PCT_IDENTITIES_PASSWORD": PASSWORD + "-wrong"}
        for arguments in (["identities", "--for", "packages", "--json"],
                          ["sign", SAMPLE, "--json", "--output", self.path("out/signed.pkg"), "--identity", SIGNER]):
            result = subprocess.run([PCT, *arguments], env=wrong, capture_output=True, check=False)
            self.assertIn(b"PCT_IDENTITIES_PASSWORD", result.stdout + result.stderr)
            self.assert_silent(result.stdout + result.stderr, arguments)
        self.assertEqual(self.leftovers(), [])


class Interruption(SecretsTest):
    def interrupt(self, number, arguments, program=PCT):
        run = Run(self, arguments, program)
        os.kill(run.process.pid, number)
        result = run.end()
        self.assert_silent(result[1] + result[2], number)
        self.assertEqual(self.leftovers(), [])
        return result

    def test_a_run_that_waits_for_a_timestamp_ends_and_leaves_nothing(self):
        for arguments in (self.sign(), self.build()):
            for number in (signal.SIGINT, signal.SIGTERM):
                with self.subTest(verb=arguments[0], signal=number):
                    code, _, err = self.interrupt(number, arguments)
                    self.assertEqual(code, -number)
                    self.assertIn(b"interrupted; run it again", err)

    def test_so_does_the_command_that_signs(self):
        for number in (signal.SIGINT, signal.SIGTERM):
            with self.subTest(number):
                code, _, err = self.interrupt(number, self.productsign(), os.path.join(STAND_INS, "productsign"))
                self.assertEqual((code, err.count(b"\n")), (1, 1), err)
                self.assertIn(b"stopped by a signal", err)

    def test_what_was_there_stays(self):
        sp.write(self.path("out/signed.pkg"), b"there")
        run = Run(self, [*self.sign(), "--force"])
        os.kill(run.process.pid, signal.SIGTERM)
        self.assertEqual(run.end()[0], -signal.SIGTERM)
        self.assertEqual(self.leftovers(), ["signed.pkg"])
        with open(self.path("out/signed.pkg"), "rb") as file:
            self.assertEqual(file.read(), b"there")


if __name__ == "__main__":
    unittest.main(argv=sys.argv[:1])
