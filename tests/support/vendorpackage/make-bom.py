#!/usr/bin/python3
# SPDX-License-Identifier: Apache-2.0
"""make-bom.py FOLDER FILE: writes FILE, the bill of materials (BOMStore) of the files in FOLDER.

A BOMStore is a 512-byte header, numbered blocks, a table of their addresses and a list of named
blocks; all numbers are big-endian. The paths hang on one leaf of the tree "Paths", which is enough
for the few files of a sample. Every file is listed as owned by root:wheel.
"""
import os
import stat
import struct
import subprocess
import sys

HEADER_SIZE = 512
LEAF_SIZE = 4096
LEAF_HEADER = struct.Struct(">HHII")
LEAF_CAPACITY = (LEAF_SIZE - LEAF_HEADER.size) // 8
FILE, DIRECTORY, LINK = 1, 2, 3


class Store:
    """The blocks of a BOMStore; block 0 is the empty one that every table begins with."""

    def __init__(self):
        self.blocks = [b""]
        self.names = {}

    def add(self, data, name=None):
        self.blocks.append(data)
        if name:
            self.names[name] = len(self.blocks) - 1
        return len(self.blocks) - 1

    def add_tree(self, entries, name=None, block_size=LEAF_SIZE):
        if len(entries) > LEAF_CAPACITY:
            sys.exit(f"make-bom.py: {len(entries)} files, at most {LEAF_CAPACITY} fit; use fewer")
        leaf = LEAF_HEADER.pack(1, len(entries), 0, 0)
        leaf += b"".join(struct.pack(">II", *entry) for entry in entries)
        child = self.add(leaf.ljust(block_size, b"\0"))
        return self.add(b"tree" + struct.pack(">IIIIB", 1, child, block_size, len(entries), 0), name)

    def serialize(self):
        table, address = struct.pack(">I", len(self.blocks)), HEADER_SIZE
        for block in self.blocks:
            table += struct.pack(">II", address if block else 0, len(block))
            address += len(block)
        table += struct.pack(">I", 0)  # no free blocks
        names = struct.pack(">I", len(self.names))
        for name, index in self.names.items():
            names += struct.pack(">IB", index, len(name)) + name.encode()
        header = b"BOMStore" + struct.pack(
            ">IIIIII", 1, len(self.blocks) - 1, address, len(table), address + len(table), len(names))
        return header.ljust(HEADER_SIZE, b"\0") + b"".join(self.blocks) + table + names


def walk(folder):
    """The paths in folder, parents first, each level in byte order; "." stands for folder."""
    yield "."
    for directory, directories, files in os.walk(folder):
        directories.sort()
        links = [name for name in directories if os.path.islink(os.path.join(directory, name))]
        for name in sorted(directories + files):
            yield os.path.relpath(os.path.join(directory, name), folder)
        for name in links:
            directories.remove(name)


def checksum(path, target):
    """The POSIX cksum of a file's contents or of a link's target."""
    command = ["cksum"] if target else ["cksum", path]
    return int(subprocess.run(command, input=target, stdout=subprocess.PIPE, check=True).stdout.split()[0])


def describe(path):
    info = os.lstat(path)
    kind = {stat.S_IFDIR: DIRECTORY, stat.S_IFLNK: LINK}.get(stat.S_IFMT(info.st_mode), FILE)
    target = os.readlink(path).encode() if kind == LINK else b""
    size, crc = (0, 0) if kind == DIRECTORY else (info.st_size, checksum(path, target))
    link = target + b"\0" if target else b""
    return struct.pack(">BBHHIIIIBII", kind, 1, 3, info.st_mode & 0xFFFF, 0, 0, int(info.st_mtime),
                       size, 1, crc, len(link)) + link


def bill(folder):
    store, ids, entries = Store(), {"": 0}, []
    paths = list(walk(folder))
    store.add(struct.pack(">III", 1, len(paths) + 1, 0), "BomInfo")
    for number, path in enumerate(paths, start=1):
        ids[path] = number
        parent = 0 if path == "." else ids[os.path.dirname(path) or "."]
        details = store.add(describe(os.path.join(folder, path)))
        key = store.add(struct.pack(">II", number, details))
        name = store.add(struct.pack(">I", parent) + os.path.basename(path).encode() + b"\0")
        entries.append((key, name))
    store.add_tree(entries, "Paths")
    store.add_tree([], "HLIndex")
    store.add(struct.pack(">IIIB", 1, store.add_tree([], block_size=128), 0, 0), "VIndex")
    store.add_tree([], "Size64")
    return store.serialize()


def main():
    if len(sys.argv) != 3:
        sys.exit("usage: make-bom.py FOLDER FILE")
    with open(sys.argv[2], "wb") as output:
        output.write(bill(sys.argv[1]))


if __name__ == "__main__":
    main()
