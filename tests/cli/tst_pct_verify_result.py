#!/usr/bin/env python3
# SPDX-License-Identifier: Apache-2.0
"""What `pct verify --vendor` says of results as they are and altered in any place.

tst_pct_verify_result.py PCT STAND-INS SAMPLE-PACKAGE
"""
import functools
import hashlib
import json
import os
import resource
import shutil
import stat
import subprocess
import sys
import tempfile
import unittest
import zlib

sys.path.insert(0, os.path.join(os.path.dirname(os.path.abspath(__file__)), "../support"))
import altered_package as ap  # noqa: E402
import costs  # noqa: E402
import signed_package as sp  # noqa: E402

PCT, STAND_INS, SAMPLE = [os.path.abspath(path) for path in sys.argv[1:4]]
COMPONENT = "Pelix_PDF_Editor.pkg"
SCRIPTS = COMPONENT + "/Scripts"
PAYLOAD = COMPONENT + "/Payload"
SIGN_IN = b"iManage10/loginMethod/UseOAuth2:1;"
TEAM = "ABCDE12345"


def run_pct(*arguments, **environment):
    return subprocess.run([PCT, *arguments], capture_output=True, check=False, text=True,
                          env={**os.environ, "PCT_HOSTTOOLS": STAND_INS, **environment})


def build(vendor, output, settings, *options, **environment):
    document = output + ".json"
    sp.write(document, json.dumps({"product": "editor", "settings": settings}).encode())
    return run_pct("build", "--product", "editor", "--input", vendor, "--output", output, "--config", document, *options,
                   **environment)


class Samples:
    """Packages that all tests share, because a build takes longer than most of them."""

    def __init__(self, folder):
        self.folder = folder
        self.vendor = self.with_second_component()
        self.plain = self.built("plain.pkg", {"bSetAsDefaultViewer": False})
        self.full = self.built("full.pkg", {"bSetAsDefaultViewer": True, "bUseOAuth2": True})

    def with_second_component(self):
        package = ap.Altered(SAMPLE)
        package.add("Extra.pkg", kind="directory", mode="0755")
        package.add("Extra.pkg/Scripts", b"")
        package.set_scripts("Extra.pkg/Scripts", [ap.Member(".", 0o40755, b""),
                                                  ap.Member("./postinstall", 0o100755, b"#!/bin/sh\nexit 0\n")])
        return package.write(os.path.join(self.folder, "vendor.pkg"))

    def built(self, name, settings):
        output = os.path.join(self.folder, name)
        result = build(self.vendor, output, settings)
        assert result.returncode == 0, result.stderr
        return output


@functools.cache
def samples():
    folder = tempfile.TemporaryDirectory()
    unittest.addModuleCleanup(folder.cleanup)
    return Samples(folder.name)


class ResultTest(sp.FolderTest):
    def verify(self, result, *options, vendor=None):
        """Exit code, what the JSON says of the result, and the messages."""
        done = run_pct("verify", result, "--vendor", vendor or samples().vendor, "--json", "--quiet", *options,
                       TMPDIR=self.folder)
        self.assertEqual([name for name in os.listdir(self.folder) if name.startswith("pct-")], [])
        return done.returncode, json.loads(done.stdout)["result"], done.stderr

    def assert_holds(self, result, *options, **further):
        code, verdict, errors = self.verify(result, *options, **further)
        self.assertEqual((code, errors), (0, ""), verdict)
        self.assertEqual((verdict["holds"], verdict["findings"]), (True, []))
        return verdict

    def assert_found(self, result, code, entry, *options, **further):
        """That just this is found."""
        exit_code, verdict, errors = self.verify(result, *options, **further)
        found = [(one["code"], one["entry"]) for one in verdict["findings"]]
        self.assertEqual(found, [(code, entry)], verdict)
        self.assertEqual((exit_code, errors.count("\n"), verdict["holds"]), (1, 1, False), errors)
        self.assertIn("is not what a build makes", errors)
        self.assertIn(entry or "the package", errors)
        return verdict["findings"][0]["text"]

    def altered(self, change, source=None):
        package = ap.Altered(source or samples().full)
        change(package)
        return package.write(self.path("altered.pkg"))

    def with_script(self, name, change, source=None, scripts=SCRIPTS):
        return self.altered(lambda package: package.change_script(scripts, name, change), source)

    def with_content(self, name, old, new, **further):
        def change(member):
            self.assertIn(old, member.content)
            member.content = member.content.replace(old, new, 1)
        return self.with_script(name, change, **further)


