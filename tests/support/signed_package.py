# SPDX-License-Identifier: Apache-2.0
"""Signed packages for tests: identities from openssl, and a reader of packages that has the signatures judged by openssl.

Shares no code with what it judges.
"""
import base64
import functools
import hashlib
import http.server
import os
import re
import resource
import shutil
import struct
import subprocess
import tempfile
import threading
import time
import unittest
import xml.etree.ElementTree
import zlib

SUPPORT = os.path.dirname(os.path.abspath(__file__))
SIGNATURE_NAMESPACE = "{http://www.w3.org/2000/09/xmldsig#}"


def openssl(*arguments, data=None):
    return subprocess.run(["openssl", *arguments], check=True, capture_output=True, input=data).stdout


def make_identity(name, output, *options):
    subprocess.run([os.path.join(SUPPORT, "make-identity"), "--name", name, "--output", output, *options], check=True)
    return output


def fingerprint(certificate, digest="sha256"):
    text = openssl("x509", "-inform", "DER", "-noout", "-fingerprint", "-" + digest, data=certificate).decode()
    return text.strip().split("=", 1)[1].replace(":", "")


def der(pem):
    """The first certificate of a file of text."""
    return openssl("x509", "-in", pem, "-outform", "DER")


class Authorities:
    """A root and what it has issued, in a folder."""

    def __init__(self, folder):
        self.folder = folder
        self.root = make_identity("Pelix Root", self.path("root.pem"), "--use", "authority")
        self.issuer = make_identity("Pelix Issuer", self.path("issuer.pem"), "--use", "authority", "--issuer", self.root)

    def path(self, name):
        return os.path.join(self.folder, name)

    def issue(self, name, output, *options, use="packages"):
        """Keys take their time, so equal identities are made once."""
        wanted = (name, os.path.splitext(output)[1], use, *options)
        made = self.path("made-" + hashlib.sha1(repr(wanted).encode()).hexdigest() + wanted[1])
        if not os.path.exists(made):
            make_identity(name, made, "--issuer", self.issuer, "--use", use, *options)
        shutil.copy(made, output)
        if output.endswith(".crt"):
            shutil.copy(made[:-3] + "key", output[:-3] + "key")
        return output


@functools.cache
def authorities():
    """Those of a whole test program: to make keys takes longer than most tests."""
    folder = tempfile.TemporaryDirectory()
    unittest.addModuleCleanup(folder.cleanup)
    return Authorities(folder.name)


def processor_seconds():
    """What the ended child processes took, whatever else the machine did."""
    used = resource.getrusage(resource.RUSAGE_CHILDREN)
    return used.ru_utime + used.ru_stime


class FolderTest(unittest.TestCase):
    """A test with a folder of its own, and what is to be in it."""

    folders = ()

    def setUp(self):
        place = tempfile.TemporaryDirectory()
        self.addCleanup(place.cleanup)
        self.folder = place.name
        for name in self.folders:
            os.mkdir(self.path(name))

    def path(self, name):
        return os.path.join(self.folder, name)


class Package:
    """A package as its bytes say."""

    def __init__(self, path):
        with open(path, "rb") as file:
            self.bytes = file.read()
        magic, header, _, packed, plain, algorithm = struct.unpack(">4sHHQQI", self.bytes[:28])
        assert magic == b"xar!", "header"
        self.is_sha1 = algorithm == 1
        self.packed = self.bytes[header:header + packed]
        self.text = zlib.decompress(self.packed)
        assert len(self.text) == plain, "length of the table of contents"
        self.toc = xml.etree.ElementTree.fromstring(self.text).find("toc")
        self.heap_start = header + packed
        self.heap = self.bytes[self.heap_start:]
        self.digest = hashlib.sha1(self.packed).digest()

    def stored_digest(self):
        return self.place(self.toc.find("checksum"))

    def place(self, element):
        offset, size = int(element.find("offset").text), int(element.find("size").text)
        assert offset + size <= len(self.heap)
        return self.heap[offset:offset + size]

    def certificates(self, element="signature"):
        path = "/".join(SIGNATURE_NAMESPACE + name for name in ("KeyInfo", "X509Data", "X509Certificate"))
        return [base64.b64decode(one.text) for one in self.toc.find(element).findall(path)]

    def members(self):
        """Paths and what is known of each: its bytes in the heap, and its element without offsets."""
        found = {}

        def visit(folder, prefix):
            for entry in folder.findall("file"):
                path = prefix + entry.findtext("name")
                found[path] = (self.data(entry), self.described(entry))
                visit(entry, path + "/")
        visit(self.toc, "")
        return found

    def data(self, entry):
        data = entry.find("data")
        if data is None:
            return None
        offset, length = int(data.findtext("offset")), int(data.findtext("length"))
        assert offset + length <= len(self.heap)
        return self.heap[offset:offset + length]

    @staticmethod
    def described(entry):
        copy = xml.etree.ElementTree.fromstring(xml.etree.ElementTree.tostring(entry))
        for below in copy.findall("file"):
            copy.remove(below)
        for offset in copy.iter("offset"):
            offset.text = ""
        return re.sub(rb"\s+", b"", xml.etree.ElementTree.tostring(copy))

    def end_of_members(self):
        ends = [int(data.findtext("offset")) + int(data.findtext("length")) for data in self.toc.iter("data")]
        return max(ends)

    def cms(self):
        """The message without the zeros behind it."""
        reserved = self.place(self.toc.find("x-signature"))
        length = len(first_element(reserved))
        assert reserved[length:].strip(b"\0") == b"", "not padded with zeros"
        return reserved[:length]


