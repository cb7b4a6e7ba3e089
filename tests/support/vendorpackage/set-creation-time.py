#!/usr/bin/python3
# SPDX-License-Identifier: Apache-2.0
"""set-creation-time.py ARCHIVE SECONDS: sets the creation time that a xar archive states.

bsdtar always states the current time, which would make every package differ from the last.
The table of contents and its checksum (at the start of the heap) are written anew, the rest is copied.
"""
import hashlib
import re
import shutil
import struct
import sys
import time
import zlib

HEADER = struct.Struct(">IHHQQI")


def changed_table(table, seconds):
    stamp = time.strftime("%Y-%m-%dT%H:%M:%S", time.gmtime(seconds)).encode()
    return re.sub(rb"(<creation-time>)[^<]*", rb"\g<1>" + stamp, table, count=1)


def checksum(table, packed):
    style = re.search(rb'<checksum style="(\w+)">', table)
    return hashlib.new(style[1].decode(), packed).digest() if style else b""


def rewrite(source, target, seconds):
    magic, size, version, packed_size, _, algorithm = HEADER.unpack(source.read(HEADER.size))
    if magic != 0x78617221 or size != HEADER.size:
        sys.exit("set-creation-time.py: not a xar archive as bsdtar writes it")
    table = changed_table(zlib.decompress(source.read(packed_size)), seconds)
    packed = zlib.compress(table)
    digest = checksum(table, packed)
    source.seek(len(digest), 1)
    target.write(HEADER.pack(magic, size, version, len(packed), len(table), algorithm))
    target.write(packed + digest)
    shutil.copyfileobj(source, target, 1 << 20)


def main():
    if len(sys.argv) != 3:
        sys.exit("usage: set-creation-time.py ARCHIVE SECONDS")
    archive, seconds = sys.argv[1], int(sys.argv[2])
    with open(archive, "rb") as source, open(archive + ".new", "wb") as target:
        rewrite(source, target, seconds)
    shutil.move(archive + ".new", archive)


if __name__ == "__main__":
    main()
