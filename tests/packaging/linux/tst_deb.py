# SPDX-License-Identifier: Apache-2.0
"""The Debian packages hold what they should, and packing the same programs twice gives the same bytes.

That two compilations in different folders give the same programs is checked by
scripts/check-reproducible-deb.sh, because it takes minutes."""

import os
import pathlib
import re
import shutil
import tempfile
import unittest

from surroundings import BUILD, VERSION, run

PCT = "pelix-pct"
WINDOW = "pelix-customization-tool"


def pack(folder, **environment):
    """Packs into the folder as of November 14, 2023, and returns the packages by name."""
    run("cpack", "-G", "DEB", "-B", folder, cwd=BUILD, umask=0o022,
        env={**os.environ, "SOURCE_DATE_EPOCH": "1700000000", **environment})
    return {path.name.split("_")[0]: path for path in pathlib.Path(folder).glob("*.deb")}


@unittest.skipUnless(shutil.which("dpkg-shlibdeps"), "dpkg-dev is not installed")
class DebianPackages(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        folder = tempfile.TemporaryDirectory()
        cls.addClassCleanup(folder.cleanup)
        cls.work = pathlib.Path(folder.name)
        cls.packages = pack(cls.work / "first")

    def field(self, package, name):
        return run("dpkg-deb", "--field", self.packages[package], name).strip()

    def entries(self, package):
        """The lines of the table of contents by path, folders without their slash."""
        lines = run("dpkg-deb", "--contents", self.packages[package]).splitlines()
        return {line.split(maxsplit=5)[5].split(" -> ")[0].rstrip("/").lstrip("."): line for line in lines}

    def names(self, package):
        """Files and links, with the folder of libraries under one name for all machines."""
        return {re.sub(r"^/usr/lib/(?:[^/]*-linux-[^/]*/)?pelix", "/usr/lib/pelix", path)
                for path, line in self.entries(package).items() if not line.startswith("d")}

    def test_there_is_one_for_servers_and_one_for_the_window(self):
        self.assertEqual(set(self.packages), {PCT, WINDOW})

    def test_pct_comes_with_stand_ins_manual_and_completions(self):
        root = "/usr/lib/pelix-customization-tool"
        stand_ins = {f"{root}/libexec/pct/{name}" for name in
                     ("ditto", "installer", "pkgutil", "productsign", "profiles", "security", "sed", "system_profiler",
                      "xar")}
        self.assertEqual(self.names(PCT) - self.documents(PCT), stand_ins | {
            "/usr/bin/pct", f"{root}/bin/pct", "/usr/share/man/man1/pct.1.gz",
            "/usr/share/bash-completion/completions/pct", "/usr/share/zsh/vendor-completions/_pct",
            "/usr/share/fish/vendor_completions.d/pct.fish"})

    def test_the_window_comes_with_what_a_desktop_wants(self):
        names = self.names(WINDOW)
        for wanted in ("bin/pelix-customization-tool", "lib/pelix-customization-tool/bin/pelix-customization-tool",
                       "lib/pelix-customization-tool/Resources", "share/applications/pelix-customization-tool.desktop",
                       "share/man/man1/pelix-customization-tool.1.gz",
                       "share/mime/packages/pelix-customization-tool.xml",
                       "share/icons/hicolor/scalable/apps/pelix-customization-tool.svg"):
            self.assertIn(f"/usr/{wanted}", names)

    def documents(self, package):
        doc = f"/usr/share/doc/{package}"
        return {f"{doc}/copyright", f"{doc}/changelog.gz", f"{doc}/changelog.Debian.gz",
                f"/usr/share/lintian/overrides/{package}"}

    def test_both_have_their_documents(self):
        for package in self.packages:
            with self.subTest(package):
                self.assertLessEqual(self.documents(package), self.names(package))

    def test_no_path_is_in_both(self):
        self.assertEqual(self.names(PCT) & self.names(WINDOW), set())

    def test_everything_belongs_to_root_with_usual_permissions(self):
        for package in self.packages:
            for path, line in self.entries(package).items():
                with self.subTest(path):
                    mode, owner = line.split()[:2]
                    self.assertEqual(owner, "root/root")
                    program = "/libexec/" in path or re.search(r"pelix-customization-tool/bin/", path)
                    usual = {"d": "drwxr-xr-x", "l": "lrwxrwxrwx"}.get(
                        mode[0], "-rwxr-xr-x" if program else "-rw-r--r--")
                    self.assertEqual(mode, usual)

    def test_a_server_needs_no_library_of_windows(self):
        self.assertNotRegex(self.field(PCT, "Depends"), r"(?i)qt\d?(gui|widgets|webengine)")
        self.assertRegex(self.field(PCT, "Depends"), r"libqt\dcore")

    def test_the_window_needs_pct_of_the_same_version(self):
        self.assertEqual(self.field(PCT, "Version"), f"{VERSION}-1")
        self.assertIn(f"pelix-pct (= {VERSION}-1)", self.field(WINDOW, "Depends"))
        self.assertRegex(self.field(WINDOW, "Depends"), r"libqt\dwidgets")

    def test_programs_are_stripped(self):
        for package, path in self.packages.items():
            tree = self.work / package
            run("dpkg-deb", "--extract", path, tree)
            for program in [found for found in tree.rglob("*") if "bin/" in str(found) and found.is_file()]:
                with self.subTest(program.name):
                    self.assertNotIn(".symtab", run("readelf", "--section-headers", "--wide", program.resolve()))

    def test_checksums_fit_the_files(self):
        for package, path in self.packages.items():
            tree = self.work / f"{package}-raw"
            run("dpkg-deb", "--raw-extract", path, tree)
            run("md5sum", "--check", "--strict", "DEBIAN/md5sums", cwd=tree)

    def test_the_same_programs_give_the_same_packages(self):
        again = pack(self.work / "a/longer/second", TZ="Pacific/Auckland", LC_ALL="C")
        for package, path in self.packages.items():
            with self.subTest(package):
                self.assertEqual(path.read_bytes(), again[package].read_bytes())

    def test_the_date_is_the_one_asked_for(self):
        for path in self.packages.values():
            dates = {line.split()[3] for line in run("dpkg-deb", "--contents", path).splitlines()}
            self.assertEqual(dates, {"2023-11-14"})

    @unittest.skipUnless(shutil.which("lintian"), "lintian is not installed")
    def test_lintian_finds_nothing(self):
        self.assertEqual(run("lintian", "--allow-root", "--fail-on", "error,warning", *self.packages.values()), "")


if __name__ == "__main__":
    unittest.main()