class GoodResults(ResultTest):
    def test_what_a_build_makes(self):
        verdict = self.assert_holds(samples().plain)
        self.assertEqual(verdict["entries"], len(ap.Altered(samples().vendor).entries()))
        self.assertGreater(verdict["members"], 6)
        self.assert_holds(samples().full)
        self.assert_holds(samples().full, "--deep")

    def test_the_settings_that_were_asked_for(self):
        self.assert_holds(samples().full, "--config", samples().full + ".json")
        self.assert_holds(samples().plain, "--config", samples().plain + ".json")

    def test_another_form_of_the_same_package(self):
        self.assert_holds(self.altered(lambda _: None))

    def test_a_document_that_says_1_does_not_tell_whether_the_entry_was_added(self):
        self.assert_holds(self.with_content("postinstall", SIGN_IN, b""))

    def test_one_other_owner_of_everything(self):
        def change(package):
            for _, entry in package.entries():
                for name in ("uid", "gid"):
                    entry.find(name).text = "501"
        self.assert_holds(self.altered(change))

    def test_another_duti_that_is_given(self):
        sp.write(self.path("duti"), b"#!/bin/sh\nexit 7\n")

        def change(member):
            member.content = b"#!/bin/sh\nexit 7\n"
        self.assert_holds(self.with_script("duti", change), "--duti", self.path("duti"))

    def test_a_signed_result(self):
        identity = sp.authorities().issue("Signer", self.path("signer.pem"), "--team", TEAM)
        sp.sign_by_openssl(self.altered(lambda _: None), self.path("signed.pkg"), identity)
        self.assert_holds(self.path("signed.pkg"), "--trust-anchors", sp.authorities().root, "--require-team", TEAM)

    def test_a_vendor_without_checksums_in_its_table(self):
        vendor = ap.Altered(samples().vendor)
        vendor.write(self.path("vendor.pkg"))
        sp.rewrite_table(self.path("vendor.pkg"), self.path("bare.pkg"),
                         lambda text: text.replace(b"extracted-checksum", b"other-checksum"))
        self.assert_holds(samples().full, vendor=self.path("bare.pkg"))

    def test_a_vendor_with_checksums_of_another_kind(self):
        ap.Altered(samples().vendor).write(self.path("vendor.pkg"), "sha256")
        self.assert_holds(samples().full, vendor=self.path("vendor.pkg"))

        def change(package):
            package.contents["Distribution"] = package.contents["Distribution"].replace(b'min="10.13"', b'min="10.12"')
        self.assert_found(self.altered(change), "entry-bytes", "Distribution", vendor=self.path("vendor.pkg"))

    def test_text_says_the_same(self):
        good = run_pct("verify", samples().full, "--vendor", samples().vendor)
        self.assertEqual(good.returncode, 0, good.stderr)
        self.assertRegex(good.stdout, r"\n  holds +yes")
        bad = run_pct("verify", self.altered(lambda package: package.remove("Resources/License.txt")), "--vendor",
                      samples().vendor)
        self.assertRegex(bad.stdout, r"differs +Resources/License.txt is missing")


