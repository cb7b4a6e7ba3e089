#!/usr/bin/env python3
# SPDX-License-Identifier: Apache-2.0
"""What `pct project` makes of a project file, read by other programs, and what it refuses.

tst_pct_project.py PCT STAND-INS SAMPLE-PACKAGE
"""
import hashlib
import json
import os
import plistlib
import resource
import shutil
import subprocess
import sys
import unittest
import uuid
import xml.etree.ElementTree

import yaml

sys.path.insert(0, os.path.join(os.path.dirname(os.path.abspath(__file__)), "../support"))
import costs  # noqa: E402
import signed_package as sp  # noqa: E402

PCT, STAND_INS, SAMPLE = [os.path.abspath(path) for path in sys.argv[1:4]]

PROJECT = """\
version: 1
product: editor
vendor: {package: vendor/Editor.pkg}
identity: {prefix: org.example.pelix, organization: Example Ltd}
output: dist/${variant}
settings: {config: base.xml, set: {bShowStartPage: false}}
variants:
  common: {abstract: true, outputs: {profile: {}, document: }}
  office: {extends: common, set: {bHideMyApps: true}, outputs: {package: {name: "Editor-${variant}.pkg"}}}
  kiosk: {extends: office, unset: [bHideMyApps], set: {nAuthLibrary: ADAL}, outputs: {profile: false}}
  home: {extends: common, set: {bRemoveAdvertise: true}}
"""


def content(path):
    with open(path, "rb") as file:
        return file.read()


class ProjectTest(sp.FolderTest):
    folders = ("identities", "tmp", "judged", "project", "project/vendor")

    def setUp(self):
        super().setUp()
        shutil.copy(SAMPLE, self.path("project/vendor/Editor.pkg"))
        result = self.pct("config", "new", "--product", "editor", "--set", "bSupportExtSSO=true", "--output", "base.xml")
        self.assertEqual(result.returncode, 0, result.stderr)

    def write(self, text=PROJECT, name="pct-project.yaml"):
        sp.write(self.path("project/" + name), text.encode() if isinstance(text, str) else text)

    def pct(self, *arguments, **environment):
        return subprocess.run([PCT, *arguments], capture_output=True, check=False, text=True, cwd=self.path("project"),
                              env={**os.environ, "PCT_IDENTITIES_DIR": self.path("identities"), "PCT_HOSTTOOLS": STAND_INS,
                                   "TMPDIR": self.path("tmp"), "TERM": "xterm", **environment})

    def project(self, verb, *arguments, **environment):
        return self.pct("project", verb, *arguments, **environment)

    def build(self, *arguments, exit_code=0, **environment):
        result = self.project("build", "--json", *arguments, **environment)
        self.assertEqual(result.returncode, exit_code, result.stderr)
        events = [json.loads(line) for line in result.stdout.splitlines()]
        self.assertEqual(os.listdir(self.path("tmp")), [])
        return {event["variant"]: event for event in events if event["event"] == "variant"}, events[-1]

    def results(self, *arguments, **options):
        return {name: event["result"] for name, event in self.build(*arguments, **options)[0].items()}

    def files(self):
        """The outputs with their digests; stamps are no outputs."""
        found = {}
        for folder, folders, names in os.walk(self.path("project/dist")):
            folders[:] = [name for name in folders if name != ".pct-stamps"]
            for name in names:
                path = os.path.join(folder, name)
                found[os.path.relpath(path, self.path("project"))] = hashlib.sha256(content(path)).hexdigest()
        return found

    def shown(self, path):
        result = self.pct("show", "--json", path)
        self.assertEqual(result.returncode, 0, result.stderr)
        return json.loads(result.stdout)["settings"]

    def assert_refused(self, text, place, words, verb="list", name="pct-project.yaml"):
        self.write(text, name)
        result = self.project(verb, *([name] if name != "pct-project.yaml" else []))
        self.assertIn(result.returncode, (1, 2), result.stdout)
        self.assertEqual((result.stderr.count("\n"), result.stdout), (1, ""), result.stderr)
        self.assertTrue(result.stderr.startswith("pct: %s%s: " % (self.path("project/" + name), place)), result.stderr)
        self.assertIn(words, result.stderr)
        self.assertFalse(os.path.exists(self.path("project/dist")))


