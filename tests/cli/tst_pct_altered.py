#!/usr/bin/env python3
# SPDX-License-Identifier: Apache-2.0
"""A package that `pct sign` has signed verifies for everybody, and none of its alterations does.

tst_pct_altered.py PCT STAND-INS SAMPLE-PACKAGE

Judges are openssl, over what Python has read, libarchive's bsdtar, the stand-in of pkgutil, and `pct verify`.
"""
import functools
import os
import re
import struct
import subprocess
import sys
import tempfile
import unittest
import zlib

sys.path.insert(0, os.path.join(os.path.dirname(os.path.abspath(__file__)), "../support"))
import signed_package as sp  # noqa: E402

PCT, STAND_INS, SAMPLE = [os.path.abspath(path) for path in sys.argv[1:4]]
SIGNER = "Developer ID Installer: Example Org (ABCDE12345)"


@functools.cache
def place():
    """A folder with the identity and what was signed with it, once for all tests."""
    folder = tempfile.TemporaryDirectory()
    unittest.addModuleCleanup(folder.cleanup)
    os.mkdir(os.path.join(folder.name, "identities"))
    sp.authorities().issue(SIGNER, os.path.join(folder.name, "identities/signer.pem"))
    subprocess.run([PCT, "sign", SAMPLE, "--output", os.path.join(folder.name, "signed.pkg"), "--identity", SIGNER],
                   check=True, capture_output=True, env=environment(folder.name))
    return folder.name


def environment(folder):
    return {**os.environ, "PCT_IDENTITIES_DIR": os.path.join(folder, "identities"), "PCT_HOSTTOOLS": STAND_INS}


def signed():
    return sp.Package(os.path.join(place(), "signed.pkg"))


def with_byte(package, at):
    content = bytearray(package.bytes)
    content[at] ^= 1
    return bytes(content)


def packed(package, text, digest=None):
    """The package with another table of contents, and with its digest where one is wanted."""
    table = zlib.compress(text)
    head = struct.pack(">4sHHQQI", b"xar!", 28, 1, len(table), len(text), 1) + table
    heap = package.heap if digest is None else sp.hashlib.sha1(table).digest() + package.heap[20:]
    return head + heap


def with_table(change):
    def altered(package):
        text = change(package.text)
        assert text != package.text
        return packed(package, text, digest=True)
    return altered


def replaced(old, new):
    return with_table(lambda text: text.replace(old, new, 1))


def with_heap(change):
    return lambda package: package.bytes[:package.heap_start] + change(package)


def message_of(name):
    """A message over the same digest by somebody else."""
    def change(package):
        other = sp.authorities().issue(name, os.path.join(place(), "other.pem"))
        message = sp.cms_signature(other, package.digest, "sha1").ljust(9216, b"\0")
        return package.heap[:276] + message + package.heap[276 + 9216:]
    return change


def certificates_of(name):
    def change(text):
        other = sp.authorities().issue(name, os.path.join(place(), "other.pem"))
        listed = "".join("<X509Certificate>%s</X509Certificate>" % sp.base64.encodebytes(one).decode()
                         for one in sp.pem_blocks(other)).encode()
        return re.sub(rb"<X509Data>.*?</X509Data>", lambda _: b"<X509Data>" + listed + b"</X509Data>", text, flags=re.S)
    return change


