#!/usr/bin/env python3
# SPDX-License-Identifier: Apache-2.0
"""What `pct lint` finds, how it says it, and what it costs.

tst_pct_lint.py PCT SAMPLE-PACKAGE DOCS-FOLDER
"""
import json
import os
import plistlib
import re
import subprocess
import sys
import tempfile
import unittest
import urllib.parse

sys.path.insert(0, os.path.join(os.path.dirname(os.path.abspath(__file__)), "../support"))
import costs  # noqa: E402

PCT, SAMPLE, DOCS = [os.path.abspath(path) for path in sys.argv[1:4]]
PRODUCTS = {"editor": "PelixPDFEditor", "reader": "PelixPDFReader"}
DOMAINS = "<Preference Text='LoginDomain' String='%s'/><Preference Text='LoginDomainList' String='%s'/>"
SPACE = "\N{NO-BREAK SPACE}"


def preferences(items):
    return "<Preferences>%s</Preferences>" % items


def plugins(names):
    return "<Plugins><Plugin Text='Plugin' UnloadPluginArray='%s'/></Plugins>" % names


def types(names):
    return preferences("<Preference Text='DefaultLaunchAttachmentPerms' Mode='0' BuiltInPermList='%s'/>" % names)


def ribbon(content):
    return "<RibbonSetRibbonCategory><RibbonUI>%s</RibbonUI></RibbonSetRibbonCategory>" % content


def bar(controls):
    return "<RibbonSetTabElements><QuickAccessBar>%s</QuickAccessBar></RibbonSetTabElements>" % controls