class Build(ProjectTest):
    def test_variants_and_what_they_inherit(self):
        self.write()
        self.assertEqual(self.results(), {"office": "made", "kiosk": "made", "home": "made"})
        self.assertEqual(sorted(self.files()),
                         ["dist/home/home.mobileconfig", "dist/home/home.xml", "dist/kiosk/Editor-kiosk.pkg", "dist/kiosk/kiosk.xml",
                          "dist/office/Editor-office.pkg", "dist/office/office.mobileconfig", "dist/office/office.xml"])
        for path, hides, library, ads in [("office/office.xml", True, 0, False), ("kiosk/kiosk.xml", False, 1, False),
                                          ("home/home.xml", False, 0, True), ("office/Editor-office.pkg", True, 0, False),
                                          ("kiosk/Editor-kiosk.pkg", False, 1, False)]:
            settings = self.shown("dist/" + path)
            self.assertEqual((settings["bHideMyApps"], settings["nAuthLibrary"], settings["bRemoveAdvertise"],
                              settings["bShowStartPage"], settings["bSupportExtSSO"]), (hides, library, ads, False, True), path)

    def test_other_programs_read_what_is_made(self):
        self.write()
        self.build()
        profile = plistlib.loads(content(self.path("project/dist/office/office.mobileconfig")))
        self.assertEqual(profile["PayloadIdentifier"], "org.example.pelix.office")
        outer = uuid.uuid5(uuid.NAMESPACE_DNS, "org.example.pelix.office")
        self.assertEqual(profile["PayloadUUID"], str(outer).upper())
        payload = profile["PayloadContent"][0]
        self.assertEqual(payload["PayloadUUID"], str(uuid.uuid5(outer, payload["PayloadType"])).upper())
        self.assertEqual(profile["PayloadOrganization"], "Example Ltd")
        root = xml.etree.ElementTree.parse(self.path("project/dist/office/office.xml")).getroot()
        modes = {item.get("Text"): item.get("Mode") for item in root.iter("Preference")}
        self.assertEqual(modes["StartPage"], "0")
        listing = subprocess.run(["bsdtar", "-tf", self.path("project/dist/kiosk/Editor-kiosk.pkg")], check=True,
                                 capture_output=True, text=True).stdout
        self.assertIn("Pelix_PDF_Editor.pkg/Scripts", listing.splitlines())

    def test_what_managements_take(self):
        domain = "com.pelix-software.Pelix.PDF.Editor.settings"
        text = PROJECT.replace("Example Ltd}", "Example Ltd, scope: System}").replace(
            "  home: {extends: common,", "  home: {extends: common, allow: [management-service], outputs: {profile: {for: jamf, "
            "removal-disallowed: true}, plist: {form: workspace-one}, package: false, document: false},")
        self.write(text + "  bare: {set: {bHideMyApps: true}, outputs: {plist: {form: intune}}}\n"
                   "  whole: {set: {bHideMyApps: true}, outputs: {plist: }}\n")
        self.assertEqual(set(self.results().values()), {"made"})
        profile = plistlib.loads(content(self.path("project/dist/home/home.mobileconfig")))
        self.assertEqual((profile["PayloadScope"], profile["PayloadRemovalDisallowed"]), ("System", True))
        self.assertEqual(profile["PayloadContent"][0]["PayloadType"], "com.apple.ManagedClient.preferences")
        self.assertEqual(list(profile["PayloadContent"][0]["PayloadContent"]), [domain])
        payload = plistlib.loads(b'<plist version="1.0">' + content(self.path("project/dist/home/home.plist")) + b"</plist>",
                                 fmt=plistlib.FMT_XML)
        self.assertEqual(payload["PayloadType"], domain)
        whole = plistlib.loads(content(self.path("project/dist/whole/whole.plist")))
        bare = content(self.path("project/dist/bare/bare.plist"))
        self.assertEqual(plistlib.loads(b'<plist version="1.0"><dict>' + bare + b"</dict></plist>", fmt=plistlib.FMT_XML), whole)

    def test_variants_that_share_an_expansion_are_what_single_builds_make(self):
        self.write()
        self.build(SOURCE_DATE_EPOCH="1700000000")
        for name in ("office", "kiosk"):
            result = self.pct("build", "--product", "editor", "--input", "vendor/Editor.pkg", "--config",
                              "dist/%s/%s.xml" % (name, name), "--output", name + ".pkg", SOURCE_DATE_EPOCH="1700000000")
            self.assertEqual(result.returncode, 0, result.stderr)
            self.assertEqual(content(self.path("project/%s.pkg" % name)),
                             content(self.path("project/dist/%s/Editor-%s.pkg" % (name, name))))

    def test_only_what_changed_is_made_again(self):
        self.write()
        self.build()
        before = self.files()
        self.assertEqual(self.project("check").returncode, 0)
        self.assertEqual(self.results(), dict.fromkeys(("office", "kiosk", "home"), "current"))
        os.utime(self.path("project/base.xml"))
        os.utime(self.path("project/vendor/Editor.pkg"))
        self.assertEqual(self.results(), dict.fromkeys(("office", "kiosk", "home"), "current"))
        self.assertEqual(self.files(), before)
        self.write(PROJECT.replace("bRemoveAdvertise: true", "bRemoveAdvertise: false"))
        checked = self.project("check")
        self.assertEqual(checked.returncode, 1)
        self.assertEqual(checked.stdout, "office: is as it should be\nkiosk: is as it should be\n"
                         "home: would be made, as what it is made from has changed\n")
        self.assertEqual(self.files(), before)
        self.assertEqual(self.results(), {"office": "current", "kiosk": "current", "home": "made"})
        changed = {path for path, digest in self.files().items() if before[path] != digest}
        self.assertEqual({os.path.dirname(path) for path in changed}, {"dist/home"})

    def test_every_input_counts(self):
        self.write()
        self.build()
        self.pct("config", "set", "base.xml", "bSupportExtSSO=false")
        self.assertEqual(set(self.results().values()), {"made"})
        subprocess.run([os.path.join(sp.SUPPORT, "vendorpackage/make-vendor-package"), "--product", "editor", "--version", "14.0.9",
                        "--output", self.path("project/vendor/Editor.pkg")], check=True, capture_output=True)
        self.assertEqual(self.results(), {"office": "made", "kiosk": "made", "home": "current"})

    def test_an_output_that_somebody_changed_or_removed_is_made_again(self):
        self.write()
        self.build()
        before = self.files()
        sp.write(self.path("project/dist/home/home.xml"), b"other")
        os.remove(self.path("project/dist/kiosk/Editor-kiosk.pkg"))
        checked = json.loads(self.project("check", "--json").stdout)
        changes = {variant["variant"]: variant["changes"] for variant in checked["variants"]}
        self.assertEqual(changes, {"office": [], "kiosk": ["dist/kiosk/Editor-kiosk.pkg is missing"],
                                   "home": ["dist/home/home.xml is not as it was made"]})
        self.assertEqual(self.results(), {"office": "current", "kiosk": "made", "home": "made"})
        self.assertEqual([path for path in self.files() if path.endswith((".xml", ".mobileconfig")) and
                          self.files()[path] != before[path]], [])

    def test_one_variant(self):
        self.write()
        self.assertEqual(self.results("--variant", "home"), {"home": "made"})
        result = self.project("build", "--variant", "hom")
        self.assertEqual((result.returncode, result.stdout), (1, ""))
        self.assertIn('there is no variant "hom", the nearest is "home"', result.stderr)

    def test_several_at_a_time_make_the_same(self):
        self.write()
        self.build(SOURCE_DATE_EPOCH="1700000000")
        one = self.files()
        shutil.rmtree(self.path("project/dist"))
        self.build("-j", "3", SOURCE_DATE_EPOCH="1700000000")
        self.assertEqual(self.files(), one)

    def test_nothing_is_deleted_and_what_is_stale_is_told(self):
        self.write()
        self.build()
        before = self.files()
        self.write(PROJECT.replace("  home:", "  away:").replace("outputs: {profile: false}", "outputs: {package: false, profile: false}"))
        for _ in range(2):
            stale = self.build()[1]["stale"]
        self.assertEqual(sorted(stale), ["dist/home/home.mobileconfig", "dist/home/home.xml", "dist/kiosk/Editor-kiosk.pkg"])
        self.assertEqual(set(before) - set(self.files()), set())
        result = self.project("build")
        self.assertIn("dist/home/home.xml: is no output of the project any more", result.stderr)

    def test_a_variant_that_fails_stays_and_others_are_made(self):
        self.write()
        self.build()
        before = self.files()
        os.remove(self.path("project/dist/office/Editor-office.pkg"))
        os.mkdir(self.path("project/dist/office/Editor-office.pkg"))
        self.write(PROJECT.replace("bShowStartPage: false", "bShowStartPage: true").replace("Editor-${variant}", "E-${variant}"))
        os.mkdir(self.path("project/dist/office/E-office.pkg"))
        result = self.project("build")
        self.assertEqual(result.returncode, 1)
        os.rmdir(self.path("project/dist/office/E-office.pkg"))
        self.write(PROJECT.replace("product: editor", "product: editor").replace("{extends: office, unset: [bHideMyApps]",
                                                                                   "{extends: office, config: gone.xml"))
        os.rmdir(self.path("project/dist/office/Editor-office.pkg"))
        variants, end = self.build(exit_code=1)
        self.assertEqual({name: event["result"] for name, event in variants.items()},
                         {"office": "made", "kiosk": "failed", "home": "current"})
        self.assertEqual((end["made"], end["current"], end["failed"], end["succeeded"]), (1, 1, 1, False))
        for path in ("dist/kiosk/Editor-kiosk.pkg", "dist/kiosk/kiosk.xml"):
            self.assertEqual(self.files()[path], before[path])

    def test_a_failing_package_keeps_the_other_outputs_of_its_variant(self):
        self.write()
        self.build()
        before = self.files()
        self.write(PROJECT.replace("bHideMyApps: true", "bHideMyApps: false").replace('.pkg"}', '.pkg", sign: true}')
                   .replace("output:", "signing: {package: {identity: Nobody}}\noutput:"))
        self.assertEqual(self.results(exit_code=1), {"office": "failed", "kiosk": "failed", "home": "current"})
        self.assertEqual(self.files(), before)

    def test_the_vendors_package_is_held_to_its_digest(self):
        digest = hashlib.sha256(content(SAMPLE)).hexdigest()
        self.write(PROJECT.replace("Editor.pkg}", "Editor.pkg, sha256: %s}" % digest.upper()))
        self.assertEqual(set(self.results().values()), {"made"})
        self.write(PROJECT.replace("Editor.pkg}", "Editor.pkg, sha256: %s}" % digest.replace(digest[0], "0" if digest[0] != "0" else "1")))
        variants = self.build(exit_code=1)[0]
        self.assertEqual([event["result"] for event in variants.values()], ["failed", "failed", "current"])
        self.assertIn("has the SHA-256 " + digest, variants["office"]["problem"]["text"])
        self.assertTrue(variants["office"]["problem"]["file"].endswith("pct-project.yaml:3:46"), variants["office"]["problem"])

    def test_the_vendors_signer_is_demanded(self):
        signer = "Developer ID Installer: Vendor (ABCDE12345)"
        identity = sp.authorities().issue(signer, self.path("vendor.pem"), "--team", "ABCDE12345")
        sp.sign_by_openssl(SAMPLE, self.path("project/vendor/Editor.pkg"), identity)
        shutil.copy(sp.authorities().root, self.path("project/vendor/root.pem"))
        demand = 'Editor.pkg, trust-anchors: vendor/root.pem, signer: "%s"}'
        text = PROJECT.replace("common: {", "common: {allow: [signature-dropped], ")
        self.write(text.replace("Editor.pkg}", demand % signer))
        self.assertEqual(self.results(), dict.fromkeys(("office", "kiosk", "home"), "made"))
        self.write(text.replace("Editor.pkg}", demand % "Somebody else"))
        self.assertIn('is signed by "%s"' % signer, self.build(exit_code=1)[0]["office"]["problem"]["text"])
        self.write(PROJECT.replace("Editor.pkg}", demand % signer).replace("bHideMyApps: true", "bHideMyApps: false"))
        self.assertIn('add "signature-dropped" to "allow"', self.build(exit_code=1)[0]["office"]["problem"]["text"])

    def test_identities_by_reference_are_nowhere_kept(self):
        signer = "Developer ID Installer: Example Org (ABCDE12345)"
        sp.authorities().issue(signer, self.path("identities/signer.pem"), "--team", "ABCDE12345")
        sp.write(self.path("profile-signer"), b"Example Deployment\n")
        sp.authorities().issue("Example Deployment", self.path("identities/profile.pem"), use="code")
        self.write(PROJECT.replace("output:", 'signing: {package: {identity: "@env:SIGNER"}, profile: {identity: "@file:%s"}}\noutput:'
                                   % self.path("profile-signer"))
                   .replace("profile: {}", "profile: {sign: true}").replace('.pkg"}', '.pkg", sign: true}'))
        result = self.project("build", "--json", SIGNER=signer)
        self.assertEqual(result.returncode, 0, result.stderr)
        package = sp.Package(self.path("project/dist/office/Editor-office.pkg"))
        self.assertTrue(sp.cms_holds(package, self.path("judged"), sp.authorities().root))
        self.assertNotIn("Example Deployment", result.stdout + result.stderr)
        self.assertNotIn(signer, result.stdout + result.stderr)
        stamps = self.path("project/dist/.pct-stamps")
        for name in os.listdir(stamps):
            self.assertNotIn(signer.encode(), content(os.path.join(stamps, name)))
        self.write(PROJECT.replace("output:", 'signing: {package: {identity: "@env:NO_SIGNER"}}\noutput:')
                   .replace('.pkg"}', '.pkg", sign: true}'))
        self.assertIn("@env:NO_SIGNER holds nothing", self.build(exit_code=1)[0]["office"]["problem"]["text"])


