#!/usr/bin/env python3
# SPDX-License-Identifier: Apache-2.0
"""What `pct preview`, `pct compare` and `pct show` say of packages, held to builds and to other programs.

tst_pct_preview.py PCT STAND-INS SAMPLE-PACKAGE
"""
import gzip
import hashlib
import html.parser
import json
import lzma
import os
import pty
import struct
import subprocess
import sys
import unittest

sys.path.insert(0, os.path.join(os.path.dirname(os.path.abspath(__file__)), "../support"))
import altered_package as ap  # noqa: E402
import signed_package as sp  # noqa: E402

PCT, STAND_INS, SAMPLE = [os.path.abspath(path) for path in sys.argv[1:4]]
COMPONENT = "Pelix_PDF_Editor.pkg"
SCRIPTS = COMPONENT + "/Scripts"
PAYLOAD = COMPONENT + "/Payload"
PLUGIN = "PelixFormFill.dylib"


class PackageTest(sp.FolderTest):
    folders = ("tmp",)

    def pct(self, *arguments, **environment):
        result = subprocess.run([PCT, *arguments], capture_output=True, check=False, text=True, env={
            **os.environ, "PCT_HOSTTOOLS": STAND_INS, "TMPDIR": self.path("tmp"), **environment})
        self.assertEqual(os.listdir(self.path("tmp")), [])
        return result

    def document(self, **settings):
        sp.write(self.path("settings.json"), json.dumps({"product": "editor", "settings": settings}).encode())
        return self.path("settings.json")

    def altered(self, name, change):
        package = ap.Altered(SAMPLE)
        change(package)
        return package.write(self.path(name))

    def with_script(self, name, script, old, new):
        def change(member):
            self.assertIn(old, member.content)
            member.content = member.content.replace(old, new)
        return self.altered(name, lambda package: package.change_script(SCRIPTS, script, change))


