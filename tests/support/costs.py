# SPDX-License-Identifier: Apache-2.0
"""Bounds on what a run may cost."""
import os

# A build with sanitizers makes everything several times as dear; who runs the tests says so.
FACTOR = int(os.environ.get("PCT_COST_FACTOR", "1"))


def seconds(plain):
    return plain * FACTOR


def mebibytes(plain):
    return plain * FACTOR