class LintTest(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.folder = folder.name

    def path(self, name):
        return os.path.join(self.folder, name)

    def write(self, name, content):
        with open(self.path(name), "wb") as file:
            file.write(content if isinstance(content, bytes) else content.encode())
        return name

    def document(self, sections, product="editor", name="settings.xml"):
        root = PRODUCTS[product]
        return self.write(name, "<?xml version='1.0' encoding='UTF-8'?>\n<%s>\n%s</%s>\n" % (root, sections, root))

    def pct(self, *arguments):
        return subprocess.run([PCT, *arguments], cwd=self.folder, capture_output=True, check=False)

    def made(self, *arguments):
        result = self.pct(*arguments)
        self.assertEqual(result.returncode, 0, result.stderr)

    def findings(self, *files):
        return json.loads(self.pct("lint", "--json", *files).stdout)["findings"]

    def codes(self, *files):
        return [finding["code"] for finding in self.findings(*files)]

    def profile(self, name, *options, product="editor"):
        self.made("profile", "--product", product, "--output", name, "--identifier", "org.example." + name, *options)
        return name

    def changed_profile(self, change, product="editor"):
        """A default profile whose settings a function has changed, written by Python."""
        with open(self.path(self.profile("before", product=product)), "rb") as file:
            profile = plistlib.load(file)
        change(profile["PayloadContent"][0])
        return self.write("changed.mobileconfig", plistlib.dumps(profile))


def everything_hidden(test):
    listed = json.loads(test.pct("config", "commands", "--product", "editor", "--json").stdout)["commands"]
    names = [command["path"][0] for command in listed if command["kind"] == "Category"]
    return "".join("<Category Text='%s' Hidden='1'/>" % name for name in names)


# Each code with what provokes it once: the product, the sections of a document, and words of the message.
PROVOCATIONS = [
    ("unreadable", "editor", "<Preferences>", ["mismatched tag"]),
    ("wrong-value", "editor", preferences("<Preference Text='StartPage' Mode='2'/>"),
     ['"Mode" of "StartPage" is "2"', "0 (false), 1 (true)"]),
    ("wrong-value", "editor", preferences("<Preference Text='StartPage'/>"), ["missing"]),
    ("wrong-value", "editor", preferences("<Preference Text='AuthLibrary' Mode='2'/>"), ["0 (MSAL), 1 (ADAL)"]),
    ("wrong-value", "editor", preferences("<Preference Text='bMIPCheckPolicyOnDocSave' Mode='on'/>"), ['"on"']),
    ("wrong-value", "editor", preferences("<Preference Text='LoginDomain' String='3'/>"), ['"3"']),
    ("wrong-value", "editor", "<Installation_Options><Installation_Option Text='SetAsDefaultViewer' Disable='no'/>"
     "</Installation_Options>", ['"no"', "0 (true)"]),
    ("wrong-value", "editor", ribbon("<Category Text='Ribbon_Page_View' Hidden='yes'/>"), ['"Hidden"', '"yes"']),
    ("look-alike", "editor", preferences("<Preference Text='StartP\u0430ge' Mode='0'/>"), ["U+0430 in place 7"]),
    ("look-alike", "editor", preferences("<Preference Text='StartPage' Mode='0 '/>"), ["white space at an end"]),
    ("look-alike", "editor", plugins("PelixJav\u0430Script.dylib;"), ['"PelixJavaScript.dylib"']),
    ("look-alike", "editor", preferences(DOMAINS % ("1", "@\u0435xample.com;@b.example")), ["U+0435 in place 2"]),
    ("look-alike", "editor", preferences(DOMAINS % ("1", "@example.com\u200b;@b.example")), ["U+200B"]),
    ("look-alike", "editor", types("version:1|.zip:1" + SPACE), ["white space at an end"]),
    ("look-alike", "editor", ribbon("<Category Text='Ribbon_Page_Vi\u0435w' Hidden='1'/>"), ["Ribbon_Page_View"]),
    ("look-alike", "editor", bar("<control action='Ribbon_Action_MenuBar_Save ' page='Other' group='Other'/>"),
     ["white space at an end"]),
    ("wrong-domain", "editor", preferences(DOMAINS % ("1", "@b.example;example.com")), ['"example.com"', "@example"]),
    ("wrong-file-types", "editor", types("version:1|zip:1"), ['"zip:1"', ".zip:1"]),
    ("wrong-file-types", "editor", types(".zip:1"), ['"version:1"']),
    ("unknown-plugin", "editor", plugins("PelixOCD.dylib;"), ['"PelixOCD.dylib"']),
    ("unknown-plugin", "editor", plugins("PelixJavaScrip.dylib;"), ['the nearest is "PelixJavaScript.dylib"']),
    ("plugin-of-other-product", "reader", plugins("PelixRedaction.dylib;"), ["only the Pelix PDF Editor has"]),
    ("unknown-command", "editor", ribbon("<Category Text='Ribbon_Page_Veiw' Hidden='1'/>"),
     ['the nearest is "Ribbon_Page_View"']),
    ("unknown-command", "reader", ribbon("<Category Text='Ribbon_Page_Convert' Hidden='1'/>"),
     ["only the Pelix PDF Editor has"]),
    ("unknown-command", "editor", bar("<control action='Ribbon_Action_MenuBar_Save' page='a' group='b'/>"),
     ["on this page"]),
    ("not-read", "editor", preferences("<Preference Text='Startpage' Mode='0'/>"), ['the nearest is "StartPage"']),
    ("not-read", "editor", preferences("<Preference Text='HideMyApps' mode='1' Mode='1'/>"), ['attribute "mode"']),
    ("not-read", "editor", ribbon("<Category Text='Ribbon_Page_View' Hidden='1' Hidde='1'/>"), ['"Hidde"']),
    ("ignored-setting", "reader", preferences("<Preference Text='HideMyApps' Mode='1'/>"), ["bHideMyApps"]),
    ("ignored-domains", "editor", preferences(DOMAINS % ("2", "@example.com")), ["mode 1"]),
    ("whitelist-without-domain", "editor", preferences(DOMAINS % ("1", ";")), ["names no domain"]),
    ("hidden-ribbon", "editor", "EVERYTHING", ["16 categories"]),
    ("repeated-item", "editor", preferences("<Preference Text='StartPage' Mode='0'/>\n<Preference Text='StartPage' "
                                            "Mode='1'/>"), ["line 4, column 1"]),
    ("repeated-entry", "editor", types("version:1|.zip:1|.zip:2"), ['".zip:2"']),
    ("repeated-entry", "editor", preferences(DOMAINS % ("1", "@a.example;@a.example")), ["@a.example"]),
    ("more-findings", "editor", preferences("<x/>" * 1002), ["there is more"]),
]


class Codes(LintTest):
    def provoke(self, product, sections):
        return self.findings(self.document(ribbon(everything_hidden(self)) if sections == "EVERYTHING" else sections, product))

    def test_each_is_provoked_by_one_flaw_and_by_nothing_else(self):
        for code, product, sections, words in PROVOCATIONS:
            with self.subTest(code=code, sections=sections[:80]):
                findings = self.provoke(product, sections)
                expected = {"not-read", code} if code == "more-findings" else {code}
                self.assertEqual({finding["code"] for finding in findings}, expected, findings)
                for word in words:
                    self.assertIn(word, findings[-1]["text"])

    def test_all_are_provoked_and_documented(self):
        rules = json.loads(self.pct("lint", "--sarif", self.document("")).stdout)["runs"][0]["tool"]["driver"]["rules"]
        known = [(rule["id"], rule["defaultConfiguration"]["level"], rule["shortDescription"]["text"],
                  rule["help"]["text"]) for rule in rules]
        with open(os.path.join(DOCS, "lint.md"), encoding="utf-8") as file:
            rows = [re.split(r"(?<!\\)\|", line)[1:5] for line in file if line.startswith("| `")]
        self.assertEqual([tuple(cell.strip(" `").replace("\\|", "|") for cell in row) for row in rows], known)
        provoked = {code for code, *_ in PROVOCATIONS} | {"shared-identifier"}
        self.assertEqual(provoked, {rule[0] for rule in known})

    def test_a_shared_identifier_is_found_between_profiles(self):
        first, second = self.profile("a"), "b"
        self.made("profile", "--product", "reader", "--output", second, "--identifier", "org.example.a")
        findings = self.findings(first, second, first)
        self.assertEqual([(f["code"], f["file"]) for f in findings], [("shared-identifier", "b")])
        self.assertIn('"org.example.a" of a', findings[0]["text"])


class Places(LintTest):
    def test_are_those_of_the_element(self):
        name = self.document("<Profstore>\n  <Preferences>\n    <Preference Text='StartPage' Mode='1'/>"
                             "<Preference Text='AuthLibrary' Mode='9'/>\n</Preferences></Profstore>")
        self.assertEqual([(f["line"], f["column"]) for f in self.findings(name)], [(5, 44)])
        line = self.pct("lint", name).stdout.decode()
        self.assertTrue(line.startswith("settings.xml:5:44: error: "), line)
        self.assertTrue(line.endswith(" [wrong-value]\n"), line)

    def test_columns_count_characters(self):
        name = self.document("<!-- \N{GRINNING FACE}\u00e9 --><Preferences><a/></Preferences>")
        self.assertEqual([(f["line"], f["column"]) for f in self.findings(name)], [(3, 25)])

    def test_of_what_cannot_be_read_are_told_as_well(self):
        name = self.write("part.json", '{"product": "editor",\n  "bShowStartpage": true}')
        finding, = self.findings(name)
        self.assertEqual((finding["code"], finding["line"], finding["column"]), ("unreadable", 2, 3))

    def test_in_json_are_those_of_the_value(self):
        name = self.write("part.json", '{"product": "editor",\n "settings": {"nAuthLibrary": 7}}')
        finding, = self.findings(name)
        self.assertEqual((finding["code"], finding["line"], finding["column"]), ("wrong-value", 2, 31))
        self.assertIn("nAuthLibrary", finding["text"])

    def test_a_policy_that_json_does_not_switch_on_is_found(self):
        finding, = self.findings(self.write("a.json", '{"product": "editor", "nMIPCheckPolicyOnDocSave": 1}'))
        self.assertEqual((finding["code"], finding["column"]), ("ignored-setting", 51))

    def test_in_a_profile_are_those_of_the_key(self):
        def change(settings):
            settings["Preferences"][0]["Preference"]["Mode"] = "7"
        name = self.changed_profile(change)
        with open(self.path(name), encoding="utf-8") as file:
            lines = file.read().split("\n")
        finding, = self.findings(name)
        self.assertIn("<key>Mode</key>", lines[finding["line"] - 1])
        self.assertEqual(lines[finding["line"] - 1].index("<key>") + 1, finding["column"])
        self.assertEqual(lines[finding["line"]].strip(), "<string>7</string>")

    def test_in_a_package_are_of_its_document(self):
        name = self.document(preferences("<Preference Text='AuthLibrary' Mode='1'/>") + plugins("PelixNone.dylib"))
        self.made("build", "--product", "editor", "--input", SAMPLE, "--output", "made.pkg", "--config", name)
        finding, = self.findings("made.pkg")
        self.assertEqual((finding["code"], finding["member"]), ("unknown-plugin", "ProfStore.xml"))
        line = self.pct("lint", "made.pkg").stdout.decode()
        self.assertTrue(line.startswith("made.pkg (ProfStore.xml, line %d, column " % finding["line"]), line)


class Profiles(LintTest):
    def test_what_nobody_reads_is_found(self):
        def change(settings):
            settings["Preferencez"] = []
            settings["Preferences"][0]["Preference"]["mode"] = "1"
            settings["Preferences"].append({"Preference": {"Text": "Startpage", "Mode": "1"}})
            settings["Preferences"].append({"Preferenze": {}})
        texts = [f["text"] for f in self.findings(self.changed_profile(change)) if f["code"] == "not-read"]
        for words in ('key "Preferencez", the nearest is "Preferences"', 'key "mode" of Preference "StartPage"',
                      'Preference "Startpage"', 'key "Preferenze" in Preferences'):
            self.assertEqual(len([text for text in texts if words in text]), 1, texts)
        self.assertEqual(len(texts), 4)

    def test_values_of_any_type_are_judged(self):
        def change(settings):
            settings["Preferences"][0]["Preference"]["Mode"] = True
            settings["Preferences"][2]["Preference"]["Mode"] = 1
            settings["Preferences"][3]["Preference"]["Mode"] = 5
        findings = self.findings(self.changed_profile(change))
        self.assertEqual([f["code"] for f in findings], ["wrong-value"])
        self.assertIn('"AuthLibrary" is "5"', findings[0]["text"])

    def test_other_formats_have_no_places_but_the_same_findings(self):
        def change(settings):
            settings["Plugins"][0]["Plugin"]["UnloadPluginArray"] = "PelixNone.dylib;"
        with open(self.path(self.changed_profile(change)), "rb") as file:
            profile = plistlib.load(file)
        name = self.write("binary.mobileconfig", plistlib.dumps(profile, fmt=plistlib.FMT_BINARY))
        self.assertEqual([(f["code"], f["line"]) for f in self.findings(name)], [("unknown-plugin", None)])

    def test_an_identifier_that_looks_like_another_is_found(self):
        self.made("profile", "--product", "editor", "--output", "a", "--identifier", "org.ex\u0430mple")
        self.assertEqual(self.codes("a"), ["look-alike"])


class Projects(LintTest):
    PROJECT = """version: 1
product: editor
output: dist/${variant}
identity: {prefix: org.example}
settings:
  config: base.xml
variants:
  open:
    set:
      strLoginDomain: blacklist
      strLoginDomainList: ["@a.example"]
    outputs: {document: {}}
  sound:
    outputs: {document: {}}
"""

    def test_the_settings_of_each_variant_are_judged_where_they_stand(self):
        self.document("", name="base.xml")
        finding, = self.findings(self.write("pct-project.yaml", self.PROJECT))
        self.assertEqual((finding["code"], finding["line"]), ("ignored-domains", 11))
        self.assertTrue(finding["text"].startswith('variant "open": '), finding)

    def test_what_a_document_says_is_told_where_it_is_named(self):
        self.document(plugins("PelixNone.dylib") + preferences("<x/>"), name="base.xml")
        self.assertEqual(self.codes(self.write("p.yml", self.PROJECT)), ["ignored-domains"])
        self.document(ribbon(everything_hidden(self)), name="base.xml")
        codes = {(f["code"], f["line"]) for f in self.findings("p.yml")}
        self.assertEqual(codes, {("ignored-domains", 11), ("hidden-ribbon", 6)})

    def test_what_is_wrong_with_the_project_has_its_place(self):
        for line, content in ((2, "version: 1\nproduct: edtor\n"), (1, "version: &a 1\n"), (1, '{"version": 1}')):
            name = self.write("pct-project.json" if content[0] == "{" else "p.yaml", content)
            finding, = self.findings(name)
            self.assertEqual((finding["code"], finding["line"]), ("unreadable", line), finding)
            self.assertGreaterEqual(finding["column"], 1)


class Defaults(LintTest):
    def test_have_no_finding(self):
        for product in PRODUCTS:
            self.made("config", "new", "--product", product, "--output", product + ".xml")
            self.profile(product + ".mobileconfig", product=product)
            shown = self.pct("show", "--json", product + ".xml").stdout
            self.write(product + ".json", shown)
            names = [product + end for end in (".xml", ".mobileconfig", ".json")]
            result = self.pct("lint", *names)
            self.assertEqual((result.returncode, result.stdout, result.stderr), (0, b"", b""))

    def test_neither_has_what_pct_makes_of_each_choice(self):
        """Every value in words, hidden commands, each as document and as profile."""
        named = json.loads(self.pct("config", "names", "--product", "editor", "--json").stdout)["settings"]
        for setting in named:
            for value in setting["values"]:
                option = "%s=%s" % (setting["name"], value["word"])
                self.made("config", "new", "--product", "editor", "--output", "a.xml", "--force", "--set", option,
                          "--hide-command", "Ribbon_Page_View", "--quick-access", "Ribbon_Action_MenuBar_Save")
                self.made("profile", "--product", "editor", "--output", "a", "--force", "--config", "a.xml")
                self.write("a.json", self.pct("show", "--json", "a.xml").stdout)
                self.assertEqual(self.findings("a.xml", "a", "a.json"), [], option)


class Answers(LintTest):
    def test_the_exit_code_counts_errors_and_warnings(self):
        fine = self.document("", name="fine.xml")
        wrong = self.document(preferences("<Preference Text='AuthLibrary' Mode='9'/>"), name="wrong.xml")
        noted = self.document(types("version:1|.zip:1|.zip:1"), name="noted.xml")
        self.assertEqual(self.pct("lint", fine).returncode, 0)
        self.assertEqual(self.pct("lint", noted, fine).returncode, 0)
        self.assertEqual(self.pct("lint", fine, wrong).returncode, 1)
        result = self.pct("lint", "missing.xml", wrong)
        self.assertEqual((result.returncode, result.stdout.count(b"\n")), (2, 1))
        self.assertEqual(result.stderr.count(b"missing.xml: does not exist; give "), 1)
        self.assertEqual(self.pct("lint").returncode, 2)
        self.assertEqual(self.pct("lint", "--json", "--sarif", fine).returncode, 2)

    def test_json_without_a_product_needs_one(self):
        name = self.write("part.json", '{"bHideMyApps": true}')
        self.assertEqual(self.codes(name), ["unreadable"])
        for product, code in (("editor", 0), ("reader", 1)):
            self.assertEqual(self.pct("lint", "--product", product, name).returncode, code)

    def test_what_comes_from_a_file_cannot_steer_a_terminal(self):
        name = self.document(preferences("<Preference Text='\u202e'/>"))
        self.assertNotIn("\u202e", self.pct("lint", name).stdout.decode())


class Sarif(LintTest):
    """Judged by the facts of the format that services read, written down here."""

    def log(self, *files):
        result = self.pct("lint", "--sarif", *files)
        return json.loads(result.stdout)

    def test_has_the_required_shape(self):
        import jsonschema
        with open(os.path.join(os.path.dirname(os.path.abspath(__file__)), "sarif-facts.json"), encoding="utf-8") as file:
            schema = json.load(file)
        wrong = self.document(preferences("<Preference Text='AuthLibrary' Mode='9'/>"))
        log = self.log(wrong, self.write("b.json", "{"), "missing.xml")
        jsonschema.Draft7Validator.check_schema(schema)
        jsonschema.Draft7Validator(schema).validate(log)
        run = log["runs"][0]
        for result in run["results"]:
            self.assertEqual(run["tool"]["driver"]["rules"][result["ruleIndex"]]["id"], result["ruleId"])
        self.assertEqual([result["ruleId"] for result in run["results"]], ["wrong-value", "unreadable"])
        self.assertFalse(run["invocations"][0]["executionSuccessful"])
        for broken in ({}, {**log, "version": "2.0.0"}, {**log, "runs": [{"results": []}]}):
            self.assertFalse(jsonschema.Draft7Validator(schema).is_valid(broken))

    def test_addresses_are_relative_to_the_folder_of_the_run(self):
        os.mkdir(self.path("a b"))
        inside = self.document("<x/>", name=os.path.join("a b", "\u00e4.xml"))
        outside = os.path.join(self.folder, inside)
        uris = [result["locations"][0]["physicalLocation"]["artifactLocation"]["uri"]
                for result in self.log("./" + inside, outside)["runs"][0]["results"]]
        self.assertEqual(uris, [urllib.parse.quote(inside), "file://" + urllib.parse.quote(outside)])

    def test_regions_are_the_places(self):
        log = self.log(self.document(preferences("\n  <a/>")))
        self.assertEqual(log["runs"][0]["results"][0]["locations"][0]["physicalLocation"]["region"],
                         {"startLine": 4, "startColumn": 3})


class Costs(LintTest):
    """The cheapest of three runs: what else runs on the machine makes one dearer, never cheaper."""
    UNIT = 1 if sys.platform == "darwin" else 1024

    def cheapest(self, name, enough):
        """What the last run printed, the processor time in seconds and the memory in MiB. One run that is cheap enough will do."""
        seconds, memory = [], []
        for _ in range(3):
            with subprocess.Popen([PCT, "lint", name], cwd=self.folder, stdout=subprocess.PIPE,
                                  stderr=subprocess.STDOUT) as process:
                out = process.stdout.read()
                _, status, usage = os.wait4(process.pid, 0)
                process.returncode = os.WEXITSTATUS(status)
            self.assertEqual(process.returncode, 1, out[:1000])
            seconds.append(usage.ru_utime + usage.ru_stime)
            memory.append(usage.ru_maxrss * self.UNIT / 1024 / 1024)
            if seconds[-1] < enough:
                break
        return out, min(seconds), min(memory)

    def test_hostile_files_are_refused_for_little(self):
        root = b"<PelixPDFEditor>%s</PelixPDFEditor>"
        keys = b",".join(b'"%d":0' % key for key in range(1000 * 1000))
        hostile = {
            "a million keys": b"{" + keys + b"}",
            "a million settings": b'{"settings":{' + keys + b"}}",
            "deep JSON": b'{"a":' + b"[" * 1000000,
            "NUL in JSON": b'{"a":\0}',
            "a key twice": b'{"nAuthLibrary":0,"nAuthLibrary":1}',
            "half of a pair": b'{"product":"\\ud800"}',
            "a million elements": root % (b"<a/>" * 1000000),
            "deep XML": root % (b"<a>" * 1000000),
            "entities": b"<!DOCTYPE a [<!ENTITY b 'c'>]>" + root % b"&b;",
            "NUL in XML": root % b"\0",
            "attributes": root % (b"<a " + b" ".join(b"a%d=''" % at for at in range(300)) + b"/>"),
            "too large": root % (b" " * 33 * 1024 * 1024),
        }
        for name, content in hostile.items():
            with self.subTest(name):
                before = sorted([*os.listdir(self.folder), "hostile"])
                out, seconds, mebibytes = self.cheapest(self.write("hostile", content), costs.seconds(1))
                self.assertTrue(out.count(b"\n") == 1 and out.endswith(b" [unreadable]\n"), out)
                self.assertEqual(sorted(os.listdir(self.folder)), sorted(set(before)))
                self.assertLess(seconds, costs.seconds(1))
                self.assertLess(mebibytes, costs.mebibytes(256))

    def test_files_full_of_flaws_are_looked_at_for_little(self):
        item = "<Preference Text='StartPge' Mode='7'/>"
        costly = {
            "unread items": preferences(item * 60000),
            "repeated items": preferences(item.replace("StartPge", "StartPage") * 60000),
            "ribbon": ribbon("<Category Text='Ribbon_Page_Veiw' Hidden='2' x=''/>" * 45000),
            "quick-access bar": bar("<control action='Ribbon_Action_MenuBar_Sve' page='' group=''/>" * 45000),
            "plug-ins": plugins("Pelix.dylib;" * 400000),
            "domains": preferences(DOMAINS % ("1", "@a-b.c;" * 700000)),
        }
        for name, sections in costly.items():
            with self.subTest(name):
                out, seconds, mebibytes = self.cheapest(self.document(sections), costs.seconds(5))
                self.assertIn(b" [more-findings]\n", out)
                self.assertLess(seconds, costs.seconds(5))
                self.assertLess(mebibytes, costs.mebibytes(512))


if __name__ == "__main__":
    unittest.main(argv=sys.argv[:1])
