#!/usr/bin/python3
# SPDX-License-Identifier: Apache-2.0
"""Copies a file in the kernel and hashes it in another thread; prints the microseconds until both are done.

usage: copy-beside-sha1.py FILE COPY

Nobody can do both faster, so this is the limit for whoever has to.
"""
import hashlib
import mmap
import os
import sys
import threading
import time

STEP = 4 * 1024 * 1024


def copy(source, target, size):
    done = 0
    while done < size:
        done += os.copy_file_range(source, target, size - done)


def digest(file, size):
    sha1 = hashlib.sha1()
    for offset in range(0, size, STEP):
        with mmap.mmap(file, min(STEP, size - offset), mmap.MAP_SHARED | 0x8000, mmap.PROT_READ, offset=offset) as part:
            sha1.update(part)  # 0x8000: MAP_POPULATE, as its name is newer than some Pythons
    return sha1.hexdigest()


def main(source_path, target_path):
    source = os.open(source_path, os.O_RDONLY)
    start = time.perf_counter()
    target = os.open(target_path, os.O_RDWR | os.O_CREAT | os.O_EXCL, 0o600)
    size = os.fstat(source).st_size
    hashing = threading.Thread(target=digest, args=(source, size))
    hashing.start()
    copy(source, target, size)
    hashing.join()
    os.close(target)
    print(round((time.perf_counter() - start) * 1000000))


if __name__ == "__main__":
    if len(sys.argv) != 3:
        print(__doc__.strip(), file=sys.stderr)
        sys.exit(2)
    main(*sys.argv[1:])
