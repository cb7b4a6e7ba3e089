#!/usr/bin/python3
# SPDX-License-Identifier: Apache-2.0
"""Makes flat packages that no archiver makes: as vendors' tools write them, and hostile ones.

usage: make-xar-variant.py VARIANT OUTPUT | make-xar-variant.py --all good|hostile FOLDER

The costly variants are made one by one.

Every good variant holds the same members, whatever their form in the archive; every hostile one has to
be refused. The archive is written from the format's description and shares no code with its reader.
"""
import base64
import bz2
import gzip
import hashlib
import lzma
import os
import struct
import sys
import zlib
from xml.sax.saxutils import escape

SCRIPT = b"#!/bin/sh\nexit 0\n"
DISTRIBUTION = (b'<?xml version="1.0" encoding="utf-8"?>\n<installer-gui-script minSpecVersion="1">\n'
                b"    <title>Sample Product</title>\n"
                b'    <pkg-ref id="com.example.sample">#Sample.pkg</pkg-ref>\n</installer-gui-script>\n')
PACKAGE_INFO = b'<pkg-info format-version="2" identifier="com.example.sample" version="1.0"/>\n'
PAYLOAD = b"".join(hashlib.sha512(b"%d" % i).digest() for i in range(1600))
BOM = b"BOMStore" + bytes(range(256)) * 8


def cpio(entries):
    """A cpio archive of the portable form from (name, mode, contents[, device number[, inode]]) tuples.

    Members with an inode of their own are names of one file.
    """
    out = b""
    for number, (name, mode, contents, *more) in enumerate(entries + [("TRAILER!!!", 0, b"")], 1):
        rdev, inode = (more + [0, 0])[:2]
        raw = name.encode() + b"\0"
        out += b"070707" + b"%06o" % 0 + b"%06o" % (inode or number) + b"%06o" % mode
        out += b"%06o%06o" % (501, 20) + b"%06o%06o" % (2 if inode else 1, rdev)
        out += b"%011o" % 1500000000 + b"%06o" % len(raw) + b"%011o" % len(contents) + raw + contents
    return out


SCRIPTS = [(".", 0o40755, b""), ("./preinstall", 0o100711, SCRIPT), ("./postinstall", 0o100755, SCRIPT),
           ("./._postinstall", 0o100644, b"\0\5\x16\7AppleDouble"), ("./latest", 0o120755, b"postinstall")]


class Member:
    """One <file> element; every property can be overridden, `raw` is put in as it is."""

    def __init__(self, name, contents=None, children=None, **overrides):
        self.name, self.contents, self.children = name, contents, children
        self.mode, self.uid, self.gid, self.user, self.group = "0644", 501, 20, "builder", "staff"
        self.mtime, self.style, self.checksum = "2017-07-14T02:40:00Z", "application/octet-stream", "sha1"
        self.type = "file" if children is None else "directory"
        self.link = self.type_link = self.raw_name = self.size = self.length = self.offset = None
        self.archived = self.extracted = None
        self.raw = self.id = ""
        self.upper = False
        self.__dict__.update(overrides)


