# SPDX-License-Identifier: Apache-2.0
"""Packages that tests take apart, change anywhere and put together again, with checksums that are right throughout.

Shares no code with what it judges.
"""
import bz2
import gzip
import hashlib
import lzma
import os
import struct
import sys
import xml.etree.ElementTree as ET
import zlib

sys.path.insert(0, os.path.dirname(os.path.abspath(__file__)))
import signed_package as sp  # noqa: E402

UNPACK = {"application/octet-stream": bytes, "application/x-gzip": zlib.decompress,
          "application/x-bzip2": bz2.decompress, "application/x-lzma": lzma.decompress}
SIGNATURES = ("signature", "x-signature")


class Member:
    """One of a scripts archive."""

    def __init__(self, name, mode, content, uid=0, gid=0):
        self.name, self.mode, self.content, self.uid, self.gid = name, mode, content, uid, gid


def read_cpio(archive):
    """The members of an archive in the portable form."""
    data = gzip.decompress(archive) if archive[:2] == b"\x1f\x8b" else archive
    members, at = [], 0
    while True:
        assert data[at:at + 6] == b"070707", data[at:at + 6]
        field = [int(data[at + first:at + last], 8) for first, last in
                 ((18, 24), (24, 30), (30, 36), (59, 65), (65, 76))]
        mode, uid, gid, name_size, size = field
        start = at + 76 + name_size
        name = data[at + 76:start - 1].decode()
        if name == "TRAILER!!!":
            return members
        members.append(Member(name, mode, data[start:start + size], uid, gid))
        at = start + size


def write_cpio(members):
    out = b""
    for number, one in enumerate([*members, Member("TRAILER!!!", 0, b"")], 1):
        raw = one.name.encode() + b"\0"
        out += b"070707%06o%06o%06o%06o%06o%06o%06o%011o%06o%011o" % (
            0, number, one.mode, one.uid, one.gid, 1, 0, 1500000000, len(raw), len(one.content)) + raw + one.content
    return out


class Altered:
    """A package whose table and contents can be changed before write()."""

    def __init__(self, path):
        package = sp.Package(path)
        self.toc = package.toc
        self.contents = {}
        for place, entry in self.entries():
            data = entry.find("data")
            if data is not None:
                self.contents[place] = UNPACK[data.find("encoding").get("style")](package.data(entry))

    def entries(self):
        def visit(folder, prefix):
            for entry in folder.findall("file"):
                place = prefix + entry.findtext("name")
                yield place, entry
                yield from visit(entry, place + "/")
        return list(visit(self.toc, ""))

    def entry(self, path):
        return dict(self.entries())[path]

    def set(self, path, name, text):
        self.entry(path).find(name).text = text

    def remove(self, path):
        folder = self.entry(os.path.dirname(path)) if "/" in path else self.toc
        folder.remove(self.entry(path))
        self.contents.pop(path, None)

    def add(self, path, content=None, kind="file", mode="0644"):
        """A file, or without content something else."""
        folder = self.entry(os.path.dirname(path)) if "/" in path else self.toc
        entry = ET.SubElement(folder, "file", id=str(1000 + len(self.entries())))
        for name, text in (("name", os.path.basename(path)), ("type", kind), ("mode", mode), ("uid", "0"), ("gid", "0")):
            ET.SubElement(entry, name).text = text
        if content is not None:
            ET.SubElement(entry, "data")
            self.contents[path] = content
        return entry

    def scripts(self, path):
        return read_cpio(self.contents[path])

    def set_scripts(self, path, members):
        self.contents[path] = gzip.compress(write_cpio(members), mtime=0)

    def script(self, path, name):
        return next(one for one in self.scripts(path) if one.name.lstrip("./") == name)

    def change_script(self, path, name, change):
        """`change` gets a member, which it may alter."""
        members = self.scripts(path)
        change(next(one for one in members if one.name[2:] == name))
        self.set_scripts(path, members)

    def write(self, path, style="sha1"):
        """`style` is the kind of the members' checksums."""
        heap = b"\0" * 20
        for place, entry in self.entries():
            data = entry.find("data")
            if data is None:
                continue
            content = self.contents[place]
            digest = hashlib.new(style, content).hexdigest()
            data.clear()
            for name, text in (("length", len(content)), ("offset", len(heap)), ("size", len(content))):
                ET.SubElement(data, name).text = str(text)
            ET.SubElement(data, "encoding", style="application/octet-stream")
            for name in ("extracted-checksum", "archived-checksum"):
                ET.SubElement(data, name, style=style).text = digest
            heap += content
        self.write_table(path, heap)
        return path

    def write_table(self, path, heap):
        for name in SIGNATURES:
            for element in self.toc.findall(name):
                self.toc.remove(element)
        root = ET.Element("xar")
        root.append(self.toc)
        text = ET.tostring(root, encoding="UTF-8", xml_declaration=True)
        packed = zlib.compress(text)
        sp.write(path, struct.pack(">4sHHQQI", b"xar!", 28, 1, len(packed), len(text), 1) + packed
                 + hashlib.sha1(packed).digest() + heap[20:])
