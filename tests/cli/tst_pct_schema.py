#!/usr/bin/env python3
# SPDX-License-Identifier: Apache-2.0
"""What `pct schema` writes, judged by other readers and by what forms made of it would send.

tst_pct_schema.py PCT PROPERTY-LIST-GRAMMAR
"""
import datetime
import json
import os
import plistlib
import re
import subprocess
import sys
import tempfile
import unittest

import jsonschema

PCT, GRAMMAR = [os.path.abspath(path) for path in sys.argv[1:3]]
DOMAINS = {"editor": "com.pelix-software.Pelix.PDF.Editor", "reader": "com.pelix-software.Pelix.PDF.Reader"}

# One choice for each setting, in words and as a form sends it. What the Reader lacks has what is written for it.
WORDS = {
    "reader": ["bShowStartPage=false", "nMIPCheckPolicyOnDocSave=Enabled", "nAuthLibrary=ADAL",
               "bDisableOpenFileAll=true", "nFileAttachmentsMode=Disabled", "strBuiltInPermList=.zip:1;.app:3",
               "bSupportExtSSO=true", "strUnloadPluginArray=JavaScript"],
}
WORDS["editor"] = WORDS["reader"] + ["bRemoveAdvertise=true", "bHideMyApps=true", "bUseOAuth2=true",
                                     "strLoginDomain=blacklist", "strLoginDomainList=@a.example;@b.example"]
SENT = {
    "editor": [("StartPage", {"Mode": "0"}), ("Advertise", {"Disable": "1"}), ("bMIPCheckPolicyOnDocSave", {"Mode": 1}),
               ("AuthLibrary", {"Mode": "1"}),
               ("DefaultLaunchAttachmentPerms", {"Mode": "1", "DisableOpenSaveFileAttach": "2",
                                                 "BuiltInPermList": "version:1|.zip:1|.app:3"}),
               ("HideMyApps", {"Mode": "1"}), ("iManage10loginMethod", {"UseOAuth2": "1"}),
               ("LoginDomain", {"String": "2"}), ("LoginDomainList", {"String": "@a.example;@b.example"}),
               ("SupportExtSSO", {"Mode": "1"})],
}
SENT["reader"] = [(key, {"Advertise": {"Disable": "0"}, "HideMyApps": {"Mode": "0"}, "LoginDomainList": {"String": ""},
                         "iManage10loginMethod": {"UseOAuth2": "0"}}.get(key, fields)) for key, fields in SENT["editor"]]


def form(product):
    """What a form sends: the settings of the domain."""
    return {"Preferences": [{"Preference": {"Text": key, **fields}} for key, fields in SENT[product]],
            "Plugins": [{"Plugin": {"Text": "Plugin", "UnloadPluginArray": "PelixJavaScript.dylib;"}}]}