class Xar:
    """An archive under construction."""

    def __init__(self):
        self.toc_checksum, self.member_checksum, self.style = "sha1", "sha1", "application/octet-stream"
        self.header_extra, self.header_algorithm = b"", None
        self.toc_extra, self.heap_gap, self.trailer = "", 0, b""
        self.prolog, self.epilog, self.encoding = '<?xml version="1.0" encoding="UTF-8"?>\n', "", "utf-8"
        self.declared_toc_length = None
        self.break_toc_checksum = False
        self.share = {}
        self.members = sample()
        self.heap = b""
        self.next_id = 1
        self.transform_name = lambda name: "<name>%s</name>" % escape(name)

    def find(self, path):
        members = self.members
        for part in path.split("/"):
            member = next(m for m in members if m.name == part)
            members = member.children or []
        return member

    def digest(self, style, data):
        return hashlib.new(style, data).hexdigest()

    def data(self, member):
        style = self.style if member.style == "application/octet-stream" else member.style
        stored = encode(style, member.contents)
        key = (style, member.contents)
        if key in self.share and self.share[key] is not None:
            offset = self.share[key]
        else:
            self.heap += b"\xAA" * self.heap_gap
            offset = self.base + len(self.heap)
            self.heap += stored
            if key in self.share:
                self.share[key] = offset
        checks = ""
        if self.member_checksum:
            for element, bytes_, override in (("archived", stored, member.archived),
                                              ("extracted", member.contents, member.extracted)):
                value = override or self.digest(self.member_checksum, bytes_)
                value = value.upper() if member.upper else value
                checks += '<%s-checksum style="%s">%s</%s-checksum>' % (
                    element, self.member_checksum, value, element)
        encoding = '<encoding style="%s"/>' % style if style else ""
        pick = lambda override, value: value if override is None else override
        return "<data>%s%s<size>%s</size><offset>%s</offset><length>%s</length></data>" % (
            checks, encoding, pick(member.size, len(member.contents)), pick(member.offset, offset),
            pick(member.length, len(stored)))

    def file(self, member):
        identity, self.next_id = member.id or str(self.next_id), self.next_id + 1
        name = member.raw_name if member.raw_name is not None else self.transform_name(member.name)
        attribute = ' link="%s"' % member.type_link if member.type_link else ""
        link = '<link type="file">%s</link>' % escape(member.link) if member.link is not None else ""
        data = self.data(member) if member.contents is not None else ""
        children = "".join(self.file(child) for child in member.children or [])
        return ('<file id="%s">%s%s<mode>%s</mode><uid>%s</uid><user>%s</user><gid>%s</gid><group>%s</group>'
                "<mtime>%s</mtime><type%s>%s</type>%s%s%s</file>\n" % (
                    identity, data, link, member.mode, member.uid, member.user, member.gid, member.group,
                    member.mtime, attribute, member.type, name, member.raw, children))

    def bytes(self):
        size = hashlib.new(self.toc_checksum).digest_size if self.toc_checksum else 0
        self.base = size + len(getattr(self, "signature", b""))
        files = "".join(self.file(member) for member in self.members)
        checksum = ('<checksum style="%s"><offset>0</offset><size>%d</size></checksum>' % (
            self.toc_checksum, size) if self.toc_checksum else "")
        text = "%s<xar><toc>%s<creation-time>2017-07-14T02:40:00</creation-time>%s%s</toc></xar>%s" % (
            self.prolog, checksum, self.toc_extra, files, self.epilog)
        toc = text.encode(self.encoding)
        packed = zlib.compress(toc)
        digest = hashlib.new(self.toc_checksum, packed).digest() if self.toc_checksum else b""
        if self.break_toc_checksum:
            digest = bytes([digest[0] ^ 1]) + digest[1:]
        numbers = {None: 0, "sha1": 1, "md5": 2, "sha256": 3, "sha512": 4}
        algorithm = numbers[self.toc_checksum] if self.header_algorithm is None else self.header_algorithm
        length = len(toc) if self.declared_toc_length is None else self.declared_toc_length
        header = b"xar!" + struct.pack(">HHQQI", 28 + len(self.header_extra), 1, len(packed), length, algorithm)
        return (header + self.header_extra + packed + digest + getattr(self, "signature", b"") + self.heap
                + self.trailer)


def encode(style, data):
    return {"": lambda d: d, "application/octet-stream": lambda d: d, "application/x-gzip": zlib.compress,
            "application/x-bzip2": bz2.compress, "application/x-xz": lzma.compress,
            "application/x-lzma": lambda d: lzma.compress(d, format=lzma.FORMAT_ALONE)}.get(style, lambda d: d)(data)


def scripts_member(entries):
    return Member("Scripts", gzip.compress(cpio(entries), mtime=0), mode="0600")


def sample():
    return [Member("Distribution", DISTRIBUTION),
            Member("Resources", children=[Member("en.lproj", children=[Member("Welcome.html", b"<p>Hi</p>\n")]),
                                          Member("current", type="symlink", link="en.lproj/Welcome.html")]),
            Member("Sample.pkg", children=[Member("PackageInfo", PACKAGE_INFO), Member("Bom", BOM),
                                           Member("Payload", PAYLOAD, mode="0640"), scripts_member(SCRIPTS)])]


