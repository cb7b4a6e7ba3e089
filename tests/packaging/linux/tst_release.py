# SPDX-License-Identifier: Apache-2.0
"""What a tag publishes, made of small files in the place of images and packages."""

import hashlib
import json
import os
import pathlib
import re
import shutil
import subprocess
import tempfile
import unittest

from surroundings import ROOT, VERSION, environment, run

HOMEPAGE = "https://example.invalid/o/r"
IMAGES = {f"Pelix-Customization-Tool-{VERSION}-macOS15-{processor}.dmg": processor for processor in ("arm64", "x86_64")}
PACKAGES = (f"pelix-pct_{VERSION}-1_amd64.deb", f"pelix-customization-tool_{VERSION}-1_amd64.deb")


class Release(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.sources = pathlib.Path(folder.name) / "sources"
        for part in ("release", "homebrew"):
            shutil.copytree(ROOT / "packaging" / part, self.sources / "packaging" / part)
        self.write_changelog("2026-12-24")
        self.folder = pathlib.Path(folder.name) / "packages"
        self.folder.mkdir()
        for name in (*IMAGES, *PACKAGES):
            (self.folder / name).write_text(f"the bytes of {name}\n")
        (self.folder / "materials-debian.txt").write_text("pkg:deb/debian/libexpat1@2.5.0-1+deb12u1\n")
        for processor in IMAGES.values():
            (self.folder / f"materials-macos-{processor}.txt").write_text(f"pkg:brew/qtbase@6.11.0_{processor}\n")

    def write_changelog(self, date):
        (self.sources / "CHANGELOG.md").write_text(
            f"# Changelog\n\n## [{VERSION}] - {date}\n\n- What is new.\n\n## [0.9.0] - 2025-01-01\n\n- Older.\n")

    def complete(self, tag=f"v{VERSION}"):
        return subprocess.run([self.sources / "packaging/release/complete.sh", tag, HOMEPAGE, self.folder],
                              capture_output=True, encoding="utf-8", env=environment(SOURCE_DATE_EPOCH="1700000000"))

    def released(self, name):
        return (self.folder / "release" / name).read_bytes()

    def bill(self):
        return json.loads(self.released(f"Pelix-Customization-Tool-{VERSION}.spdx.json"))

    def test_it_holds_images_packages_cask_bill_and_checksums(self):
        self.assertEqual(self.complete().stderr, "")
        self.assertEqual(sorted(os.listdir(self.folder / "release")),
                         sorted((*IMAGES, *PACKAGES, "SHA256SUMS", "pelix-customization-tool.rb",
                                 f"Pelix-Customization-Tool-{VERSION}.spdx.json")))

    def test_the_checksums_are_those_of_all_other_files(self):
        self.complete()
        listed = dict(reversed(line.split("  ")) for line in self.released("SHA256SUMS").decode().splitlines())
        self.assertEqual(set(listed), set(os.listdir(self.folder / "release")) - {"SHA256SUMS"})
        for name, digest in listed.items():
            self.assertEqual(digest, hashlib.sha256(self.released(name)).hexdigest())
        self.assertEqual((self.folder / "SHA256SUMS").read_bytes(), self.released("SHA256SUMS"))

    def test_the_notes_are_the_changelogs_words_about_the_version(self):
        self.complete()
        self.assertEqual((self.folder / "notes.md").read_text().strip(), "- What is new.")

    def test_the_cask_names_the_images_with_their_checksums(self):
        self.complete()
        cask = self.released("pelix-customization-tool.rb").decode()
        for name, processor in IMAGES.items():
            word = "arm" if processor == "arm64" else "intel"
            digest = hashlib.sha256(self.released(name)).hexdigest()
            self.assertRegex(cask, rf'{word}: +"{digest}"')
            url = re.search(r'url "(.*)"', cask)[1].replace("#{version}", VERSION).replace("#{arch}", processor)
            self.assertEqual(url, f"{HOMEPAGE}/releases/download/v{VERSION}/{name}")
        self.assertIn('depends_on macos: ">= :sequoia"', cask)
        self.assertNotIn("@", cask)

    def test_the_cask_links_what_the_bundle_holds(self):
        cask = (ROOT / "packaging/homebrew/pelix-customization-tool.rb.in").read_text()
        linked = re.findall(r'^  (\w+) "#\{contents\}/(.*)"$', cask, re.MULTILINE)
        self.assertEqual({kind for kind, _ in linked},
                         {"binary", "manpage", "bash_completion", "fish_completion", "zsh_completion"})
        bundle = (ROOT / "tests/packaging/tst_Bundle.cpp").read_text()
        for _, path in linked:
            self.assertIn(f'QTest::newRow("{path}")', bundle)

    @unittest.skipUnless(shutil.which("ruby"), "ruby is not installed")
    def test_the_cask_is_ruby(self):
        self.complete()
        run("ruby", "-c", self.folder / "release/pelix-customization-tool.rb")

    def test_the_bill_describes_every_file_and_what_is_in_it(self):
        self.complete()
        bill = self.bill()
        packages = {package["SPDXID"]: package for package in bill["packages"]}
        self.assertEqual(len(packages), len(bill["packages"]))
        self.assertEqual((bill["spdxVersion"], bill["dataLicense"], bill["SPDXID"]),
                         ("SPDX-2.3", "CC0-1.0", "SPDXRef-DOCUMENT"))
        self.assertEqual(bill["creationInfo"]["created"], "2023-11-14T22:13:20Z")
        for package in packages.values():
            self.assertRegex(package["SPDXID"], r"^SPDXRef-[A-Za-z0-9.-]+$")
            self.assertTrue({"name", "downloadLocation"} <= package.keys())
        checksums = {package["packageFileName"]: package["checksums"] for package in packages.values()
                     if "packageFileName" in package}
        self.assertEqual(set(checksums), {*IMAGES, *PACKAGES, "pelix-customization-tool.rb"})
        for name, entries in checksums.items():
            self.assertEqual(entries, [{"algorithm": "SHA256",
                                        "checksumValue": hashlib.sha256(self.released(name)).hexdigest()}])
        related = {(packages.get(one["spdxElementId"], {}).get("name"), one["relationshipType"],
                    packages[one["relatedSpdxElement"]]["name"] + " " + packages[one["relatedSpdxElement"]]["versionInfo"])
                   for one in bill["relationships"]}
        self.assertIn((None, "DESCRIBES", f"Pelix Customization Tool {VERSION}"), related)
        for name, processor in IMAGES.items():
            self.assertIn((name, "CONTAINS", f"qtbase 6.11.0_{processor}"), related)
        for name in PACKAGES:
            self.assertIn((name, "DEPENDS_ON", "libexpat1 2.5.0-1+deb12u1"), related)
        self.assertEqual(sum(kind == "CONTAINS" for _, kind, _ in related), 2)

    def test_the_same_files_give_the_same_bill(self):
        self.complete()
        first = self.bill()
        shutil.rmtree(self.folder / "release")
        self.complete()
        self.assertEqual(self.bill(), first)

    def test_a_version_without_a_date_is_no_release(self):
        self.write_changelog("Unreleased")
        result = self.complete()
        self.assertEqual(result.returncode, 1)
        self.assertIn("CHANGELOG.md has no heading with the date", result.stderr)
        self.assertFalse((self.folder / "release").exists())

    def test_a_missing_package_stops_it(self):
        (self.folder / PACKAGES[0]).unlink()
        result = self.complete()
        self.assertEqual(result.returncode, 1)
        self.assertIn("0 files instead of one are like pelix-pct_", result.stderr)

    def test_a_tag_is_v_and_a_version(self):
        self.assertEqual(self.complete(VERSION).returncode, 1)

    def test_images_for_different_systems_are_refused(self):
        name = next(iter(IMAGES))
        (self.folder / name).rename(self.folder / name.replace("macOS15", "macOS14"))
        result = self.complete()
        self.assertEqual(result.returncode, 1)
        self.assertIn("the images are for macOS 14 and macOS 15", result.stderr)

    def test_a_line_that_is_no_package_url_stops_it(self):
        (self.folder / "materials-debian.txt").write_text("libexpat1\n")
        result = self.complete()
        self.assertEqual(result.returncode, 1)
        self.assertIn('"libexpat1" is no package URL', result.stderr)

    def test_the_lists_of_materials_are_package_urls(self):
        with tempfile.TemporaryDirectory() as folder:
            package = pathlib.Path(folder) / "a.deb"
            control = pathlib.Path(folder) / "a/DEBIAN/control"
            control.parent.mkdir(parents=True)
            control.write_text("Package: a\nVersion: 1\nArchitecture: all\nMaintainer: a <a@example.invalid>\n"
                               "Depends: libc6 (>= 2), dpkg | no-such-package, no-such-package (= 1)\nDescription: a\n")
            run("dpkg-deb", "--build", "--root-owner-group", control.parent.parent, package)
            lines = run(ROOT / "packaging/release/list-debian.sh", package).splitlines()
        versions = {name: run("dpkg-query", "--show", "--showformat", "${Version}", name) for name in ("dpkg", "libc6")}
        self.assertEqual(lines, [f"pkg:deb/debian/{name}@{version}" for name, version in versions.items()])


if __name__ == "__main__":
    unittest.main()
