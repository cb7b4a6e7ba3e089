# SPDX-License-Identifier: Apache-2.0
"""What the tests of the packaging know about the build, and how they start programs."""

import os
import pathlib
import subprocess

ROOT = pathlib.Path(__file__).resolve().parents[3]
BUILD = pathlib.Path(os.environ["PCT_BUILD_FOLDER"])
BUILD_TYPE = os.environ["PCT_BUILD_TYPE"]
PCT = os.environ["PCT"]
SAMPLE = os.environ["PCT_SAMPLE"]
VERSION = os.environ["PCT_VERSION"]


def environment(**more):
    """What a program sees: nothing of the build folder is in reach."""
    kept = {name: value for name, value in os.environ.items() if name == "ASAN_OPTIONS"}
    return {"PATH": "/usr/bin:/bin", "LC_ALL": "C.UTF-8", **kept, **more}


def run(*command, **keywords):
    """The standard output of a command; a failure shows what the command said."""
    words = [str(word) for word in command]
    result = subprocess.run(words, capture_output=True, encoding="utf-8", **keywords)
    if result.returncode != 0:
        raise AssertionError(f"{words}: status {result.returncode}\n{result.stdout}{result.stderr}")
    return result.stdout