def rsa_holds(package, folder):
    """Whether openssl takes the RSA signature for one over the digest itself."""
    certificate, key, digest, signature = (os.path.join(folder, name) for name in ("cert", "key", "digest", "rsa"))
    write(certificate, package.certificates()[0])
    write(key, openssl("x509", "-inform", "DER", "-in", certificate, "-noout", "-pubkey"))
    write(digest, package.digest)
    write(signature, package.place(package.toc.find("signature")))
    done = subprocess.run(["openssl", "pkeyutl", "-verify", "-pubin", "-inkey", key, "-in", digest, "-sigfile", signature,
                           "-pkeyopt", "digest:sha1", "-pkeyopt", "rsa_padding_mode:pkcs1"], capture_output=True,
                          check=False)
    return done.returncode == 0


def cms_holds(package, folder, root=None):
    """Whether openssl takes the message for one over the digest, by somebody below the root."""
    message, digest = os.path.join(folder, "message"), os.path.join(folder, "content")
    write(message, package.place(package.toc.find("x-signature")))
    write(digest, package.digest)
    trust = ["-CAfile", root, "-purpose", "any", "-ignore_critical"] if root else ["-noverify"]
    done = subprocess.run(["openssl", "cms", "-verify", "-inform", "DER", "-binary", "-in", message, "-content", digest,
                           "-out", "/dev/null", *trust], capture_output=True, check=False)
    return done.returncode == 0


def write(path, data):
    with open(path, "wb") as file:
        file.write(data)


def rewrite_table(source, target, change, heap=lambda heap: heap):
    """The package with another table of contents, whose checksum is right."""
    package = Package(source)
    text = change(package.text)
    packed = zlib.compress(text)
    rest = hashlib.sha1(packed).digest() + package.heap[20:]
    write(target, struct.pack(">4sHHQQI", b"xar!", 28, 1, len(packed), len(text), 1) + packed + heap(rest))


def sign_by_openssl(source, target, identity, certificates=None, parts=("signature", "x-signature"), digest="sha1",
                    timestamp=None, reserved=9216):
    """A copy of an unsigned package that openssl has signed, also with what no signing tool would take.

    `certificates` go into the table in the place of the identity's; `timestamp` makes a token over bytes.
    """
    package = Package(source)
    certificates = certificates or [block for block in pem_blocks(identity)]
    size = hashlib.new(digest).digest_size
    sizes = {"signature": len(rsa_signature(identity, b"0" * size, digest)) if "signature" in parts else 0,
             "x-signature": reserved}
    elements, offset = '<checksum style="%s"><offset>0</offset><size>%d</size></checksum>' % (digest, size), size
    for part in parts:
        elements += signature_element(part, offset, sizes[part], certificates)
        offset += sizes[part]
    text = re.sub(rb"<checksum .*?</checksum>\s*", b"", package.text, 1).replace(b"<toc>", b"<toc>" + elements.encode(), 1)
    text = re.sub(rb"(<offset>)(\d+)(</offset><size>\d+</size><encoding)",
                  lambda found: b"%s%d%s" % (found[1], int(found[2]) - 20 + offset, found[3]), text)
    packed = zlib.compress(text)
    value = hashlib.new(digest, packed).digest()
    heap = value
    if "signature" in parts:
        heap += rsa_signature(identity, value, digest)
    if "x-signature" in parts:
        heap += cms_signature(identity, value, digest, timestamp).ljust(reserved, b"\0")
    number = {"sha1": 1, "sha256": 3}[digest]
    write(target, struct.pack(">4sHHQQI", b"xar!", 28, 1, len(packed), len(text), number) + packed + heap
          + package.heap[20:])
    return target


def pem_blocks(path):
    with open(path, encoding="ascii") as file:
        blocks = re.findall("-----BEGIN CERTIFICATE-----(.*?)-----END", file.read(), re.S)
    return [base64.b64decode(block) for block in blocks]


def issuers_of(identity):
    """Options for the certificates behind the first one, which openssl does not take twice."""
    issuers = pem_blocks(identity)[1:]
    text = "".join("-----BEGIN CERTIFICATE-----\n%s-----END CERTIFICATE-----\n" % base64.encodebytes(one).decode()
                   for one in issuers)
    write(identity + ".issuers", text.encode())
    return ["-certfile", identity + ".issuers"] if issuers else []