class Alterations(ResultTest):
    def flip(self, entry):
        """One byte of an entry, and nothing of the table."""
        package = sp.Package(self.altered(lambda _: None))
        data = dict(ap.Altered(self.path("altered.pkg")).entries())[entry]
        place = next(element for path, element in self.paths_of(package) if path == entry)
        self.assertIsNotNone(data)
        content = bytearray(package.bytes)
        content[package.heap_start + int(place.find("data").findtext("offset")) + 5] ^= 1
        sp.write(self.path("altered.pkg"), bytes(content))
        return self.path("altered.pkg")

    @staticmethod
    def paths_of(package):
        def visit(folder, prefix):
            for entry in folder.findall("file"):
                yield prefix + entry.findtext("name"), entry
                yield from visit(entry, prefix + entry.findtext("name") + "/")
        return visit(package.toc, "")

    def test_a_byte_of_the_payload_alone(self):
        self.assert_found(self.flip(PAYLOAD), "entry-bytes", PAYLOAD)

    def test_a_byte_of_the_payload_with_its_checksums(self):
        def change(package):
            content = bytearray(package.contents[PAYLOAD])
            content[100] ^= 1
            package.contents[PAYLOAD] = bytes(content)
        self.assert_found(self.altered(change), "entry-bytes", PAYLOAD)
        self.assert_found(self.altered(change), "entry-bytes", PAYLOAD, "--deep")

    def test_the_size_of_the_payload(self):
        def change(package):
            package.contents[PAYLOAD] += b"\0"
        self.assert_found(self.altered(change), "entry-size", PAYLOAD)

    def test_the_distribution(self):
        def change(package):
            old = package.contents["Distribution"]
            package.contents["Distribution"] = old.replace(b'min="10.13"', b'min="10.12"')
            self.assertNotEqual(old, package.contents["Distribution"])
        self.assert_found(self.altered(change), "entry-bytes", "Distribution")

    def test_a_removed_entry(self):
        self.assert_found(self.altered(lambda package: package.remove("Resources/License.txt")), "entry-removed",
                          "Resources/License.txt")

    def test_an_added_file(self):
        self.assert_found(self.altered(lambda package: package.add("Resources/more", b"more")), "entry-added",
                          "Resources/more")

    def test_an_added_component(self):
        def change(package):
            package.add("More.pkg", kind="directory", mode="0755")
            package.add("More.pkg/Scripts", b"")
            package.set_scripts("More.pkg/Scripts", [ap.Member(".", 0o40755, b"")])
        code, verdict, _ = self.verify(self.altered(change))
        self.assertEqual((code, [(one["code"], one["entry"]) for one in verdict["findings"]]),
                         (1, [("entry-added", "More.pkg"), ("entry-added", "More.pkg/Scripts")]))

    def test_a_mode(self):
        self.assert_found(self.altered(lambda package: package.set(PAYLOAD, "mode", "04755")), "entry-mode", PAYLOAD)

    def test_an_owner(self):
        self.assert_found(self.altered(lambda package: package.set(PAYLOAD, "uid", "501")), "entry-owner", PAYLOAD)
        self.assert_found(self.altered(lambda package: package.set(PAYLOAD, "gid", "80")), "entry-owner", PAYLOAD)

    def test_a_type(self):
        def change(package):
            package.remove("Resources/License.txt")
            package.add("Resources/License.txt", kind="directory", mode="0644")
        self.assert_found(self.altered(change), "entry-type", "Resources/License.txt")

    def test_an_entry_that_stands_twice(self):
        def change(package):
            package.add(PAYLOAD, package.contents[PAYLOAD])
        self.assert_found(self.altered(change), "entry-twice", PAYLOAD)

    def test_a_changed_line_of_a_script(self):
        self.assert_found(self.with_content("postinstall", b"exit 0\n", b"exit 1\n"), "member-bytes", SCRIPTS + "/postinstall")
        self.assert_found(self.with_content("preinstall", b"exit 0\n", b"exit 0 \n"), "member-bytes", SCRIPTS + "/preinstall")

    def test_a_patch_that_was_not_made(self):
        def change(package):
            members = package.scripts(SCRIPTS)
            vendors = ap.Altered(samples().vendor).script(SCRIPTS, "preinstall").content
            next(one for one in members if one.name == "./preinstall").content = vendors
            package.set_scripts(SCRIPTS, members)
        self.assert_found(self.altered(change), "member-bytes", SCRIPTS + "/preinstall")

    def test_the_sign_in_twice(self):
        self.assert_found(self.with_content("postinstall", SIGN_IN, SIGN_IN + SIGN_IN), "member-bytes", SCRIPTS + "/postinstall")

    def test_the_sign_in_that_the_document_does_not_ask_for(self):
        self.assert_found(self.with_content("postinstall", b'plistValue="', b'plistValue="' + SIGN_IN, source=samples().plain),
                          "member-bytes", SCRIPTS + "/postinstall")

    def test_the_mode_of_a_script(self):
        def change(member):
            member.mode |= stat.S_ISUID
        self.assert_found(self.with_script("preinstall", change), "member-mode", SCRIPTS + "/preinstall")

    def test_the_owner_of_a_script(self):
        def change(member):
            member.uid = 501
        self.assert_found(self.with_script("preinstall", change), "member-owner", SCRIPTS + "/preinstall")

    def test_a_link_in_the_place_of_a_script_s_neighbour(self):
        def change(member):
            member.mode, member.content = 0o120755, b"postinstall"
        self.assert_found(self.with_script("legacy-plugins.txt", change), "member-type", SCRIPTS + "/legacy-plugins.txt")

    def test_a_link_that_leads_elsewhere(self):
        def change(member):
            member.content = b"postinstall"
        self.assert_found(self.with_script("obsolete-plugins.txt", change), "member-bytes", SCRIPTS + "/obsolete-plugins.txt")

    def with_members(self, change, source=None):
        return self.altered(lambda package: package.set_scripts(SCRIPTS, change(package.scripts(SCRIPTS))), source)

    def test_an_added_and_a_removed_script(self):
        self.assert_found(self.with_members(lambda members: [*members, ap.Member("./preupgrade", 0o100755, b"#!/bin/sh\n")]),
                          "member-added", SCRIPTS + "/preupgrade")
        self.assert_found(self.with_members(lambda members: [one for one in members if one.name != "./duti"]),
                          "member-removed", SCRIPTS + "/duti")

    def test_duti_where_the_document_does_not_ask_for_it(self):
        duti = ap.Altered(samples().full).script(SCRIPTS, "duti")
        self.assert_found(self.with_members(lambda members: [*members, duti], samples().plain), "member-added",
                          SCRIPTS + "/duti")

    def test_another_duti(self):
        self.assertIn("SHA-256", self.assert_found(self.with_content("duti", b"#!", b"#! "), "viewer-tool", SCRIPTS + "/duti"))

    def test_a_script_of_another_component(self):
        self.assert_found(self.with_content("postinstall", b"exit 0", b"exit 1", scripts="Extra.pkg/Scripts"), "member-bytes",
                          "Extra.pkg/Scripts/postinstall")

    def test_another_document(self):
        wanted = ["--config", samples().full + ".json"]

        changed = self.with_content("ProfStore.xml", b'Mode="1" Text="StartPage"', b'Mode="0" Text="StartPage"')
        self.assertIn("bShowStartPage", self.assert_found(changed, "document-setting", SCRIPTS + "/ProfStore.xml", *wanted))
        code, verdict, _ = self.verify(samples().plain, *wanted)
        self.assertEqual(code, 1)
        self.assertIn("document-setting", [one["code"] for one in verdict["findings"]])

    def test_documents_that_are_none(self):
        for content, found in ((b"", "document-missing"), (b"<a>", "document-unreadable")):
            def change(member, content=content):
                member.content = content
            code, verdict, _ = self.verify(self.with_script("ProfStore.xml", change))
            self.assertEqual((code, verdict["findings"][0]["code"]), (1, found))

    def test_what_nobody_reads_in_the_document(self):
        self.assert_found(self.with_content("ProfStore.xml", b"<Preferences>", b'<Preferences><Preference Text="Other" Mode="1"/>'),
                          "document-lint", SCRIPTS + "/ProfStore.xml")

    def test_a_document_of_another_version(self):
        self.assert_found(self.with_content("ProfStore.xml", b'version="13.1.2"', b'version="13.1.3"'),
                          "document-version", SCRIPTS + "/ProfStore.xml")

    def test_a_signature_with_another_chain(self):
        stranger = sp.make_identity("Developer ID Installer: Example Org (%s)" % TEAM, self.path("stranger.pem"), "--use",
                                    "packages", "--team", TEAM)
        sp.sign_by_openssl(self.altered(lambda _: None), self.path("signed.pkg"), stranger)
        code, verdict, errors = self.verify(self.path("signed.pkg"), "--trust-anchors", sp.authorities().root)
        self.assertEqual((code, verdict["holds"]), (1, True))
        self.assertIn("ends neither in Apple's root", errors)

    def test_the_vendor_s_package_itself(self):
        code, verdict, _ = self.verify(samples().vendor)
        self.assertEqual((code, verdict["findings"][0]["code"]), (1, "document-missing"))

    def test_a_vendor_whose_table_lies(self):
        package = ap.Altered(samples().vendor)
        package.write(self.path("vendor.pkg"))
        table = sp.Package(self.path("vendor.pkg"))
        content = bytearray(table.bytes)
        place = next(element for path, element in self.paths_of(table) if path == PAYLOAD)
        content[table.heap_start + int(place.find("data").findtext("offset"))] ^= 1
        sp.write(self.path("vendor.pkg"), bytes(content))
        self.assert_holds(samples().full, vendor=self.path("vendor.pkg"))
        self.assert_found(samples().full, "entry-bytes", PAYLOAD, "--deep", vendor=self.path("vendor.pkg"))


