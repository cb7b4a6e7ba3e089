# SPDX-License-Identifier: Apache-2.0
"""A staged install runs wherever it is moved to, and describes itself soundly to a desktop."""

import os
import pathlib
import plistlib
import shutil
import tempfile
import unittest
import xml.etree.ElementTree

from surroundings import BUILD, BUILD_TYPE, ROOT, SAMPLE, VERSION, environment, run


class Install(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        folder = tempfile.TemporaryDirectory()
        cls.addClassCleanup(folder.cleanup)
        cls.work = pathlib.Path(folder.name)
        run("cmake", "--install", BUILD, "--prefix", cls.work / "staged")
        cls.prefix = cls.work / "moved/elsewhere"
        cls.prefix.parent.mkdir()
        (cls.work / "staged").rename(cls.prefix)
        (cls.work / "home").mkdir()
        cls.environment = environment(HOME=str(cls.work / "home"))

    def pct(self, *arguments):
        return run(self.prefix / "bin/pct", *arguments, env=self.environment)

    def one(self, pattern):
        (found,) = self.prefix.glob(pattern)
        return found

    def test_pct_builds_a_package_with_the_installed_stand_ins(self):
        package = self.work / "customized.pkg"
        self.pct("build", "--product", "editor", "--input", SAMPLE, "--output", package)
        members = run("bsdtar", "-tf", package).split()
        self.assertTrue(any("Scripts" in member for member in members), members)
        self.assertIn("strUnloadPluginArray", self.pct("show", package))

    def test_pct_makes_a_profile(self):
        profile = self.work / "Reader.mobileconfig"
        self.pct("profile", "--product", "reader", "--output", profile)
        self.assertEqual(plistlib.loads(profile.read_bytes())["PayloadType"], "Configuration")

    def test_the_window_opens_and_ends_when_its_question_is_cancelled(self):
        script = """
            timeout 240 "$0" & window=$(timeout 200 xdotool search --sync --onlyvisible --name "^Pelix Customization Tool$" | head -n 1)
            xdotool getwindowname "$window"
            xdotool keydown --window "$window" Escape
            wait $!
            echo "status $?" """
        output = run(ROOT / "scripts/with-display.sh", "sh", "-c", script, self.prefix / "bin/pelix-customization-tool",
                     env=self.environment)
        self.assertEqual(output.splitlines(), ["Pelix Customization Tool", "status 1"])

    def test_the_window_finds_its_help_folder(self):
        program = (self.prefix / "bin/pelix-customization-tool").resolve()
        resources = program.parent.parent / "Resources"
        self.assertEqual(pathlib.Path(os.path.realpath(resources)), self.prefix.resolve() / "share/pelix-customization-tool")

    def test_all_help_pages_are_installed(self):
        sources = ROOT / "resources/help/en-US"
        made = [pathlib.Path("search-index.js")]
        wanted = sorted([path.relative_to(sources) for path in sources.rglob("*") if path.is_file()] + made)
        installed = self.prefix / "share/pelix-customization-tool/pcw/en-US"
        self.assertEqual(sorted(path.relative_to(installed) for path in installed.rglob("*")
                                if path.is_file() and not path.is_symlink()), wanted)
        self.assertIn(pathlib.Path("Welcome.html"), wanted)

    def test_links_are_relative_and_lead_somewhere(self):
        links = [path for path in self.prefix.rglob("*") if path.is_symlink()]
        self.assertEqual({link.name for link in links}, {"pct", "pelix-customization-tool", "Resources"})
        for link in links:
            with self.subTest(link.name):
                self.assertFalse(os.path.isabs(os.readlink(link)))
                self.assertIn(self.prefix.resolve(), pathlib.Path(os.path.realpath(link)).parents)

    @unittest.skipUnless(BUILD_TYPE == "Release", "what helps to debug names the sources")
    def test_programs_name_no_folder_of_the_build(self):
        for program in self.one("lib*/**/bin").parent.rglob("*"):
            if program.is_file():
                with self.subTest(program.name):
                    self.assertNotIn(os.fsencode(ROOT), program.read_bytes())

    @unittest.skipUnless(shutil.which("desktop-file-validate"), "desktop-file-utils is not installed")
    def test_the_desktop_entry_is_valid(self):
        entry = self.one("share/applications/*.desktop")
        self.assertEqual(run("desktop-file-validate", entry), "")

    @unittest.skipUnless(shutil.which("appstreamcli"), "appstream is not installed")
    def test_the_description_for_software_centres_is_valid(self):
        run("appstreamcli", "validate", "--no-net", self.one("share/metainfo/*.metainfo.xml"))

    def test_the_description_names_the_desktop_entry(self):
        component = xml.etree.ElementTree.parse(self.one("share/metainfo/*.metainfo.xml"))
        self.assertEqual(component.findtext("launchable"), self.one("share/applications/*.desktop").name)

    def test_the_description_tells_of_page_release_and_screenshots_in_german_too(self):
        component = xml.etree.ElementTree.parse(self.one("share/metainfo/*.metainfo.xml"))
        language = "{http://www.w3.org/XML/1998/namespace}lang"
        self.assertRegex(component.findtext("url[@type='homepage']"), r"^https://[^@]+$")
        (release,) = component.findall("releases/release")
        self.assertEqual(release.get("version"), VERSION)
        self.assertRegex(release.get("date"), r"^20\d\d-\d\d-\d\d$")
        for image in component.findall("screenshots/screenshot/image"):
            with self.subTest(image.text):
                _, path = image.text.split(f"/raw/v{VERSION}/")
                self.assertTrue((ROOT / path).is_file())
        for texts in ("summary", "description/p", "description/ul/li", "screenshots/screenshot/caption"):
            with self.subTest(texts):
                german = [text for text in component.findall(texts) if text.get(language) == "de"]
                self.assertEqual(2 * len(german), len(component.findall(texts)))
                self.assertTrue(german)

    def test_icons_have_the_size_that_their_folder_says(self):
        icons = self.prefix / "share/icons/hicolor"
        sizes = {path.parent.parent.name: path for path in icons.rglob("*.png")}
        self.assertEqual(set(sizes), {f"{size}x{size}" for size in (16, 32, 48, 64, 128, 256, 512)})
        for size, path in sizes.items():
            with self.subTest(size):
                header = path.read_bytes()[16:24]
                width, height = int.from_bytes(header[:4], "big"), int.from_bytes(header[4:], "big")
                self.assertEqual(f"{width}x{height}", size)
        self.assertTrue((icons / "scalable/apps/pelix-customization-tool.svg").is_file())

    def test_the_type_of_profiles_is_known_after_the_install(self):
        if not shutil.which("update-mime-database"):
            self.skipTest("shared-mime-info is not installed")
        database = self.prefix / "share/mime"
        run("update-mime-database", database)
        self.assertIn("*.mobileconfig", (database / "globs").read_text())


if __name__ == "__main__":
    unittest.main()