class Reports(ProjectTest):
    def report(self, ending, text=PROJECT, **options):
        self.write(text)
        path = self.path("report." + ending)
        self.build("--report", path, **options)
        return content(path).decode()

    def test_json(self):
        report = json.loads(self.report("json"))
        office, kiosk, home = report["variants"]
        self.assertEqual({setting["name"]: setting["values"] for setting in kiosk["settings"]},
                         {"bShowStartPage": ["false"], "nAuthLibrary": ["ADAL"], "bSupportExtSSO": ["true"]})
        files = {file["path"]: file["sha256"] for variant in report["variants"] for file in variant["files"]}
        self.assertEqual(files, self.files())
        self.assertEqual({setting["name"]: setting["values"] for setting in report["differences"]},
                         {"bHideMyApps": ["true", "false", "false"], "nAuthLibrary": ["MSAL", "ADAL", "MSAL"],
                          "bRemoveAdvertise": ["false", "false", "true"]})
        for setting in office["settings"]:
            self.assertTrue(setting["title"] and setting["meaning"] and setting["help"], setting)
        self.assertEqual((report["vendorPackage"], report["product"], home["problem"]), ("vendor/Editor.pkg", "editor", ""))

    def test_html_and_markdown_tell_the_same(self):
        facts = json.loads(self.report("json"))
        again = json.loads(self.report("json"))
        self.assertEqual(facts, again)
        for ending in ("html", "md"):
            text = self.report(ending)
            for variant in facts["variants"]:
                self.assertIn(variant["name"], text)
                for file in variant["files"]:
                    self.assertIn(file["sha256"], text)
                for setting in variant["settings"]:
                    self.assertIn(setting["title"], text)

    def test_html_is_one_sound_file(self):
        text = self.report("html")
        self.assertNotRegex(text, r"<(script|link|img|iframe)|https?:|url\(")
        judged = subprocess.run(["xmllint", "--html", "--noout", "-"], input=text, capture_output=True, text=True, check=False)
        self.assertEqual([line for line in judged.stderr.splitlines() if "error" in line and "Tag" not in line], [])

    def test_a_variant_that_was_not_made(self):
        report = json.loads(self.report("json", PROJECT.replace("{extends: office,", "{extends: office, config: gone.xml,"), exit_code=1))
        self.assertIn("gone.xml", report["variants"][1]["problem"])
        self.assertEqual(report["variants"][1]["files"], [])

    def test_the_ending_says_what_is_written(self):
        self.write()
        result = self.project("build", "--report", "report.pdf")
        self.assertEqual(result.returncode, 2)
        self.assertIn("the ending .html, .md, .json", result.stderr)

    def test_a_report_among_the_outputs(self):
        self.write(PROJECT.replace("document: }", "document: , report: {format: json}}"))
        self.build()
        report = json.loads(content(self.path("project/dist/office/office-report.json")))
        self.assertEqual([file["kind"] for file in report["variants"][0]["files"]], ["document", "profile", "package"])
        self.assertEqual(set(self.results().values()), {"current"})


