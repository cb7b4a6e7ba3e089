# SPDX-License-Identifier: Apache-2.0
"""The verbs of pct and their options, as pct itself says them."""

import functools
import re

from surroundings import PCT, run


def _section(text, title):
    return re.search(rf"^{title}:\n((?:  .*\n)+)", text, re.MULTILINE).group(1)


def _options(text):
    """Short and long options at the beginning of the lines, without those that a description mentions."""
    names = re.findall(r"^  (?:(-\w), )?(--[a-z-]+)", _section(text, "Options"), re.MULTILINE)
    return {name for pair in names for name in pair if name}


@functools.cache
def general_options():
    return _options(run(PCT, "--help"))


def _names(text):
    return re.findall(r"^  (\w+)", _section(text, "Verbs"), re.MULTILINE)


@functools.cache
def first_words():
    return set(_names(run(PCT, "--help")))


def _verbs_below(words):
    text = run(PCT, *words, "--help")
    if "\nVerbs:\n" not in text:
        return {" ".join(words): _options(text)}
    return {name: options for word in _names(text) for name, options in _verbs_below([*words, word]).items()}


@functools.cache
def verbs():
    """The options of each verb by its full name."""
    return _verbs_below([])