def signed(xar):
    """As the vendor's signing tool leaves it: two signatures in the heap, and a ticket stapled to the end."""
    xar.signature = b"S" * 256 + b"C" * 512
    certificate = base64.b64encode(b"not a certificate" * 20).decode()
    key_info = ('<KeyInfo xmlns="http://www.w3.org/2000/09/xmldsig#"><X509Data><X509Certificate>%s'
                "</X509Certificate></X509Data></KeyInfo>" % certificate)
    xar.toc_extra = ('<signature style="RSA"><offset>20</offset><size>256</size>%s</signature>'
                     '<x-signature style="CMS"><offset>276</offset><size>512</size>%s</x-signature>'
                     % (key_info, key_info))
    xar.trailer = b"t8lr" + b"stapled ticket" * 100
    vendor_elements(xar)


def vendor_elements(xar):
    """Two names per entry and several extended attributes, whose own names and data are not the member's."""
    ea = ('<ea id="%d"><name>com.apple.%s</name><type>ignored</type><offset>0</offset><size>4</size>'
          '<length>4</length><extracted-checksum style="sha1">0</extracted-checksum></ea>')
    extra = "<name>second-name</name><FinderCreateTime><nanoseconds>0</nanoseconds></FinderCreateTime>"

    def decorate(members):
        for member in members:
            member.raw = extra + ea % (0, "quarantine") + ea % (1, "FinderInfo") + ea % (2, "macl")
            decorate(member.children or [])
    decorate(xar.members)


def base64_names(xar):
    xar.transform_name = lambda name: '<name enctype="base64">\n%s\n</name>' % base64.b64encode(name.encode()).decode()


def checksums(toc, member):
    def change(xar):
        xar.toc_checksum, xar.member_checksum = toc, member
    return change


def attributes(**values):
    def change(xar):
        xar.__dict__.update(values)
    return change


def payload(**values):
    def change(xar):
        xar.find("Sample.pkg/Payload").__dict__.update(values)
    return change


def distribution(**values):
    def change(xar):
        xar.find("Distribution").__dict__.update(values)
    return change


def add(*members):
    def change(xar):
        xar.members.extend(members)
    return change


def share_heap(xar):
    """Two members whose bytes lie in the heap once, and two names of one member."""
    xar.share = {("application/octet-stream", PACKAGE_INFO): None}
    xar.find("Sample.pkg").children.append(Member("PackageInfo.copy", PACKAGE_INFO))
    xar.find("Resources").children.append(Member("hard", type="hardlink", type_link="original-id"))
    xar.find("Distribution").__dict__.update(type="hardlink", type_link="original", id="original-id")


def hostile_scripts(entries, cut=None):
    def change(xar):
        archive = cpio(entries)[:cut]
        xar.find("Sample.pkg").children[3] = Member("Scripts", gzip.compress(archive, mtime=0))
    return change


def scripts_bytes(data):
    def change(xar):
        xar.find("Sample.pkg").children[3] = Member("Scripts", data)
    return change


def flipped(data, position):
    return data[:position] + bytes([data[position] ^ 1]) + data[position + 1:]


def packed(archive):
    return gzip.compress(archive, mtime=0)


def deep(xar):
    member = Member("leaf", b"x")
    for _ in range(70):
        member = Member("d", children=[member])
    xar.members.append(member)


def many(xar):
    xar.toc_extra = "".join('<file id="m%d"><name>m%d</name></file>' % (i, i) for i in range(100001))


def overlap(xar):
    """A thousand members that are all the same 10 MB of zeros, which would fill the disk."""
    zeros = bytes(10 * 1000 * 1000)
    xar.member_checksum = None
    xar.members.append(Member("zeros0", zeros, style="application/x-bzip2"))
    packed = len(bz2.compress(zeros))
    for i in range(1, 1000):
        raw = ("<data><size>%d</size><offset>0</offset><length>%d</length>"
               '<encoding style="application/x-bzip2"/></data>' % (len(zeros), packed))
        xar.members.append(Member("zeros%d" % i, raw=raw))