class Munki(ProjectTest):
    def test_what_munki_is_told(self):
        self.write(PROJECT.replace("document: }", "document: }").replace(
            'Editor-${variant}.pkg"}', 'Editor-${variant}.pkg"}, pkginfo: {catalogs: [testing, production], location: apps/x.pkg}'))
        self.build()
        package = content(self.path("project/dist/office/Editor-office.pkg"))
        info = plistlib.loads(content(self.path("project/dist/office/office.pkginfo")))
        self.assertEqual((info["installer_item_hash"], info["installer_item_size"], info["installer_item_location"]),
                         (hashlib.sha256(package).hexdigest(), -(-len(package) // 1024), "apps/x.pkg"))
        self.assertEqual((info["catalogs"], info["minimum_os_version"], info["unattended_install"]),
                         (["testing", "production"], "10.13", True))
        self.assertEqual((info["name"], info["display_name"]), ("PelixPDFEditor-office", "Pelix PDF Editor"))
        expanded = subprocess.run(["bsdtar", "-xOf", self.path("project/dist/office/Editor-office.pkg"), "Pelix_PDF_Editor.pkg/PackageInfo"],
                                  check=True, capture_output=True).stdout
        component = xml.etree.ElementTree.fromstring(expanded)
        self.assertEqual(info["receipts"], [{"packageid": component.get("identifier"), "version": component.get("version"),
                                             "installed_size": int(component.find("payload").get("installKBytes"))}])
        self.assertTrue(info["version"])

    def test_without_a_package_there_is_nothing_to_tell(self):
        self.assert_refused(variants("  a: {outputs: {pkginfo: {}}}\n"), ":4:17", 'needs "package"')


class Init(ProjectTest):
    def init(self, *arguments):
        result = self.project("init", *arguments)
        self.assertEqual((result.returncode, result.stderr), (0, ""))
        self.assertEqual(result.stdout, self.path("project/pct-project.yaml") + "\n")
        return yaml.safe_load(content(self.path("project/pct-project.yaml")))

    def test_from_nothing(self):
        self.assertEqual(self.init(), {"version": 1, "product": "editor", "output": "dist/${variant}",
                                       "variants": {"standard": {"outputs": {"document": {}}}}})
        self.assertEqual(self.results(), {"standard": "made"})

    def test_from_what_there_is(self):
        ribbon = '<RibbonUI><RibbonCategory name="a" hidden="1"/></RibbonUI>'
        for arguments in (["profile", "--product", "editor", "--config", "base.xml", "--identifier", "org.example.old.sales", "--output",
                           "sales.mobileconfig"],
                          ["build", "--product", "editor", "--config", "base.xml", "--input", "vendor/Editor.pkg", "--output", "made.pkg"],
                          ["config", "new", "--product", "editor", "--set", "elemRibbonCategory=" + ribbon, "--set",
                           "strLoginDomainList=@example.com", "--output", "../tmp/my own.xml"]):
            result = self.pct(*arguments)
            self.assertEqual(result.returncode, 0, result.stderr)
        files = ["base.xml", "sales.mobileconfig", "made.pkg", self.path("tmp/my own.xml")]
        project = self.init("--input", "vendor/Editor.pkg", *[word for file in files for word in ("--from", file)])
        self.assertEqual(list(project["variants"]), ["base", "sales", "made", "my-own"])
        self.assertEqual(project["vendor"], {"package": "vendor/Editor.pkg", "sha256": hashlib.sha256(content(SAMPLE)).hexdigest()})
        self.assertEqual((project["identity"]["prefix"], project["variants"]["base"]["config"]), ("org.example.old", "base.xml"))
        os.rename(self.path("tmp/my own.xml"), self.path("own.xml"))
        self.build()
        for name, file in zip(project["variants"], [*files[:3], "../own.xml"]):
            compared = self.pct("diff", file, "dist/%s/%s.xml" % (name, name))
            self.assertEqual((compared.returncode, compared.stdout), (0, ""), name + compared.stderr)
        profile = plistlib.loads(content(self.path("project/dist/sales/sales.mobileconfig")))
        self.assertEqual(profile["PayloadIdentifier"], "org.example.old.sales")

    def test_what_cannot_be_one_project(self):
        self.pct("config", "new", "--product", "reader", "--output", "reader.xml")
        shutil.copy(SAMPLE, self.path("outside.pkg"))
        for arguments, words in [(["--from", "base.xml", "--from", "reader.xml"], "a project has one product"),
                                 (["--input", "../outside.pkg"], "does not lie below the project's folder"),
                                 (["--from", "missing.xml"], "does not exist")]:
            result = self.project("init", *arguments)
            self.assertEqual((result.returncode, result.stderr.count("\n")), (1, 1), result.stderr)
            self.assertIn(words, result.stderr)
            self.assertFalse(os.path.exists(self.path("project/pct-project.yaml")))
        self.write("mine")
        self.assertIn("exists already", self.project("init").stderr)
        self.assertEqual(content(self.path("project/pct-project.yaml")), b"mine")
        self.assertEqual(self.project("init", "--force").returncode, 0)


class Progress(ProjectTest):
    def test_lines_without_control_codes(self):
        self.write()
        result = self.project("build")
        self.assertRegex(result.stdout, r"\Aoffice: made 3 files in \d+\.\d s\nkiosk: made 2 files in \d+\.\d s\n"
                         r"home: made 2 files in \d+\.\d s\n\Z")
        self.assertEqual(result.stderr, "")
        self.assertEqual(self.project("build").stdout, "office: is as it should be\nkiosk: is as it should be\nhome: is as it should be\n")

    def on_terminal(self, **environment):
        """What arrives on a terminal, as `script` records it."""
        shutil.rmtree(self.path("project/dist"), ignore_errors=True)
        subprocess.run(["script", "-qec", PCT + " project build", self.path("record")], check=True, capture_output=True,
                       stdin=subprocess.DEVNULL, cwd=self.path("project"),
                       env={**os.environ, "PCT_HOSTTOOLS": STAND_INS, "TMPDIR": self.path("tmp"), "TERM": "xterm", **environment})
        return content(self.path("record"))

    def test_a_line_that_changes_on_a_terminal(self):
        self.write()
        self.assertIn(b"\r\x1b[Koffice: package, ", self.on_terminal())
        for environment in ({"NO_COLOR": "1"}, {"TERM": "dumb"}):
            record = self.on_terminal(**environment)
            self.assertNotIn(b"\x1b", record)
            self.assertIn(b"office: made 3 files in ", record)

    def test_json_tells_each_step(self):
        self.write()
        lines = self.project("build", "--json").stdout.splitlines()
        events = [json.loads(line) for line in lines]
        self.assertEqual([(event["event"], event.get("variant"), event.get("step")) for event in events][:4],
                         [("step", "office", "document"), ("step", "office", "profile"), ("step", "office", "package"),
                          ("variant", "office", None)])
        made = {file["path"]: file["sha256"] for event in events for file in event.get("files", [])}
        self.assertEqual(made, self.files())


class Reading(ProjectTest):
    def test_the_list(self):
        self.write()
        os.remove(self.path("project/vendor/Editor.pkg"))
        listed = json.loads(self.project("list", "--json").stdout)
        self.assertEqual([variant["name"] for variant in listed["variants"]], ["office", "kiosk", "home"])
        self.assertEqual(listed["variants"][1]["outputs"], [{"kind": "document", "path": "dist/kiosk/kiosk.xml"},
                                                            {"kind": "package", "path": "dist/kiosk/Editor-kiosk.pkg"}])
        self.assertTrue(self.project("list").stdout.startswith("office\n  document  dist/office/office.xml\n"))

    def test_json_says_the_same(self):
        self.write()
        listed = self.project("list").stdout
        self.write(json.dumps(yaml.safe_load(PROJECT)), "other.json")
        self.assertEqual(self.project("list", "other.json").stdout, listed)

    def test_the_vendors_version_in_names(self):
        self.write(PROJECT.replace("Editor-${variant}", "Editor-${vendor.version}-${variant}"))
        self.build()
        names = [os.path.basename(path) for path in self.files() if path.endswith(".pkg")]
        self.assertRegex(" ".join(sorted(names)), r"\AEditor-[0-9.]+-kiosk\.pkg Editor-[0-9.]+-office\.pkg\Z")

    def test_scalars_stay_text(self):
        for name in ("no", "012", "1.0", "1e3", "0x10", "2026-01-01"):
            self.write(variants("  on: {outputs: {document: {name: %s}}}\n" % name))
            self.assertEqual(self.project("list").stdout, "on\n  document  dist/on/%s\n" % name)

    def test_the_schema_takes_projects_and_refuses_others(self):
        schema = json.loads(self.project("schema").stdout)
        self.assertEqual(schema["$schema"], "http://json-schema.org/draft-07/schema#")
        self.assertEqual(schema["required"], ["version", "product", "variants"])
        try:
            import jsonschema
        except ImportError:
            self.skipTest("python3-jsonschema is not installed")
        validator = jsonschema.Draft7Validator(schema)
        jsonschema.Draft7Validator.check_schema(schema)
        self.assertEqual(list(validator.iter_errors(yaml.safe_load(PROJECT))), [])
        for before, after in [("version: 1", "version: 2"), ("product:", "produkt:"), ("bHideMyApps: true", "bHideMyApps: maybe"),
                              ("abstract:", "abstrakt:"), ("nAuthLibrary: ADAL", "nAuthLibrary: 7")]:
            self.assertNotEqual(list(validator.iter_errors(yaml.safe_load(PROJECT.replace(before, after)))), [], after)


def variants(text):
    return "version: 1\nproduct: editor\nvariants:\n" + text


class Refusals(ProjectTest):
    def test_what_is_wrong_has_a_place(self):
        cases = [
            ("", ":1:1", "empty"),
            ("version: 2\n", ":1:10", '"version" is "1"'),
            ("version: 1\nproduct: editor\n", ":1:1", '"variants" is missing'),
            ("version: 1\nproduct: writer\nvariants: {a: }\n", ":2:10", '"product" is "editor" or "reader"'),
            ("version: 1\nproduct: editor\nvarients: {a: }\n", ":3:1", 'the nearest is "variants"; allowed are version, product'),
            ("version: 1\nversion: 1\n", ":2:1", "twice"),
            (variants("  a: {set: {bShowStartPag: false}}\n"), ":4:13", "bShowStartPage"),
            (variants("  a: {set: {bShowStartPage: perhaps}}\n"), ":4:29", "true"),
            (variants("  a: {set: {nAuthLibrary: [x, y]}}\n"), ":4:27", "MSAL"),
            (variants("  a: {unset: [nothing]}\n"), ":4:15", "there is no setting"),
            (variants("  a: {abstract: yes}\n"), ":4:17", '"true" or "false"'),
            (variants("  a: {outputs: {profile: {}}}\n"), ":4:17", 'needs "identity"'),
            (variants("  a: {outputs: {package: {}}}\n"), ":4:17", 'needs "vendor"'),
            (variants("  a: {outputs: {profil: {}}}\n"), ":4:17", 'the nearest is "profile"'),
            (variants("  a: {outputs: {document: {sign: true}}}\n"), ":4:28", "allowed are name"),
            (variants("  a: {outputs: {document: yes}}\n"), ":4:27", "a mapping with name"),
            (variants("  ../a: {}\n"), ":4:3", "a variant's name"),
            (variants("  a: {\n"), ":5:1", ""),
            (variants("\ta: {}\n"), ":4:1", ""),
        ]
        for text, place, words in cases:
            with self.subTest(text=text):
                self.assert_refused(text, place, words)

    def test_what_makes_yaml_mean_something_else(self):
        cases = [(variants("  a: &one {}\n  b: *one\n"), ":4:6", "anchors are not taken"),
                 (variants("  a: *one\n"), ":4:6", "aliases are not taken"),
                 (variants("  a: !!map {}\n"), ":4:6", "tags are not taken"),
                 (variants("  a: {}\n---\nversion: 1\n"), ":5:1", "second document"),
                 (variants("  a: {<<: {abstract: true}}\n"), ":4:7", 'there is no "<<"'),
                 ("? [a]\n: b\n", ":1:3", "a name is a word")]
        for text, place, words in cases:
            with self.subTest(text=text):
                self.assert_refused(text, place, words)

    def test_inheritance(self):
        loop = variants("".join("  v%d: {extends: v%d}\n" % (i, (i + 1) % 5) for i in range(5)))
        self.assert_refused(loop, ":8:17", "inherits from itself")
        self.assert_refused(variants("  a: {extends: a}\n"), ":4:16", "inherits from itself")
        self.assert_refused(variants("  a: {extends: base}\n"), ":4:16", 'there is no variant "base"')
        chain = variants("  v0: {}\n" + "".join("  v%d: {extends: v%d}\n" % (i, i - 1) for i in range(1, 30)))
        self.assert_refused(chain, ":5:17", "more than 16 variants inherit")

    def test_paths_that_leave_the_project(self):
        for path in ("../base.xml", "/etc/passwd", "a/../../b", "~/base.xml", "./base.xml", "a//b", "a\\\\b"):
            self.assert_refused(variants('  a: {config: "%s"}\n' % path), ":4:15", "a path below the project's folder")
        for path in ("..", "/tmp", "a/../..", "~x"):
            self.assert_refused("version: 1\nproduct: editor\noutput: %s\nvariants: {a: }\n" % path, ":3:9", "below the project's")
        for name in ("../x", "a/b", ".hidden", ".."):
            self.assert_refused(variants('  a: {outputs: {document: {name: "%s"}}}\n' % name), ":4:34", "the name of a file")

    def test_links(self):
        os.symlink("/etc", self.path("project/elsewhere"))
        self.write(variants("  a: {config: elsewhere/hostname, outputs: {document: }}\n"))
        self.assertIn('"elsewhere" is a link', self.project("build").stderr)
        self.write("version: 1\nproduct: editor\noutput: elsewhere\nvariants: {a: {outputs: {document: }}}\n")
        result = self.project("build")
        self.assertEqual(result.returncode, 1)
        self.assertIn('"elsewhere" is a link', result.stderr)

    def test_placeholders(self):
        self.assert_refused(variants('  a: {set: {strLoginDomainList: "${variant}"}}\n'), ":4:33", "only in the names of outputs")
        self.assert_refused(variants('  a: {config: "${variant}.xml"}\n'), ":4:15", "only in the names of outputs")
        self.assert_refused(variants('  a: {outputs: {document: {name: "${varant}"}}}\n'), ":4:34", 'the nearest is "variant"')
        self.assert_refused(variants('  a: {outputs: {document: {name: "${variant"}}}\n'), ":4:34", "has no end")
        self.assert_refused("version: 1\nproduct: editor\noutput: dist\nvariants:\n"
                            "  a: {outputs: {document: {name: x}}}\n  B: {outputs: {document: {name: X}}}\n", ":6:17",
                            'is an output of "a" already')

    def test_references(self):
        self.assert_refused("version: 1\nproduct: editor\nidentity: {prefix: '@env:X'}\nvariants: {a: }\n", ":3:20", "only identities")
        for reference in ("@env:", "@env:A B", "@keychain:x", "@file:"):
            self.assert_refused("version: 1\nproduct: editor\nsigning: {profile: {identity: '%s'}}\nvariants: {a: }\n" % reference,
                                ":3:31", '"@env:NAME" or "@file:PATH"')

    def test_json_is_read_as_strictly(self):
        for text, place, words in [('{"version": 1, "version": 1}', ":1:16", "twice"), ('{"version": 1,\n "produkt": 1}', ":2:2", "allowed are"),
                                   ('{"a": "\\u0000"}', ":1:8", "0000"), ("[1]", ":1:1", "a mapping"), ("{", ":1:2", "expected")]:
            self.assert_refused(text, place, words, name="p.json")

    def test_json_says_so_too(self):
        self.write("version: 2\n")
        for verb in ("build", "check"):
            result = self.project(verb, "--json")
            end = json.loads(result.stdout)
            self.assertEqual((end["event"], end["succeeded"]), ("end", False))
            self.assertIn(end["problem"]["file"] + ": " + end["problem"]["text"], result.stderr)

    def test_hostile_files_cost_little(self):
        def cheapest(verb):
            spent = []
            for _ in range(3):
                before = resource.getrusage(resource.RUSAGE_CHILDREN)
                result = subprocess.run([PCT, "project", verb], text=True, capture_output=True, check=False, cwd=self.path("project"),
                                        env={**os.environ, "PCT_HOSTTOOLS": STAND_INS, "TMPDIR": self.path("tmp")})
                after = resource.getrusage(resource.RUSAGE_CHILDREN)
                spent.append(after.ru_utime + after.ru_stime - before.ru_utime - before.ru_stime)
            return min(spent), after.ru_maxrss, result
        bomb = "a0: &a0 [x, x]\n" + "".join("a%d: &a%d [*a%d, *a%d]\n" % (i, i, i - 1, i - 1) for i in range(1, 60))
        hostile = {
            "flow": "[" * 100000, "block": "- " * 50000, "maps": "\n".join(" " * i + "a:" for i in range(1400)), "aliases": bomb,
            "keys": "\n".join("k%d: 1" % i for i in range(100000)), "large": "#" * (1024 * 1024 + 1),
            "variants": variants("".join("  v%d: \n" % i for i in range(100000))),
            "chain": variants("  v0: {}\n" + "".join("  v%d: {extends: v%d}\n" % (i, i - 1) for i in range(1, 900))),
            "entries": variants("  a: {set: {strLoginDomainList: \"%s\"}}\n" % ";".join("@%d" % i for i in range(120000)))[:1024 * 1024],
            "list": variants("  a: {allow: [%s]}\n  a: {}\n" % ",".join("x%d" % i for i in range(120000))),
            "text": variants("  a: {set: {strLoginDomainList: \"%s\"}}\n" % ("${" * 400000)), "nul": variants("  a\0: {}\n"),
            "bytes": variants("  a: {}\n").encode() + b"\xff\xfe", "quotes": '"' * 300000, "tags": "!" * 300000,
        }
        for name, text in hostile.items():
            with self.subTest(name=name):
                self.write(text)
                seconds, _, result = cheapest("build")
                self.assertEqual((result.returncode, result.stdout, result.stderr.count("\n")), (1, "", 1), result.stderr[:300])
                self.assertLess(len(result.stderr), 1500)
                self.assertLess(seconds, costs.seconds(1), result.stderr[:300])
        self.assertLess(resource.getrusage(resource.RUSAGE_CHILDREN).ru_maxrss, costs.mebibytes(256) * 1024)
        self.assertFalse(os.path.exists(self.path("project/dist")))
        self.assertEqual(os.listdir(self.path("tmp")), [])


if __name__ == "__main__":
    unittest.main(argv=sys.argv[:1] + sys.argv[4:])