ALTERATIONS = {
    "a_byte_of_the_table": lambda package: with_byte(package, package.heap_start - len(package.packed) // 2),
    "a_byte_of_the_digest": lambda package: with_byte(package, package.heap_start + 5),
    "a_byte_of_the_rsa_signature": lambda package: with_byte(package, package.heap_start + 150),
    "a_byte_of_the_message": lambda package: with_byte(package, package.heap_start + 276 + len(package.cms()) - 3),
    "a_mode": replaced(b"<mode>0644", b"<mode>0755"),
    "an_owner": replaced(b"<uid>0", b"<uid>1"),
    "a_name": replaced(b"<name>Distribution", b"<name>distribution"),
    "a_size": with_table(lambda text: re.sub(rb"<size>(\d+)(</size>\s*<encoding)", rb"<size>1\1\2", text, 1)),
    "a_checksum": with_table(lambda text: re.sub(rb'(<extracted-checksum style="sha1">)[0-9a-f]{4}', rb"\g<1>0000", text, 1)),
    "a_further_member": replaced(b"</toc>", b'<file id="99"><name>new</name><type>directory</type></file></toc>'),
    "a_missing_member": with_table(lambda text: re.sub(rb'<file id="\d+">(?:(?!<file).)*?</file>', b"", text, 1, re.S)),
    "a_table_without_its_digest": lambda package: packed(package, package.text.replace(b"<uid>0", b"<uid>1", 1)),
    "a_message_by_somebody_else": with_heap(message_of("Other")),
    "certificates_of_somebody_else": with_table(certificates_of("Other")),
    "an_rsa_signature_of_zeros": with_heap(lambda package: package.heap[:20] + bytes(256) + package.heap[276:]),
    "a_message_of_zeros": with_heap(lambda package: package.heap[:276] + bytes(9216) + package.heap[9492:]),
    "a_heap_that_is_moved": with_heap(lambda package: package.heap[:20] + b"\0" + package.heap[20:]),
    "an_end_that_is_missing": lambda package: package.bytes[:package.heap_start + 200],
}


class SignedPackages(sp.FolderTest):
    def openssl_accepts(self, path):
        try:
            package = sp.Package(path)
            return (package.stored_digest() == package.digest and sp.rsa_holds(package, self.folder)
                    and sp.cms_holds(package, self.folder, sp.authorities().root)
                    and self.signer_of_message() == package.certificates()[0])
        except (AssertionError, ValueError, zlib.error, subprocess.CalledProcessError):
            return False

    def signer_of_message(self):
        """Of the one that has just been judged."""
        sp.openssl("cms", "-verify", "-noverify", "-inform", "DER", "-binary", "-in", self.path("message"), "-content",
                   self.path("content"), "-signer", self.path("signer"), "-out", os.devnull)
        return sp.der(self.path("signer"))

    def run_tool(self, *arguments):
        return subprocess.run(arguments, capture_output=True, check=False, env=environment(place()))

    def pkgutil(self, path):
        return self.run_tool(os.path.join(STAND_INS, "pkgutil"), "--check-signature", path)

    def verify(self, path):
        return self.run_tool(PCT, "verify", "--require-signed", "--trust-anchors", sp.authorities().root, path)

    def test_the_signed_one_verifies_for_everybody(self):
        path = os.path.join(place(), "signed.pkg")
        self.assertTrue(self.openssl_accepts(path))
        self.assertEqual(self.run_tool("bsdtar", "-xOf", path, "Distribution").returncode, 0)
        self.assertEqual(self.pkgutil(path).returncode, 0)
        self.assertEqual(self.verify(path).returncode, 0)

    def assert_altered(self, alter):
        path = self.path("altered.pkg")
        sp.write(path, alter(signed()))
        self.assertFalse(self.openssl_accepts(path), "openssl")
        self.assertEqual(self.pkgutil(path).returncode, 1, "pkgutil")
        result = self.verify(path)
        self.assertEqual((result.returncode, result.stderr.count(b"\n")), (1, 1), result.stderr)

    def test_bytes_of_members_are_found_by_who_unpacks_them(self):
        package = signed()
        sp.write(self.path("altered.pkg"), with_byte(package, package.heap_start + package.end_of_members() - 1))
        self.assertNotEqual(self.run_tool("bsdtar", "-xOf", self.path("altered.pkg")).returncode, 0)
        expanded = self.run_tool(os.path.join(STAND_INS, "pkgutil"), "--expand", self.path("altered.pkg"), self.path("x"))
        self.assertEqual(expanded.returncode, 1)


for name, alteration in ALTERATIONS.items():
    setattr(SignedPackages, "test_" + name, lambda self, alteration=alteration: self.assert_altered(alteration))


if __name__ == "__main__":
    unittest.main(argv=sys.argv[:1])