class Preview(PackageTest):
    def preview(self, *options, package=SAMPLE, **settings):
        return self.pct("preview", "--product", "editor", "--input", package, "--config", self.document(**settings), *options)

    def object(self, *options, **further):
        result = self.preview("--json", *options, **further)
        self.assertEqual(result.returncode, 0, result.stderr)
        return json.loads(result.stdout)

    def built(self, **settings):
        result = self.pct("build", "--product", "editor", "--input", SAMPLE, "--output", self.path("built.pkg"), "--force",
                          "--config", self.document(**settings), "--json")
        self.assertEqual(result.returncode, 0, result.stderr)
        return ap.Altered(self.path("built.pkg")), json.loads(result.stdout)

    def patched(self, before, diff):
        sp.write(self.path("text"), before)
        sp.write(self.path("diff"), diff.encode())
        subprocess.run(["patch", "--quiet", self.path("text"), self.path("diff")], check=True)
        with open(self.path("text"), "rb") as file:
            return file.read()

    def test_the_diffs_make_what_a_build_makes(self):
        for settings in ({}, {"bSetAsDefaultViewer": True, "bUseOAuth2": True}):
            built, report = self.built(**settings)
            preview = self.object(**settings)
            self.assertEqual([one["name"] for one in preview["changes"]], ["preinstall", "postinstall", "ProfStore.xml"])
            for change in preview["changes"][:2]:
                before = ap.Altered(SAMPLE).script(SCRIPTS, change["name"]).content
                self.assertEqual(self.patched(before, change["diff"]), built.script(SCRIPTS, change["name"]).content)
            self.assertEqual(preview["document"].encode(), built.script(SCRIPTS, "ProfStore.xml").content)
            self.assertEqual((preview["version"], preview["warnings"]), (report["version"], report["warnings"]))

    def test_what_is_added(self):
        built, _ = self.built(bSetAsDefaultViewer=True)
        preview = self.object(bSetAsDefaultViewer=True)
        for one in preview["added"]:
            member = built.script(SCRIPTS, one["name"])
            self.assertEqual((int(one["mode"], 8), one["size"], one["sha256"]),
                             (member.mode & 0o7777, len(member.content), hashlib.sha256(member.content).hexdigest()))
        self.assertEqual([one["name"] for one in preview["added"]], ["ProfStore.xml", "duti"])
        self.assertEqual([one["name"] for one in self.object(bSetAsDefaultViewer=False)["added"]], ["ProfStore.xml"])

    def test_text(self):
        result = self.preview()
        for line in ("--- vendor/postinstall", "+++ customized/postinstall", "-editorXmlFileCopy=0", "+editorXmlFileCopy=1",
                     "--- /dev/null", "+++ customized/ProfStore.xml"):
            self.assertIn("\n" + line + "\n", "\n" + result.stdout)
        self.assertNotIn("\x1b", result.stdout)
        self.assertRegex(result.stdout, r"Added to the scripts\n  ProfStore.xml +mode 0644")

    def test_control_characters_are_visible(self):
        package = self.with_script("odd.pkg", "postinstall", b"# Switches", b"# \x1b[2J\xe2\x80\xae Switches")
        result = self.preview(package=package)
        self.assertIn("# \\x1b[2J\\u202e Switches", result.stdout)

    def on_terminal(self, **environment):
        """Standard output when it is a terminal."""
        master, slave = pty.openpty()
        process = subprocess.Popen([PCT, "preview", "--product", "editor", "--input", SAMPLE], stdout=slave, stderr=slave,
                                   env={**{name: value for name, value in os.environ.items() if name != "NO_COLOR"},
                                        "PCT_HOSTTOOLS": STAND_INS, **environment})
        os.close(slave)
        output = b""
        while True:
            try:
                output += os.read(master, 65536)
            except OSError:
                break
        os.close(master)
        self.assertEqual(process.wait(), 0, output)
        return output

    def test_colours_are_for_terminals_that_want_them(self):
        self.assertIn(b"\x1b[32m+editorXmlFileCopy=1\x1b[0m", self.on_terminal(TERM="xterm"))
        self.assertNotIn(b"\x1b", self.on_terminal(TERM="dumb"))
        self.assertNotIn(b"\x1b", self.on_terminal(TERM="xterm", NO_COLOR="1"))

    def test_html_is_whole_and_escaped(self):
        package = self.with_script("odd.pkg", "postinstall", b"# Switches", b"# <script>alert(1)</script> & Switches")
        page = self.preview("--html", package=package).stdout
        self.assertNotIn("<script", page)
        self.assertIn("# &lt;script&gt;alert(1)&lt;/script&gt; &amp; Switches", page)
        opened = []

        class Reader(html.parser.HTMLParser):
            def handle_starttag(self, tag, attrs):
                if tag != "meta":
                    opened.append(tag)

            def handle_endtag(self, tag):
                assert opened.pop() == tag, tag
        Reader().feed(page)
        self.assertEqual(opened, [])

    def test_warnings_are_those_of_a_build(self):
        package = self.with_script("odd.pkg", "postinstall", b"setdefaultpdf=0", b"setdefaultpdf=2")
        result = self.preview("--json", package=package, bSetAsDefaultViewer=True)
        self.assertEqual([one["code"] for one in json.loads(result.stdout)["warnings"]], ["viewer-switch-missing"])
        self.assertIn("setdefaultpdf=0", result.stderr)

    def test_what_no_build_works_on(self):
        self.built()
        os.rename(self.path("built.pkg"), self.path("customized.pkg"))
        result = self.preview("--json", package=self.path("customized.pkg"))
        self.assertEqual((result.returncode, result.stderr.count("\n")), (1, 1), result.stderr)
        self.assertEqual(json.loads(result.stdout)["succeeded"], False)
        self.assertEqual(self.preview("--html", package=self.path("customized.pkg")).stdout, "")

    def test_json_and_html_exclude_each_other(self):
        self.assertEqual(self.preview("--json", "--html").returncode, 2)


def chunked(data, size):
    """In chunks of xz, of which one is stored."""
    out = b"pbzx" + struct.pack(">Q", size)
    for number, at in enumerate(range(0, len(data), size)):
        plain = data[at:at + size]
        packed = plain if number == 1 else lzma.compress(plain)
        out += struct.pack(">QQ", len(plain), len(packed)) + packed
    return out