GOOD = {
    "plain": lambda xar: None,
    "signed": signed,
    "two-names-and-eas": vendor_elements,
    "base64-names": base64_names,
    "sha256": checksums("sha256", "sha256"),
    "sha512": checksums("sha512", "sha512"),
    "md5": checksums("md5", "md5"),
    "sha256-members": checksums("sha1", "sha256"),
    "no-toc-checksum": checksums(None, "sha1"),
    "no-member-checksums": checksums("sha1", None),
    "no-encoding": attributes(style=""),
    "gzip": attributes(style="application/x-gzip"),
    "bzip2": attributes(style="application/x-bzip2"),
    "xz": attributes(style="application/x-xz"),
    "lzma": attributes(style="application/x-lzma"),
    "upper-case-hex": payload(upper=True),
    "longer-header": attributes(toc_checksum="sha256", header_extra=b"sha256".ljust(36, b"\0"), header_algorithm=3),
    "gaps-and-trailer": attributes(heap_gap=1000, trailer=b"more" * 500),
}

HOSTILE = {
    "name-slash": add(Member("../escaped", b"x")),
    "name-absolute": add(Member("/tmp/escaped", b"x")),
    "name-dotdot": add(Member("..", b"x")),
    "name-dotdot-folder": add(Member("..", children=[Member("escaped", b"x")])),
    "name-dot": add(Member(".", b"x")),
    "name-empty": add(Member("", b"x")),
    "name-missing": add(Member("", b"x", raw_name="")),
    "name-base64-dotdot": add(Member("", b"x", raw_name='<name enctype="base64">%s</name>'
                                     % base64.b64encode(b"../escaped").decode())),
    "name-base64-nul": add(Member("", b"x", raw_name='<name enctype="base64">%s</name>'
                                  % base64.b64encode(b"a\0b").decode())),
    "name-base64-broken": add(Member("", b"x", raw_name='<name enctype="base64">?</name>')),
    "name-too-long": add(Member("n" * 300, b"x")),
    "name-twice": add(Member("Distribution", b"x")),
    "link-absolute": add(Member("link", type="symlink", link="/etc")),
    "link-upwards": add(Member("link", type="symlink", link="../outside")),
    "link-upwards-later": add(Member("link", type="symlink", link="Resources/../../outside")),
    "link-empty": add(Member("link", type="symlink", link="")),
    "link-through": add(Member("a", type="symlink", link="Resources"), Member("a", children=[Member("b", b"x")])),
    "hard-link-nowhere": add(Member("hard", type="hardlink", type_link="nowhere")),
    "device": add(Member("device", type="character special")),
    "pipe": add(Member("pipe", type="fifo")),
    "members-below-a-file": add(Member("file", b"x", type="file", children=[Member("below", b"y")])),
    "offset-beyond": payload(offset=10 ** 9),
    "length-beyond": payload(length=10 ** 9, size=10 ** 9),
    "offset-negative": payload(offset=-1),
    "offset-overflow": payload(offset=2 ** 63 - 1),
    "number-too-large": payload(size=2 ** 70),
    "number-no-digits": payload(size="12x"),
    "size-lies-stored": payload(size=5),
    "size-lies-smaller": payload(style="application/x-gzip", size=len(PAYLOAD) - 1),
    "size-lies-larger": payload(style="application/x-gzip", size=len(PAYLOAD) + 1),
    "data-twice": payload(raw="<data><length>1</length><length>2</length></data>", contents=None),
    "stream-cut": payload(style="application/x-gzip", length=1000),
    "stream-garbage": payload(style="application/x-bzip2", offset=20),
    "wrong-archived": payload(archived="0" * 40),
    "wrong-extracted": payload(extracted="0" * 40),
    "wrong-extracted-gzip": payload(style="application/x-gzip", extracted="0" * 40),
    "malformed-checksum": payload(archived="xyz"),
    "wrong-toc-checksum": attributes(break_toc_checksum=True),
    "unknown-encoding": payload(style="application/x-unknown"),
    "nested-too-deeply": deep,
    "too-many-members": many,
    "overlapping-bomb": overlap,
    "toc-declared-huge": attributes(declared_toc_length=65 * 1024 * 1024),
    "toc-declared-short": attributes(declared_toc_length=100),
    "toc-inflates-past-limit": attributes(epilog=" " * (65 * 1024 * 1024)),
    "toc-not-xml": attributes(prolog="not XML "),
    "toc-cut": attributes(epilog="<more>"),
    "dtd": attributes(prolog='<!DOCTYPE xar SYSTEM "file:///etc/passwd">'),
    "dtd-entities": attributes(prolog='<!DOCTYPE xar [<!ENTITY a "aaaaaaaaaa"><!ENTITY b "&a;&a;&a;">]>'),
    "utf-16-toc": attributes(prolog='<?xml version="1.0" encoding="UTF-16"?>', encoding="utf-16"),
    "scripts-absolute": hostile_scripts(SCRIPTS + [("/tmp/escaped", 0o100644, b"x")]),
    "scripts-upwards": hostile_scripts(SCRIPTS + [("./../escaped", 0o100644, b"x")]),
    "scripts-upwards-later": hostile_scripts(SCRIPTS + [("./a/../../escaped", 0o100644, b"x")]),
    "scripts-empty-name": hostile_scripts([("", 0o100644, b"x")]),
    "scripts-twice": hostile_scripts(SCRIPTS + [("postinstall", 0o100644, b"x")]),
    "scripts-link-absolute": hostile_scripts(SCRIPTS + [("./link", 0o120777, b"/etc")]),
    "scripts-link-upwards": hostile_scripts(SCRIPTS + [("./link", 0o120777, b"../../../outside")]),
    "scripts-through-link": hostile_scripts([("./real", 0o40755, b""), ("./link", 0o120777, b"real"),
                                             ("./link/file", 0o100644, b"x")]),
    "scripts-onto-link": hostile_scripts([("./link", 0o120777, b"target"), ("./link", 0o100644, b"x")]),
    "scripts-link-moved-up": hostile_scripts([("./a", 0o40755, b""), ("./a/link", 0o120777, b"..", 0, 99),
                                              ("./link", 0o120777, b"..", 0, 99)]),
    "scripts-device": hostile_scripts([("./device", 0o20666, b"", 0o403)]),
    "scripts-pipe": hostile_scripts([("./pipe", 0o10666, b"")]),
    "scripts-cut": hostile_scripts(SCRIPTS, cut=150),
    "scripts-no-archive": scripts_bytes(b"this is no archive" * 10),
    "scripts-empty": scripts_bytes(b""),
    "scripts-wrong-checksum": scripts_bytes(flipped(packed(cpio(SCRIPTS)), -6)),
    "scripts-wrong-length": scripts_bytes(flipped(packed(cpio(SCRIPTS)), -3)),
    "scripts-packing-cut": scripts_bytes(packed(cpio(SCRIPTS))[:-9]),
    "scripts-packed-twice": scripts_bytes(packed(packed(cpio(SCRIPTS)))),
    "scripts-no-number": scripts_bytes(packed(cpio(SCRIPTS).replace(b"%011o" % 1500000000, b"1313z215400", 1))),
    "scripts-blank-number": scripts_bytes(packed(cpio(SCRIPTS).replace(b"%06o" % 501, b"   765", 1))),
    "scripts-no-member": scripts_bytes(packed(cpio(SCRIPTS).replace(b"070707", b"070708").replace(b"8", b"7", 1))),
    "scripts-open-name": scripts_bytes(packed(cpio(SCRIPTS).replace(b"./latest\0", b"./latest!"))),
    "scripts-huge-folder": scripts_bytes(packed(cpio([("./d", 0o40755, b"")]).replace(
        b"%011o./d" % 0, b"%011o./d" % (1 << 31)))),
    "scripts-no-end": scripts_bytes(packed(cpio(SCRIPTS).split(b"TRAILER")[0][:-76])),
    "scripts-other-form": scripts_bytes(gzip.compress(b"070701" + b"%08X" % 0xCCCCCCCC * 13 + bytes(1000), mtime=0)),
}