class Hostile(ResultTest):
    def verify(self, result, *options, vendor=None):
        before = resource.getrusage(resource.RUSAGE_CHILDREN)
        answer = super().verify(result, *options, vendor=vendor)
        after = resource.getrusage(resource.RUSAGE_CHILDREN)
        self.assertLess(after.ru_utime + after.ru_stime - before.ru_utime - before.ru_stime, costs.seconds(5))
        self.assertLess(after.ru_maxrss, costs.mebibytes(256) * 1024)
        return answer

    def test_many_entries_on_the_same_bytes(self):
        self.altered(lambda package: [package.add("Resources/more%d" % number, b"") for number in range(1000)])
        sp.rewrite_table(self.path("altered.pkg"), self.path("overlap.pkg"), lambda text: text.replace(
            b"<length>0</length>", b"<length>3000</length>"))
        code, verdict, _ = self.verify(self.path("overlap.pkg"))
        self.assertEqual(code, 1)
        self.assertIn("entry-added", [one["code"] for one in verdict["findings"]])

    def test_scripts_that_unpack_to_more_than_anybody_needs(self):
        # Piece by piece: what this process takes would count as taken by the next one that it starts.
        packer = zlib.compressobj(1, zlib.DEFLATED, 31)
        packed = packer.compress(b"070707%06o%06o%06o%06o%06o%06o%06o%011o%06o%011oa\0"
                                 % (0, 1, 0o100644, 0, 0, 1, 0, 0, 2, 600 << 20))
        packed += b"".join(packer.compress(b"\0" * (1 << 20)) for _ in range(600)) + packer.flush()

        def change(package):
            package.contents[SCRIPTS] = packed
        self.assert_found(self.altered(change), "scripts-unreadable", SCRIPTS)

    def test_archives_that_are_none(self):
        for content in (b"", b"\x1f\x8b\x08\0", b"070707" + b"9" * 100, b"plain"):
            def change(package, content=content):
                package.contents[SCRIPTS] = content
            self.assert_found(self.altered(change), "scripts-unreadable", SCRIPTS)

    def test_what_is_no_package(self):
        sp.write(self.path("plain.pkg"), b"plain\n" * 100)
        for result, vendor in ((self.path("plain.pkg"), samples().vendor), (samples().full, self.path("plain.pkg")),
                               (samples().full, self.path("missing.pkg"))):
            done = run_pct("verify", result, "--vendor", vendor)
            self.assertEqual((done.returncode, done.stderr.count("\n")), (1, 1), done.stderr)

    def test_options_that_need_the_vendor_s_package(self):
        for option in (["--deep"], ["--config", "a.xml"], ["--duti", "duti"]):
            done = run_pct("verify", samples().full, *option)
            self.assertEqual((done.returncode, done.stderr.count("\n")), (2, 1), done.stderr)
            self.assertIn("needs --vendor", done.stderr)