class Compare(PackageTest):
    def compare(self, newer, *options, older=SAMPLE):
        return self.pct("compare", older, newer, *options)

    def object(self, newer, *options, code=0, **further):
        result = self.compare(newer, "--json", *options, **further)
        self.assertEqual(result.returncode, code, result.stderr)
        return json.loads(result.stdout)

    def test_a_release_and_itself(self):
        result = self.object(SAMPLE)
        self.assertEqual([fact for fact, both in result["facts"].items() if both["changed"]], [])
        self.assertEqual((result["added"], result["removed"], result["changed"]), ([], [], []))
        self.assertEqual([one["diff"] for one in result["scripts"]], [None, None])
        self.assertEqual((result["lostSettings"], result["pluginsJudged"]), (None, False))
        facts = {name: both["new"] for name, both in result["facts"].items()}
        self.assertEqual(facts, {"version": "13.1.2", "signer": "nobody", "team": "unknown", "minimumSystem": "10.13",
                                 "architectures": "x86_64, arm64", "editorXmlFileCopy": "1", "setdefaultpdf": "1",
                                 "plistValue": "1", "preinstall": "can be patched", "postinstall": "can be patched"})

    def test_facts_that_change(self):
        def change(package):
            text = package.contents["Distribution"].replace(b'min="10.13"', b'min="12.0"').replace(b"x86_64,arm64", b"arm64")
            package.contents["Distribution"] = text
            package.remove("Resources/License.txt")
            package.add("Resources/more", b"more")
            package.change_script(SCRIPTS, "postinstall", lambda member: setattr(
                member, "content", member.content.replace(b"13.1.2", b"14.0.0")))
        result = self.object(self.altered("new.pkg", change))
        changed = {name: (both["old"], both["new"]) for name, both in result["facts"].items() if both["changed"]}
        self.assertEqual(changed, {"version": ("13.1.2", "14.0.0"), "minimumSystem": ("10.13", "12.0"),
                                   "architectures": ("x86_64, arm64", "arm64")})
        self.assertEqual((result["added"], result["removed"], result["changed"]),
                         (["Resources/more"], ["Resources/License.txt"], ["Distribution", "Scripts/postinstall"]))
        self.assertIn('-bigversion="13.1.2"\n+bigversion="14.0.0"\n', result["scripts"][1]["diff"])

    def test_who_signed(self):
        identity = sp.authorities().issue("Developer ID Installer: New (ABCDE12345)", self.path("signer.pem"), "--team",
                                          "ABCDE12345")
        sp.sign_by_openssl(SAMPLE, self.path("signed.pkg"), identity)
        facts = self.object(self.path("signed.pkg"))["facts"]
        self.assertEqual((facts["signer"]["new"], facts["team"]["new"]),
                         ("Developer ID Installer: New (ABCDE12345)", "ABCDE12345"))

    def test_settings_that_would_lose_their_effect(self):
        for switch, name in ((b"editorXmlFileCopy=0", "all settings"), (b"setdefaultpdf=0", "bSetAsDefaultViewer"),
                             (b'plistValue="', "bUseOAuth2")):
            newer = self.with_script("new.pkg", "postinstall", switch, b"other")
            wanted = self.document(bSetAsDefaultViewer=True, bUseOAuth2=True)
            result = self.object(newer, "--config", wanted, code=1)
            self.assertEqual([one["name"] for one in result["lostSettings"]], [name])
            self.object(newer, "--config", self.document(bSetAsDefaultViewer=False), code=1 if name == "all settings" else 0)
            self.object(SAMPLE, "--config", wanted, older=newer)

    def test_a_script_that_can_no_longer_be_patched(self):
        newer = self.with_script("new.pkg", "preinstall", b"mydir=`pwd`", b"mydir=$PWD")
        self.assertIn("anchor is not unique", self.object(newer)["facts"]["preinstall"]["new"])

    def with_payload(self, name, names, pack):
        members = [ap.Member(".", 0o40755, b"")] + [ap.Member("./App.app/" + one, 0o100755, b"x" * 5000) for one in names]

        def change(package):
            package.contents[PAYLOAD] = pack(ap.write_cpio(members))
        return self.altered(name, change)

    def test_plug_ins_that_the_payload_no_longer_holds(self):
        wanted = ["--config", self.document(strUnloadPluginArray=PLUGIN + ";PelixCompare.dylib;"), "--deep"]
        for pack in (gzip.compress, lzma.compress, lambda data: chunked(data, 4096), bytes):
            older = self.with_payload("old.pkg", [PLUGIN, "PelixCompare.dylib"], pack)
            newer = self.with_payload("new.pkg", ["PelixCompare.dylib"], pack)
            result = self.object(newer, *wanted, older=older, code=1)
            self.assertEqual([(one["name"], PLUGIN in one["text"]) for one in result["lostSettings"]],
                             [("strUnloadPluginArray", True)])
            self.assertTrue(result["pluginsJudged"])
            self.assertEqual(self.object(older, *wanted, older=newer)["lostSettings"], [])

    def test_without_deep_it_says_that_plug_ins_were_not_judged(self):
        result = self.compare(SAMPLE, "--config", self.document())
        self.assertEqual(result.returncode, 0)
        self.assertIn("plug-ins was not judged", result.stdout)

    def test_payloads_that_cannot_be_read(self):
        whole = chunked(ap.write_cpio([ap.Member(".", 0o40755, b"x" * 9000)]), 4096)
        for content in (whole[:-3], whole + b"more", b"pbzx", b"AA01" + b"\0" * 100, lzma.compress(b"no archive"),
                        whole.replace(struct.pack(">Q", 4096), struct.pack(">Q", 1 << 60))):
            def change(package, content=content):
                package.contents[PAYLOAD] = content
            result = self.compare(self.altered("new.pkg", change), "--deep")
            self.assertEqual((result.returncode, result.stderr.count("\n"), result.stdout), (2, 1, ""), result.stderr)
            self.assertIn("Payload", result.stderr)

    def test_markdown_is_safe_for_a_ticket(self):
        newer = self.altered("new_|release*.pkg", lambda package: package.add("Resources/a|b*<i>", b"more"))
        page = self.compare(newer, "--markdown").stdout
        self.assertTrue(page.startswith("# Pelix PDF Editor: Pelix PDF Editor.pkg and new\\_\\|release\\*.pkg\n"), page[:90])
        self.assertIn("- Resources/a\\|b\\*&lt;i&gt;\n", page)
        self.assertIn("| minimum macOS | 10.13 | 10.13 |  |\n", page)

    def test_releases_of_two_products_and_what_is_none(self):
        sp.write(self.path("plain.pkg"), b"plain")
        reader = os.path.join(os.path.dirname(SAMPLE), "Pelix PDF Reader.pkg")
        for other in (reader, self.path("plain.pkg"), self.path("missing.pkg")):
            result = self.compare(other)
            self.assertEqual((result.returncode, result.stderr.count("\n"), result.stdout), (2, 1, ""), result.stderr)