def numbered(count, form):
    return "".join(form % {"n": i} for i in range(count))


def attribute_list(xar):
    xar.prolog = "<!DOCTYPE xar [<!ATTLIST xar %s>]>" % numbered(1000000, 'a%(n)d CDATA "" ')


def document(text, prolog=""):
    """A Distribution that is small only as long as it is packed."""
    contents = ("%s<installer-gui-script>%s</installer-gui-script>" % (prolog, text)).encode()
    return distribution(contents=contents, style="application/x-gzip")


def language_folders(xar):
    """A hundred languages with the same 8 MiB of texts, which lie in the archive once."""
    texts = b'"a"="b";' * (1 << 20)
    xar.share = {("application/x-gzip", texts): None}
    document("<title>KEY</title>")(xar)
    xar.find("Resources").children = [
        Member("l%d.lproj" % i, children=[Member("Localizable.strings", texts, style="application/x-gzip")])
        for i in range(100)]


def empty_folders(ending, parent):
    def change(xar):
        document("<title>KEY</title>")(xar)
        members = xar.find(parent).children if parent else xar.members
        members.extend(Member("f%d%s" % (i, ending), children=[]) for i in range(99000))
    return change


def million_attributes():
    return "<e %s/>" % numbered(1000000, 'a%(n)d="" ')


