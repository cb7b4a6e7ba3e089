#!/usr/bin/env python3
# SPDX-License-Identifier: Apache-2.0
"""What README and guide tell people to type is typed here, word for word, and what they say comes of it is compared.

tst_written_commands.py ROOT GUIDE PCT STAND-INS SAMPLE-PACKAGE
"""
import json
import os
import pathlib
import re
import shutil
import subprocess
import sys
import unittest
import urllib.parse
import xml.etree.ElementTree as ET

sys.path.insert(0, os.path.join(os.path.dirname(os.path.abspath(__file__)), "../support"))
import signed_package as sp  # noqa: E402

ROOT, GUIDE, PCT, STAND_INS, SAMPLE = [pathlib.Path(path).resolve() for path in sys.argv[1:6]]
TEAM = "AB12CD34EF"
SIGNER = "Developer ID Installer: Example Ltd (%s)" % TEAM


def page(name):
    return ET.parse(GUIDE / (name + ".html")).getroot()


def by_id(root, name):
    return next(element for element in root.iter() if element.get("id") == name)


def blocks(name, section):
    """The commands of a section of the guide, as a shell reads them. Those for a Mac only are of another class."""
    return ["".join(pre.itertext()) for pre in by_id(page(name), section).iter("pre") if pre.get("class") == "commands"]


def commands(name, section):
    return "\n".join(blocks(name, section))


def readme_commands(heading):
    section = (ROOT / "README.md").read_text().split("\n## %s\n" % heading)[1].split("\n## ")[0]
    return "\n".join(re.findall(r"^```sh\n(.*?)^```$", section, re.MULTILINE | re.DOTALL))


class WrittenCommands(sp.FolderTest):
    folders = ("identities", "tmp")

    def setUp(self):
        super().setUp()
        sp.authorities().issue(SIGNER, self.path("identities/signer.pem"), "--team", TEAM, use="packages")
        shutil.copyfile(SAMPLE, self.path("Pelix PDF Editor.pkg"))

    def run_in_folder(self, script):
        """The chain of the test's identity ends in an authority of the test instead of Apple's."""
        trusting = script.replace("pct verify ", "pct verify --trust-anchors '%s' " % sp.authorities().root)
        here = re.sub(r"^export PCT_IDENTITIES_DIR=.*$", "", trusting, flags=re.MULTILINE)
        return subprocess.run(["/bin/sh", "-euc", here], cwd=self.folder, capture_output=True, check=False, text=True,
                              env={**os.environ, "PATH": "%s:%s" % (PCT.parent, os.environ["PATH"]), "TMPDIR": self.path("tmp"),
                                   "PCT_IDENTITIES_DIR": self.path("identities"), "PCT_HOSTTOOLS": str(STAND_INS)})

    def assert_runs(self, script):
        self.assertIn("pct ", script)
        result = self.run_in_folder(script)
        self.assertEqual(result.returncode, 0, result.stderr)
        return result.stdout

    def pct(self, *arguments):
        return self.assert_runs("pct " + " ".join(arguments))

    def prepare(self):
        """What the reader of the guide has made before: settings, a package and a profile from them."""
        self.pct("config new --product editor --output settings.xml --set bHideMyApps=true")
        self.pct("build --product editor --input 'Pelix PDF Editor.pkg' --config settings.xml --output Editor-managed.pkg")
        self.pct("profile --product editor --config settings.xml --output Editor-deployed.mobileconfig")


class Readme(WrittenCommands):
    def test_five_commands_lead_to_a_signed_and_verified_package(self):
        script = readme_commands("Do it")
        self.assertEqual(len(re.findall(r"^pct ", script.split("\npct profile")[0], re.MULTILINE)), 5)
        self.assert_runs(script)
        shown = json.loads(self.pct("show --json Editor-signed.pkg"))["settings"]
        self.assertEqual((shown["bShowStartPage"], shown["bHideMyApps"]), (False, True))
        self.assertTrue(sp.rsa_holds(sp.Package(self.path("Editor-signed.pkg")), self.path("tmp")))
        self.assertTrue(os.path.exists(self.path("Editor.mobileconfig")))


class FirstDeployment(WrittenCommands):
    def test_word_for_word_to_a_signed_and_verified_package_and_profile(self):
        sp.authorities().issue("Example Deployment", self.path("identities/deployment.pem"), use="code")
        look, package, profile, compare = blocks("First deployment", "commands")
        for block in (look, package):
            self.assert_runs(block)
        self.assertTrue(sp.rsa_holds(sp.Package(self.path("Editor-signed.pkg")), self.path("tmp")))
        result = self.run_in_folder(profile)
        self.assertEqual(result.returncode, 0, result.stderr)
        self.assertIn("is signed by \"Example Deployment\"", result.stderr)
        self.assertIn("\"org.example.pelix-editor\"", result.stdout)
        compared = self.run_in_folder(compare)
        self.assertEqual(compared.returncode, 1, compared.stderr)
        listed = "".join(by_id(page("First deployment"), "first-difference").itertext())
        self.assertEqual(compared.stdout.split("defaults.xml\n"), ["%s/" % os.path.realpath(self.folder), listed + "\n"])


