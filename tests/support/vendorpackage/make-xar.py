#!/usr/bin/python3
# SPDX-License-Identifier: Apache-2.0
"""Writes the xar archive that a flat package is.

usage: make-xar.py FOLDER ARCHIVE SECONDS gzip|none

The archive holds what is in FOLDER, in the order of the names, as root:wheel. SECONDS since 1970 is the creation
time that it states; equal folders with equal times of their files give equal archives. What a Mac has writes the rest
of a package, but its tar has no xar. Written from the format's description; shares no code with its readers.
"""
import hashlib
import os
import shutil
import stat
import struct
import sys
import tempfile
import time
import zlib
from xml.sax.saxutils import escape

CHUNK = 1 << 20
CHECKSUM_SIZE = hashlib.sha1().digest_size
STYLES = {"gzip": "application/x-gzip", "none": "application/octet-stream"}


def element(name, text):
    return "<%s>%s</%s>" % (name, escape(str(text)), name)


def stamp(seconds):
    return time.strftime("%Y-%m-%dT%H:%M:%SZ", time.gmtime(seconds))


class NoCompression:
    """What stores a member as it is, with the interface of zlib's compressors."""

    def compress(self, data):
        return data

    def flush(self):
        return b""


class Writer:
    """The table of contents as text, and the heap as a file, while both grow."""

    def __init__(self, heap, compression):
        self.heap, self.compression, self.files = heap, compression, 0

    def store(self, path):
        """Appends a file's contents to the heap and describes them."""
        extracted, archived = hashlib.sha1(), hashlib.sha1()
        packer = zlib.compressobj() if self.compression == "gzip" else NoCompression()
        offset, size = self.heap.tell(), 0

        def put(data):
            archived.update(data)
            self.heap.write(data)

        with open(path, "rb") as source:
            while chunk := source.read(CHUNK):
                size += len(chunk)
                extracted.update(chunk)
                put(packer.compress(chunk))
        put(packer.flush())
        return "<data>%s%s%s%s%s%s</data>" % (
            element("length", self.heap.tell() - offset), element("offset", CHECKSUM_SIZE + offset),
            element("size", size), '<encoding style="%s"/>' % STYLES[self.compression],
            '<extracted-checksum style="sha1">%s</extracted-checksum>' % extracted.hexdigest(),
            '<archived-checksum style="sha1">%s</archived-checksum>' % archived.hexdigest())

    def contents(self, path, mode):
        if stat.S_ISDIR(mode):
            return element("type", "directory") + self.folder(path)
        if stat.S_ISLNK(mode):
            return element("type", "symlink") + '<link type="broken">%s</link>' % escape(os.readlink(path))
        if stat.S_ISREG(mode):
            return element("type", "file") + self.store(path)
        sys.exit("make-xar.py: %s is neither a file nor a folder nor a link" % path)

    def member(self, path):
        self.files += 1
        status = os.lstat(path)
        opening = '<file id="%d">' % self.files
        attributes = (element("name", os.path.basename(path)) + element("mode", "%04o" % stat.S_IMODE(status.st_mode))
                      + element("uid", 0) + element("user", "root") + element("gid", 0) + element("group", "wheel")
                      + element("mtime", stamp(status.st_mtime)))
        return opening + attributes + self.contents(path, status.st_mode) + "</file>\n"

    def folder(self, path):
        return "".join(self.member(os.path.join(path, name)) for name in sorted(os.listdir(path)))


def table_of_contents(writer, folder, seconds):
    text = ('<?xml version="1.0" encoding="UTF-8"?>\n<xar><toc>' + element("creation-time", stamp(seconds))
            + '<checksum style="sha1"><offset>0</offset><size>%d</size></checksum>\n' % CHECKSUM_SIZE
            + writer.folder(folder) + "</toc></xar>\n")
    return text.encode()


def write(folder, archive, seconds, compression):
    with tempfile.TemporaryFile(dir=os.path.dirname(os.path.abspath(archive))) as heap:
        table = table_of_contents(Writer(heap, compression), folder, seconds)
        packed = zlib.compress(table)
        heap.seek(0)
        with open(archive, "wb") as output:
            output.write(struct.pack(">4sHHQQI", b"xar!", 28, 1, len(packed), len(table), 1))
            output.write(packed + hashlib.sha1(packed).digest())
            shutil.copyfileobj(heap, output, CHUNK)


def main(arguments):
    if len(arguments) != 4 or arguments[3] not in STYLES:
        sys.exit(__doc__.split("\n\n")[1])
    folder, archive, seconds, compression = arguments
    write(folder, archive, int(seconds), compression)


if __name__ == "__main__":
    main(sys.argv[1:])