# Small packages that are much work for whoever reads them carelessly; what they hold is made only when it is wanted.
COSTLY = {
    "toc-attributes": lambda: attributes(toc_extra=million_attributes()),
    "toc-less-than": lambda: attributes(toc_extra="<e>%s</e>" % ("&lt;" * (8 << 20))),
    "toc-quotes": lambda: attributes(toc_extra='<e a="%s"/>' % ("&quot;" * (5 << 20))),
    "toc-elements": lambda: attributes(toc_extra="<a/>" * 4000000),
    "toc-attribute-list": lambda: attribute_list,
    "distribution-attributes": lambda: document(million_attributes()),
    "distribution-less-than": lambda: document("<title>%s</title>" % ("&lt;" * ((8 << 20) - 100))),
    "distribution-quotes": lambda: document('<e a="%s"/>' % ("&quot;" * (5 << 20))),
    "distribution-elements": lambda: document("<a/>" * 4000000),
    "distribution-attribute-list": lambda: document("", "<!DOCTYPE x [<!ATTLIST x %s>]>"
                                            % numbered(1000000, 'a%(n)d CDATA "" ')),
    "languages-that-share-texts": lambda: language_folders,
    "many-languages": lambda: document("<title>KEY</title><localization>%s</localization>" % numbered(
        190000, '<strings language="l%(n)d">"a"="b";</strings>')),
    "many-language-folders": lambda: empty_folders(".lproj", "Resources"),
    "many-components": lambda: empty_folders(".pkg", ""),
    "scripts-empty-members": lambda: scripts_bytes(packed(packed(b"") * 10000000 + packed(cpio(SCRIPTS)))),
}

CUTS = {"cut-in-header": 20, "cut-in-toc": 100, "cut-in-heap": -1000, "empty-file": 0}


def make(variant):
    xar = Xar()
    if variant == "shared-heap":
        share_heap(xar)
    elif variant in CUTS:
        return xar.bytes()[:CUTS[variant]]
    elif variant == "wrong-magic":
        return b"rax!" + xar.bytes()[4:]
    else:
        (GOOD.get(variant) or HOSTILE.get(variant) or COSTLY[variant]())(xar)
    return xar.bytes()


def write(variant, path):
    """Makes every archive from a fresh sample: the changes of one must not reach the next."""
    with open(path, "wb") as output:
        output.write(make(variant))


def main(arguments):
    if len(arguments) == 3 and arguments[0] == "--all":
        names = GOOD if arguments[1] == "good" else [*HOSTILE, *CUTS, "wrong-magic"]
        for name in names:
            write(name, os.path.join(arguments[2], name))
        return 0
    if len(arguments) != 2:
        print(__doc__.strip(), file=sys.stderr)
        return 2
    write(*arguments)
    return 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