class VerifiedBuilds(ResultTest):
    folders = ("tools",)

    def with_tampering_flattener(self, line):
        """The stand-ins, with a pkgutil that changes what it flattens."""
        for name in os.listdir(STAND_INS):
            os.symlink(os.path.join(STAND_INS, name), self.path("tools/" + name))
        os.unlink(self.path("tools/pkgutil"))
        sp.write(self.path("tools/pkgutil"), ('#!/bin/sh\nif [ "$1" = --flatten ]; then %s; fi\nexec "%s/pkgutil" "$@"\n'
                                              % (line, STAND_INS)).encode())
        os.chmod(self.path("tools/pkgutil"), 0o755)

    def test_a_build_that_is_verified(self):
        result = build(samples().vendor, self.path("built.pkg"), {"bSetAsDefaultViewer": True}, "--verify", "--json")
        self.assertEqual((result.returncode, json.loads(result.stdout)["verified"]), (0, True), result.stderr)
        self.assert_holds(self.path("built.pkg"))

    def test_a_result_that_does_not_hold_takes_no_place(self):
        self.with_tampering_flattener('echo more >> "$2/Distribution"')
        result = build(samples().vendor, self.path("built.pkg"), {}, "--verify", PCT_HOSTTOOLS=self.path("tools"))
        self.assertEqual((result.returncode, result.stderr.count("\n")), (1, 1), result.stderr)
        self.assertIn("Distribution has", result.stderr)
        self.assertFalse(os.path.exists(self.path("built.pkg")))
        shutil.rmtree(self.path("tools"))


