#!/usr/bin/env python3
# SPDX-License-Identifier: Apache-2.0
"""make-settings-index.py PCT TEMPLATE OUTPUT: writes the page Settings A-Z of the guide from what `pct` knows of each setting, so
that a setting that is new need not be entered there."""

import html
import json
import pathlib
import subprocess
import sys
import urllib.parse


def settings(pct):
    """Those of the Editor; the Reader has no others."""
    listed = subprocess.run([pct, "config", "names", "--json", "--product", "editor"], check=True, stdout=subprocess.PIPE).stdout
    return json.loads(listed)["settings"]


def entry(setting, term, meaning):
    return '<dt><a href="%s">%s</a></dt><dd>%s</dd>\n' % (urllib.parse.quote(setting["help"], safe="/#-"), term, meaning)


def where(group):
    first = group[0]
    names = ", ".join("<code>%s</code>" % setting["name"] for setting in group)
    page = first["help"].partition(".html")[0]
    return "%s on the page %s%s" % (names, page, "; Editor only" if first["products"] == ["editor"] else "")


def by_title(known):
    groups = {}
    for setting in known:
        groups.setdefault(setting["title"], []).append(setting)
    return "".join(entry(group[0], html.escape(title), where(group)) for title, group in sorted(groups.items()))


def by_name(known):
    return "".join(entry(setting, "<code>%s</code>" % setting["name"], html.escape(setting["meaning"]))
                   for setting in sorted(known, key=lambda setting: setting["name"]))


def main():
    pct, template, output = sys.argv[1:]
    known = settings(pct)
    page = pathlib.Path(template).read_text(encoding="utf-8")
    for mark, text in (("<!-- by title -->\n", by_title(known)), ("<!-- by name -->\n", by_name(known))):
        page = page.replace(mark, text)
    pathlib.Path(output).write_text(page, encoding="utf-8")


main()