def signature_element(name, offset, size, certificates):
    style = {"signature": "RSA", "x-signature": "CMS"}[name]
    listed = "".join("<X509Certificate>%s</X509Certificate>" % base64.encodebytes(one).decode() for one in certificates)
    return ('<%s style="%s"><offset>%d</offset><size>%d</size><KeyInfo xmlns="http://www.w3.org/2000/09/xmldsig#">'
            "<X509Data>%s</X509Data></KeyInfo></%s>" % (name, style, offset, size, listed, name))


def rsa_signature(identity, digest, algorithm):
    return openssl("pkeyutl", "-sign", "-inkey", identity, "-pkeyopt", "digest:" + algorithm, "-pkeyopt",
                   "rsa_padding_mode:pkcs1", data=digest)


def cms_signature(identity, content, digest, timestamp=None):
    message = openssl("cms", "-sign", "-binary", "-outform", "DER", "-signer", identity, "-inkey", identity, "-md",
                      digest, *issuers_of(identity), data=content)
    if not timestamp:
        return message
    signature = elements_of(last_of(message, 4))[-1]
    attribute = tlv(0x30, tlv(0x06, bytes.fromhex("2a864886f70d010910020e")) + tlv(0x31, timestamp(contents_of(signature))))
    return with_appended(message, 4, tlv(0xA1, attribute))


def timestamp_token(identity, seconds):
    """Makes the token that a service whose clock shows this would give."""
    def token(signed):
        imprint = tlv(0x30, tlv(0x30, tlv(0x06, bytes.fromhex("608648016503040201")) + b"\x05\0")
                      + tlv(0x04, hashlib.sha256(signed).digest()))
        shown = time.strftime("%Y%m%d%H%M%SZ", time.gmtime(seconds)).encode()
        info = tlv(0x30, b"\x02\x01\x01" + tlv(0x06, b"\x2a\x03\x04") + imprint + b"\x02\x01\x07" + tlv(0x18, shown))
        return openssl("cms", "-sign", "-binary", "-nodetach", "-outform", "DER", "-econtent_type",
                       "1.2.840.113549.1.9.16.1.4", "-signer", identity, "-inkey", identity, "-md", "sha256",
                       *issuers_of(identity), data=info)
    return token


def tlv(tag, content):
    """A DER element."""
    length = len(content)
    if length < 128:
        return bytes([tag, length]) + content
    digits = length.to_bytes((length.bit_length() + 7) // 8, "big")
    return bytes([tag, 0x80 | len(digits)]) + digits + content


def contents_of(element):
    return element[2 if element[1] < 128 else 2 + (element[1] & 127):]


def elements_of(element):
    """What is in a constructed element."""
    content, found = contents_of(element), []
    while content:
        found.append(first_element(content))
        content = content[len(found[-1]):]
    return found


def first_element(content):
    digits = 0 if content[1] < 128 else content[1] & 127
    length = content[1] if digits == 0 else int.from_bytes(content[2:2 + digits], "big")
    return content[:2 + digits + length]


def last_of(element, levels):
    """The last element of the last element and so on; in a signed message four levels lead to its signer."""
    return element if levels == 0 else last_of(elements_of(element)[-1], levels - 1)


def with_appended(element, levels, addition):
    if levels == 0:
        return tlv(element[0], contents_of(element) + addition)
    parts = elements_of(element)
    return tlv(element[0], b"".join(parts[:-1]) + with_appended(parts[-1], levels - 1, addition))


class TimestampService:
    """A service on this machine; `answer` makes another answer of the right one, with an HTTP status."""

    CONFIGURATION = """[tsa]
default_tsa = one
[one]
serial = %(folder)s/serial
crypto_device = builtin
signer_digest = sha256
default_policy = 1.2.3.4
digests = sha256
ess_cert_id_alg = sha256
"""

    def __init__(self, folder, identity, answer=lambda reply: (200, reply)):
        self.folder, self.identity, self.answer, self.questions = folder, identity, answer, 0
        write(os.path.join(folder, "tsa.cnf"), (self.CONFIGURATION % {"folder": folder}).encode())
        write(os.path.join(folder, "serial"), b"01\n")
        service = self

        class Handler(http.server.BaseHTTPRequestHandler):
            def do_POST(self):
                body = self.rfile.read(int(self.headers["Content-Length"]))
                status, reply = service.reply(self.headers["Content-Type"], body)
                self.send_response(status)
                self.send_header("Content-Type", "application/timestamp-reply")
                self.send_header("Content-Length", str(len(reply)))
                self.end_headers()
                self.wfile.write(reply)

            def log_message(self, *_):
                pass
        self.server = http.server.HTTPServer(("127.0.0.1", 0), Handler)
        self.url = "http://127.0.0.1:%d/" % self.server.server_port
        threading.Thread(target=self.server.serve_forever, daemon=True).start()

    def reply(self, kind, question):
        assert kind == "application/timestamp-query", kind
        self.questions += 1
        path = os.path.join(self.folder, "question")
        write(path, question)
        return self.answer(openssl("ts", "-reply", "-config", os.path.join(self.folder, "tsa.cnf"), "-section", "one",
                                   "-queryfile", path, "-signer", self.identity, "-inkey", self.identity))

    def __enter__(self):
        return self

    def __exit__(self, *_):
        self.server.shutdown()
        self.server.server_close()
