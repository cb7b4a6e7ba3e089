#!/usr/bin/python3
# SPDX-License-Identifier: Apache-2.0
"""make-filler.py MIB: writes that many MiB to standard output, incompressible but the same every time."""
import random
import sys

if len(sys.argv) != 2:
    sys.exit("usage: make-filler.py MIB")
generator = random.Random(1)
for _ in range(int(sys.argv[1])):
    sys.stdout.buffer.write(generator.randbytes(1 << 20))