class Show(PackageTest):
    def actions(self, **settings):
        output = self.path("built.pkg")
        result = self.pct("build", "--product", "editor", "--input", SAMPLE, "--output", output, "--force", "--config",
                          self.document(**settings))
        self.assertEqual(result.returncode, 0, result.stderr)
        return {one["name"]: one["happens"] for one in json.loads(self.pct("show", "--json", output).stdout)["installation"]}

    def test_what_the_scripts_will_do(self):
        self.assertEqual(self.actions(bSetAsDefaultViewer=False), {"document": True, "defaultViewer": False, "signIn": False, "consoleUser": True})
        self.assertEqual(self.actions(bSetAsDefaultViewer=True, bUseOAuth2=True),
                         {"document": True, "defaultViewer": True, "signIn": True, "consoleUser": True})
        text = self.pct("show", self.path("built.pkg")).stdout
        for words in ("At installation", "default PDF viewer, by duti", "iManage 10 is set", "at the console"):
            self.assertIn(words, text)

    def test_what_is_shown_of_a_package_is_taken_as_settings(self):
        self.actions()
        sp.write(self.path("shown.json"), self.pct("show", "--json", self.path("built.pkg")).stdout.encode())
        again = self.pct("diff", self.path("shown.json"), self.path("built.pkg"))
        self.assertEqual((again.returncode, again.stdout), (0, ""), again.stderr)

    def test_scripts_that_were_not_adapted(self):
        newer = self.with_script("new.pkg", "preinstall", b"mydir=`pwd`", b"mydir=$PWD")
        self.pct("build", "--product", "editor", "--input", newer, "--output", self.path("built.pkg"))
        shown = json.loads(self.pct("show", "--json", self.path("built.pkg")).stdout)["installation"]
        self.assertEqual((shown[-1]["happens"], "only postinstall" in shown[-1]["text"]), (False, True))


if __name__ == "__main__":
    unittest.main(argv=sys.argv[:1])