class SchemaTest(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.folder = folder.name

    def path(self, name):
        return os.path.join(self.folder, name)

    def pct(self, *arguments, **environment):
        return subprocess.run([PCT, *arguments], cwd=self.folder, capture_output=True, check=False,
                              env={**os.environ, **environment})

    def made(self, *arguments, **environment):
        result = self.pct(*arguments, **environment)
        self.assertEqual((result.returncode, result.stderr), (0, b""), arguments)
        return result.stdout

    def schema(self, kind, product, **environment):
        return self.made("schema", "--format", kind, "--product", product, **environment)

    def settings(self, product, options=None):
        """A document with the choices, made by words."""
        options = WORDS[product] if options is None else options
        self.made("config", "new", "--product", product, "--output", "words.xml", "--force", "-q",
                  *[word for option in options for word in ("--set", option)])
        return "words.xml"

    def assert_means_the_same(self, sent, product, options=None):
        """A profile with what a form sends has the settings of the one that pct makes of the words."""
        domain = DOMAINS[product]
        payload = {"PayloadType": domain + ".settings", "PayloadIdentifier": domain, "PayloadUUID": "A", **sent}
        profile = {"PayloadType": "Configuration", "PayloadIdentifier": "org.example", "PayloadUUID": "B",
                   "PayloadVersion": 1, "PayloadContent": [payload]}
        with open(self.path("sent.mobileconfig"), "wb") as file:
            plistlib.dump(profile, file)
        self.made("profile", "--product", product, "--config", self.settings(product, options), "--output",
                  "words.mobileconfig", "--force", "-q")
        self.assertEqual(self.made("diff", "sent.mobileconfig", "words.mobileconfig"), b"")


class Jamf(SchemaTest):
    """Held to what forms of Jamf Pro are known to take."""
    KEYS = {"title", "description", "type", "property_order", "default", "enum", "options", "pattern", "items",
            "properties", "required", "additionalItems", "minItems", "maxItems"}
    TYPES = {"string": str, "integer": int, "array": list, "object": dict}

    def load(self, product):
        return json.loads(self.schema("jamf", product))

    def validator(self, product):
        schema = self.load(product)
        jsonschema.Draft4Validator.check_schema(schema)
        return jsonschema.Draft4Validator(schema)

    def check_property(self, part, where):
        self.assertLessEqual(set(part), self.KEYS, where)
        kind = self.TYPES[part["type"]]
        self.assertTrue(part["title"], where)
        for value in part.get("enum", []) + ([part["default"]] if "default" in part else []):
            self.assertIs(type(value), kind, where)
        if "enum" in part and "default" in part:
            self.assertIn(part["default"], part["enum"], where)
        if "options" in part and "enum" in part:
            self.assertEqual(len(part["options"]["enum_titles"]), len(part["enum"]), where)
        orders = [child["property_order"] for child in part.get("properties", {}).values() if "property_order" in child]
        self.assertEqual(sorted(orders), [5 * (i + 1) for i in range(len(orders))], where)
        for name, child in part.get("properties", {}).items():
            self.check_property(child, where + "/" + name)
        for i, child in enumerate(part.get("items", [])):
            self.check_property(child, where + "/%d" % i)

    def test_only_what_forms_know_is_used(self):
        for product in DOMAINS:
            schema = self.load(product)
            self.assertIn("(%s.settings)" % DOMAINS[product], schema["title"])
            self.check_property(schema, product)

    def test_its_defaults_are_the_default_profile(self):
        for product in DOMAINS:
            schema = self.load(product)
            sent = {name: part["default"] for name, part in schema["properties"].items()}
            self.validator(product).validate(sent)
            self.assert_means_the_same(sent, product, [])

    def test_what_its_form_sends_means_what_the_words_mean(self):
        for product in DOMAINS:
            self.validator(product).validate(form(product))
            self.assert_means_the_same(form(product), product)

    def test_what_the_products_do_not_know_is_refused(self):
        for place, field, value in ((0, "Mode", "2"), (0, "Mode", 1), (0, "Text", "StartPag"), (2, "Mode", "1"),
                                    (4, "BuiltInPermList", "zip"), (4, "DisableOpenSaveFileAttach", "3"),
                                    (8, "String", "example.com")):
            sent = form("editor")
            sent["Preferences"][place]["Preference"][field] = value
            self.assertFalse(self.validator("editor").is_valid(sent), (place, field, value))
        sent = form("reader")
        sent["Plugins"][0]["Plugin"]["UnloadPluginArray"] = "PelixRedaction.dylib;"
        self.assertFalse(self.validator("reader").is_valid(sent))


class Manifest(SchemaTest):
    """Held to what the checks of the collection ask for, written down here as facts."""
    TYPES = {"string": str, "boolean": bool, "integer": int, "array": list, "dictionary": dict,
             "date": datetime.datetime, "data": bytes, "real": float, "float": float}
    NEEDED = {"pfm_title": str, "pfm_domain": str, "pfm_description": str}
    KNOWN = {"pfm_name": str, "pfm_type": str, "pfm_title": str, "pfm_description": str, "pfm_domain": str,
             "pfm_format_version": int, "pfm_version": int, "pfm_unique": bool, "pfm_last_modified": datetime.datetime,
             "pfm_platforms": list, "pfm_targets": list, "pfm_subkeys": list, "pfm_require": str, "pfm_range_list": list,
             "pfm_range_list_titles": list, "pfm_format": str, "pfm_default": None}

    def load(self, product, **environment):
        return plistlib.loads(self.schema("manifest", product, **environment))

    def check_types(self, part, where):
        for key, value in part.items():
            self.assertIn(key, self.KNOWN, where)
            if self.KNOWN[key]:
                self.assertIs(type(value), self.KNOWN[key], where + "/" + key)

    def check_subkey(self, part, where, is_in_array=False):
        self.check_types(part, where)
        self.assertEqual("pfm_name" in part, not is_in_array, where)
        kind = self.TYPES[part["pfm_type"]]
        for value in part.get("pfm_range_list", []) + ([part["pfm_default"]] if "pfm_default" in part else []):
            self.assertIs(type(value), kind, where)
        self.assertIn(part.get("pfm_require", "always"), ("always", "always-nested", "push"))
        if "pfm_range_list_titles" in part:
            self.assertEqual(len(part["pfm_range_list_titles"]), len(part["pfm_range_list"]), where)
        children = part.get("pfm_subkeys", [])
        if part["pfm_type"] == "array":
            self.assertEqual(len(children), 1, where)
        for child in children:
            self.check_subkey(child, "%s/%s" % (where, child.get("pfm_name")), part["pfm_type"] == "array")

    def accepts(self, part, value):
        """Whether a form of this subkey can send the value."""
        if not isinstance(value, self.TYPES[part["pfm_type"]]):
            return False
        if part["pfm_type"] == "array":
            return all(self.accepts(part["pfm_subkeys"][0], one) for one in value)
        if part["pfm_type"] == "dictionary":
            children = {child["pfm_name"]: child for child in part["pfm_subkeys"]}
            needed = {name for name, child in children.items() if child.get("pfm_require") == "always"}
            return needed <= set(value) <= set(children) and all(self.accepts(children[name], one)
                                                                for name, one in value.items())
        return value in part.get("pfm_range_list", [value])

    def test_is_a_property_list_for_other_readers(self):
        with open(self.path("manifest.plist"), "wb") as file:
            file.write(self.schema("manifest", "editor"))
        subprocess.run(["xmllint", "--nonet", "--noout", "--relaxng", GRAMMAR, self.path("manifest.plist")], check=True,
                       capture_output=True)

    def test_has_what_the_collection_asks_for(self):
        for product in DOMAINS:
            root = self.load(product)
            self.check_types(root, product)
            self.assertLessEqual(set(self.NEEDED), set(root))
            self.assertEqual((root["pfm_format_version"], root["pfm_domain"], root["pfm_platforms"]),
                             (1, DOMAINS[product] + ".settings", ["macOS"]))
            self.assertLessEqual(set(root["pfm_targets"]), {"system", "user", "system-managed", "user-managed"})
            names = [child["pfm_name"] for child in root["pfm_subkeys"]]
            self.assertEqual(names, ["PayloadDescription", "PayloadDisplayName", "PayloadIdentifier", "PayloadType",
                                     "PayloadUUID", "PayloadVersion", "PayloadOrganization", "Preferences", "Plugins"])
            keys = dict(zip(names, root["pfm_subkeys"]))
            self.assertEqual(keys["PayloadType"]["pfm_default"], root["pfm_domain"])
            self.assertTrue(re.match(keys["PayloadUUID"]["pfm_format"], "01234567-89AB-4DEF-8123-456789ABCDEF"))
            for child in root["pfm_subkeys"]:
                self.check_subkey(child, product + "/" + child["pfm_name"])

    def sections(self, product):
        return {child["pfm_name"]: child for child in self.load(product)["pfm_subkeys"]
                if not child["pfm_name"].startswith("Payload")}

    def test_its_defaults_are_the_default_profile(self):
        for product in DOMAINS:
            sent = {name: part["pfm_default"] for name, part in self.sections(product).items()}
            for name, part in self.sections(product).items():
                self.assertTrue(self.accepts(part, sent[name]), name)
            self.assert_means_the_same(sent, product, [])

    def test_what_its_form_sends_means_what_the_words_mean(self):
        for product in DOMAINS:
            sent = form(product)
            # All values of an array are of one type here.
            sent["Preferences"][2]["Preference"]["Mode"] = "1"
            for name, part in self.sections(product).items():
                self.assertTrue(self.accepts(part, sent[name]), name)
            self.assert_means_the_same(sent, product)

    def test_what_the_products_do_not_know_is_refused(self):
        preferences = self.sections("editor")["Preferences"]
        for fields in ({"Text": "StartPag"}, {"Mode": "1"}, {"Text": "StartPage", "Mode": "7"},
                       {"Text": "StartPage", "mode": "1"}):
            self.assertFalse(self.accepts(preferences, [{"Preference": fields}]), fields)

    def test_its_date_is_the_asked_one(self):
        moment = self.load("editor", SOURCE_DATE_EPOCH="1700000000")["pfm_last_modified"]
        self.assertEqual(moment, datetime.datetime(2023, 11, 14, 22, 13, 20))
        wrong = self.pct("schema", "--format", "manifest", "--product", "editor", SOURCE_DATE_EPOCH="tomorrow")
        self.assertEqual((wrong.returncode, wrong.stdout, wrong.stderr.count(b"\n")), (1, b"", 1))


class JsonSchema(SchemaTest):
    def validator(self, product):
        schema = json.loads(self.schema("json-schema", product))
        jsonschema.Draft7Validator.check_schema(schema)
        return jsonschema.Draft7Validator(schema)

    def shown(self, *options):
        return json.loads(self.made("show", "--json", *options))

    def test_takes_what_show_prints(self):
        for product in DOMAINS:
            validator = self.validator(product)
            for options in ([], WORDS[product]):
                document = self.settings(product, options)
                self.made("profile", "--product", product, "--config", document, "--output", "p", "--force", "-q")
                for name in (document, "p"):
                    validator.validate(self.shown(name))

    def test_takes_every_value_that_names_lists(self):
        validator = self.validator("editor")
        for setting in json.loads(self.made("config", "names", "--product", "editor", "--json"))["settings"]:
            validator.validate({setting["name"]: setting["default"]})
            for value in setting["values"]:
                sent = {"boolean": value["value"] == "1", "integer": value["value"]}.get(setting["type"], value["value"])
                sent = int(sent) if setting["type"] == "integer" else sent
                validator.validate({"settings": {setting["name"]: sent}})

    def test_what_it_takes_means_what_the_words_mean(self):
        by_hand = {"bShowStartPage": False, "nMIPCheckPolicyOnDocSave": 1, "bMIPCheckPolicySet": True, "nAuthLibrary": 1,
                   "bDisableOpenFileAll": True, "nFileAttachmentsMode": 2,
                   "strBuiltInPermList": "version:1|.zip:1|.app:3", "bSupportExtSSO": True,
                   "strUnloadPluginArray": "PelixJavaScript.dylib;"}
        for product, sent in (("reader", {**by_hand}), ("editor", {
                **by_hand, "bRemoveAdvertise": True, "bHideMyApps": True, "bUseOAuth2": True, "strLoginDomain": "2",
                "strLoginDomainList": "@a.example;@b.example"})):
            for whole in ({"product": product, "settings": sent}, {"product": product, **sent}):
                self.validator(product).validate(whole)
                with open(self.path("sent.json"), "w", encoding="utf-8") as file:
                    json.dump(whole, file)
                for name, config in (("a", "sent.json"), ("b", self.settings(product))):
                    self.made("profile", "--product", product, "--config", config, "--output", name, "--force", "-q")
                self.assertEqual(self.made("diff", "a", "b"), b"")

    def test_refuses_what_pct_refuses(self):
        validator = self.validator("editor")
        for wrong in ({"bShowStartpage": True}, {"bShowStartPage": 1}, {"nAuthLibrary": "1"}, {"nAuthLibrary": 1.5},
                      {"strLoginDomain": 1}, {"elemRibbonCategory": "<a/>"}, {"product": "both"}, {"settings": 3}, [],
                      {"settings": {}, "nAuthLibrary": 1}, {"settings": {"nope": 1}}, {"identity": {"Payload": ""}}):
            with open(self.path("wrong.json"), "w", encoding="utf-8") as file:
                json.dump(wrong, file)
            self.assertFalse(validator.is_valid(wrong), wrong)
            self.assertEqual(self.pct("profile", "--product", "editor", "--config", "wrong.json", "--output",
                                      "x").returncode, 1, wrong)

    def test_refuses_what_lint_finds(self):
        for product, wrong in (("editor", {"nAuthLibrary": 7}), ("editor", {"strLoginDomain": "3"}),
                               ("editor", {"strLoginDomainList": "example.com"}),
                               ("editor", {"strBuiltInPermList": ".zip:1"}),
                               ("editor", {"strUnloadPluginArray": "PelixOCD.dylib;"}),
                               ("reader", {"strUnloadPluginArray": "PelixRedaction.dylib;"}),
                               ("reader", {"bHideMyApps": True})):
            with open(self.path("wrong.json"), "w", encoding="utf-8") as file:
                json.dump({"product": product, **wrong}, file)
            self.assertFalse(self.validator(product).is_valid(wrong), wrong)
            self.assertEqual(self.pct("lint", "wrong.json").returncode, 1, wrong)


class Table(SchemaTest):
    def test_has_a_row_for_each_setting_of_the_product(self):
        for product in DOMAINS:
            lines = self.schema("markdown", product).decode().splitlines()
            rows = [re.split(r"(?<!\\)\|", line)[1:-1] for line in lines if line.startswith("| `")]
            settings = [row for row in rows if len(row) == 6]
            named = json.loads(self.made("config", "names", "--product", product, "--json"))["settings"]
            self.assertEqual([row[0].strip(" `") for row in settings], [setting["name"] for setting in named])
            for row, setting in zip(settings, named):
                self.assertEqual((row[1].strip(), row[2].strip()), (setting["title"], setting["meaning"]))
                for value in setting["values"] if setting["type"] != "list" else []:
                    self.assertIn("`%s`" % value["value"], row[3])
            plugins = [row[0].strip(" `") for row in rows if len(row) == 2]
            self.assertEqual(plugins, [value["value"] for setting in named if setting["name"] == "strUnloadPluginArray"
                                       for value in setting["values"]])


class CommandLine(SchemaTest):
    def test_format_and_product_are_needed(self):
        for arguments in ((), ("--format", "jamf"), ("--product", "editor"), ("--format", "xml", "--product", "editor")):
            result = self.pct("schema", *arguments)
            self.assertEqual((result.returncode, result.stdout, result.stderr.count(b"\n")), (2, b"", 1))


if __name__ == "__main__":
    unittest.main(argv=sys.argv[:1])
