#!/usr/bin/env python3
# SPDX-License-Identifier: Apache-2.0
"""translation-state.py [--complete] LUPDATE TS...

Prints for each translation file how many of the texts in the sources it translates, and which ones stay English. A text
that is new in the sources, or that is marked as unfinished, is one of these. With --complete the exit status is 1 while
there is one: for a release."""

import pathlib
import shutil
import subprocess
import sys
import tempfile
import xml.etree.ElementTree

UPDATE = pathlib.Path(__file__).resolve().with_name("update-translations.sh")


def brought_up_to_date(lupdate, path, folder):
    """The file as it would be after an update, which leaves the file itself alone."""
    copy = pathlib.Path(folder) / path.name
    shutil.copyfile(path, copy)
    subprocess.run([UPDATE, lupdate, copy], check=True)
    return copy


def is_translated(message):
    translation = message.find("translation")
    return bool("".join(translation.itertext()).strip()) and translation.get("type") is None


def state_of(path):
    """How many texts there are, and those that stay English."""
    messages = xml.etree.ElementTree.parse(path).findall("context/message")
    return len(messages), [message.findtext("source") for message in messages if not is_translated(message)]


def report(path, count, english):
    language = path.stem.removeprefix("pct_")
    print(f"{language}: {count - len(english)} of {count} texts are translated" + (", these stay English:" if english else ""))
    for text in english:
        print("    " + " ".join(text.split()))


def main(arguments):
    complete = arguments[:1] == ["--complete"]
    lupdate, *paths = arguments[1:] if complete else arguments
    missing = 0
    with tempfile.TemporaryDirectory() as folder:
        for path in map(pathlib.Path, paths):
            count, english = state_of(brought_up_to_date(lupdate, path, folder))
            report(path, count, english)
            missing += len(english)
    return 1 if complete and missing else 0


if __name__ == "__main__":
    if len(sys.argv) < 3:
        sys.exit(__doc__)
    sys.exit(main(sys.argv[1:]))