class Provenance(ResultTest):
    EPOCH = "1767225600"

    def build(self, name, **environment):
        result = build(samples().vendor, self.path(name), {"bShowStartPage": False}, "--provenance",
                       self.path(name + ".provenance"), SOURCE_DATE_EPOCH=self.EPOCH, **environment)
        self.assertEqual(result.returncode, 0, result.stderr)
        with open(self.path(name + ".provenance"), "rb") as file:
            return file.read()

    def sha256(self, path):
        with open(path, "rb") as file:
            return {"sha256": hashlib.sha256(file.read()).hexdigest()}

    def test_what_is_stated(self):
        statement = json.loads(self.build("built.pkg"))
        self.assertEqual((statement["_type"], statement["predicateType"]),
                         ("https://in-toto.io/Statement/v1", "https://slsa.dev/provenance/v1"))
        self.assertEqual(statement["subject"], [{"name": "built.pkg", "digest": self.sha256(self.path("built.pkg"))}])
        definition = statement["predicate"]["buildDefinition"]
        self.assertEqual(definition["externalParameters"], {"product": "editor"})
        self.assertEqual(definition["internalParameters"], {"SOURCE_DATE_EPOCH": int(self.EPOCH)})
        self.assertEqual(definition["resolvedDependencies"], [
            {"name": "vendor", "uri": "file:vendor.pkg", "digest": self.sha256(samples().vendor)},
            {"name": "settings", "uri": "file:built.pkg.json", "digest": self.sha256(self.path("built.pkg.json"))}])
        run = statement["predicate"]["runDetails"]
        version = run_pct("--version").stdout.split()[1]
        self.assertEqual((bool(run["builder"]["id"]), run["builder"]["version"]), (True, {"pct": version}))
        document = ap.Altered(self.path("built.pkg")).script(SCRIPTS, "ProfStore.xml").content
        self.assertEqual(run["byproducts"], [{"name": "ProfStore.xml",
                                              "digest": {"sha256": hashlib.sha256(document).hexdigest()}}])

    def test_equal_builds_state_the_same(self):
        first = self.build("built.pkg")
        for name in ("built.pkg", "built.pkg.provenance", "built.pkg.json"):
            os.unlink(self.path(name))
        os.mkdir(self.path("tmp"))
        self.assertEqual(self.build("built.pkg", TMPDIR=self.path("tmp")), first)
        self.assertNotIn(self.folder.encode(), first)

    def test_what_agrees_with_it(self):
        self.build("built.pkg")
        options = ["--provenance", self.path("built.pkg.provenance"), "--config", self.path("built.pkg.json")]
        self.assert_holds(self.path("built.pkg"), *options)
        alone = run_pct("verify", self.path("built.pkg"), "--quiet", "--provenance", self.path("built.pkg.provenance"))
        self.assertEqual((alone.returncode, alone.stderr), (0, ""))

    def test_what_does_not(self):
        statement = self.build("built.pkg").decode()
        for old, new, found in ((self.sha256(self.path("built.pkg"))["sha256"], "0" * 64, "provenance-package"),
                                (self.sha256(samples().vendor)["sha256"], "0" * 64, "provenance-vendor"),
                                (self.sha256(self.path("built.pkg.json"))["sha256"], "0" * 64, "provenance-settings"),
                                ("slsa.dev/provenance/v1", "slsa.dev/provenance/v0", "provenance-type"),
                                ('"editor"', '"reader"', "provenance-parameter"),
                                ('"product"', '"more": 1, "product"', "provenance-parameter"),
                                ("{", "", "provenance-unreadable")):
            self.assertIn(old, statement)
            sp.write(self.path("other"), statement.replace(old, new, 1).encode())
            self.assert_found(self.path("built.pkg"), found, "", "--provenance", self.path("other"), "--config",
                              self.path("built.pkg.json"))

    def test_a_statement_that_cannot_be_read(self):
        sp.write(self.path("huge"), b" " * (2 << 20))
        for path, words in (("missing", "does not exist"), ("huge", "too large")):
            done = run_pct("verify", samples().full, "--provenance", self.path(path))
            self.assertEqual((done.returncode, done.stderr.count("\n")), (1, 1), done.stderr)
            self.assertIn(words, done.stderr)

    def test_a_place_that_is_taken(self):
        sp.write(self.path("built.pkg.provenance"), b"mine")
        result = build(samples().vendor, self.path("built.pkg"), {}, "--provenance", self.path("built.pkg.provenance"))
        self.assertEqual((result.returncode, result.stderr.count("\n")), (1, 1), result.stderr)
        self.assertFalse(os.path.exists(self.path("built.pkg")))


if __name__ == "__main__":
    unittest.main(argv=sys.argv[:1])