class Guide(WrittenCommands):
    def test_signing(self):
        self.prepare()
        lines = commands("Signing", "sign").replace("\\\n", " ").splitlines()
        self.assertIn(SIGNER, self.assert_runs("\n".join(lines[:3])))
        os.remove(self.path("Editor-signed.pkg"))
        self.assert_runs("\n".join(lines[3:]))
        self.assert_runs("pct verify --require-team %s Editor-signed.pkg" % TEAM)
        os.remove(self.path("Editor-signed.pkg"))
        self.assertIn('"succeeded": true', self.assert_runs(commands("Signing", "server")))

    def test_what_reviewers_get(self):
        self.prepare()
        self.assert_runs("pct sign Editor-managed.pkg --identity '%s' --output Editor-signed.pkg" % SIGNER)
        self.assert_runs(commands("Signing", "review"))
        for name, member in (("vendor.json", "signature"), ("settings.json", "settings"), ("signature.json", "signature")):
            self.assertIn(member, json.loads(pathlib.Path(self.path(name)).read_text()))

    def test_a_new_version_has_the_same_settings(self):
        self.prepare()
        printed = self.assert_runs(commands("Updates", "new-version"))
        self.assertTrue(printed.endswith("Editor-new.pkg\n"), printed)

    @unittest.skipUnless(shutil.which("jq"), "jq is not installed")
    def test_a_changed_setting_is_all_that_changes(self):
        self.prepare()
        result = self.run_in_folder(commands("Updates", "changed-setting"))
        self.assertEqual(result.returncode, 1, result.stderr)
        self.assertEqual(result.stdout.splitlines()[-1], "bShowStartPage: true -> false")
        identities = [json.loads(self.pct("show --json", name))["identity"]
                      for name in ("Editor-deployed.mobileconfig", "Editor-next.mobileconfig")]
        self.assertEqual(identities[0], identities[1])

    def test_from_a_package_to_a_profile(self):
        self.prepare()
        self.assert_runs(commands("Package or profile", "change-over"))
        self.assertEqual(self.pct("diff Editor-deployed.mobileconfig Editor.mobileconfig"), "")

    def differences(self, *settings):
        self.pct("config new --product editor --force --output settings.xml", *("--set %s" % setting for setting in settings))
        self.pct("build --product editor --force --input 'Pelix PDF Editor.pkg' --config settings.xml --output a.pkg")
        self.pct("profile --product editor --force --config settings.xml --output a.mobileconfig")
        return self.run_in_folder("pct diff a.pkg a.mobileconfig").stdout

    def test_package_and_profile_of_the_same_settings_differ_as_listed(self):
        self.assertEqual(self.differences("bSetAsDefaultViewer=true"), "")
        every = ("bShowStartPage=false", "bRemoveAdvertise=true", "strDisableOpenSaveFileAttach=Disabled",
                 "strBuiltInPermList=.zip:1", "bDisableOpenFileAll=true", "strUnloadPluginArray=JavaScript",
                 "nMIPCheckPolicyOnDocSave=Enabled", "nAuthLibrary=ADAL", "bHideMyApps=true", "bSupportExtSSO=true",
                 "bUseOAuth2=true", "strLoginDomain=blacklist", "strLoginDomainList=@example.com", "bSetAsDefaultViewer=false")
        listed = "".join(by_id(page("Deployment"), "differences").itertext())
        self.assertEqual(self.differences(*every), listed + "\n")


class Settings(WrittenCommands):
    def settings(self):
        known = {}
        for product in ("reader", "editor"):
            for setting in json.loads(self.pct("config names --json --product", product))["settings"]:
                known[setting["name"]] = setting
        return known

    @staticmethod
    def listed(section):
        terms = list(by_id(page("Settings A-Z"), section).iter("dt"))
        values = list(by_id(page("Settings A-Z"), section).iter("dd"))
        return [("".join(term.itertext()), urllib.parse.unquote(term.find("a").get("href")), "".join(value.itertext()))
                for term, value in zip(terms, values)]

    def test_the_titles_are_all_there_in_order(self):
        wanted = {(setting["title"], setting["help"]): [] for setting in self.settings().values()}
        for setting in self.settings().values():
            wanted[setting["title"], setting["help"]].append(setting)
        listed = self.listed("by-title")
        self.assertEqual([(title, help_page) for title, help_page, _ in listed], sorted(wanted, key=lambda key: key[0].lower()))
        for title, help_page, text in listed:
            for setting in wanted[title, help_page]:
                self.assertIn(setting["name"], text)
                self.assertEqual("Editor only" in text, setting["products"] == ["editor"], title)

    def test_the_names_are_all_there_in_order(self):
        wanted = [(name, setting["help"], setting["meaning"]) for name, setting in self.settings().items()]
        self.assertEqual(self.listed("by-name"), sorted(wanted, key=lambda row: row[0].lower()))


if __name__ == "__main__":
    unittest.main(argv=sys.argv[:1], verbosity=2)
