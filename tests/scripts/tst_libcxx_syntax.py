# SPDX-License-Identifier: Apache-2.0
"""The check with a Mac's C++ library is worth something only if it finds what a Mac's compiler would find."""
import json
import os
import subprocess
import tempfile
import unittest

SCRIPT = os.path.join(os.path.dirname(os.path.abspath(__file__)), "../../scripts/check-libcxx-syntax.py")


class LibcxxSyntax(unittest.TestCase):
    def check(self, source, options=""):
        """How the check of a build ends that compiles one file."""
        with tempfile.TemporaryDirectory() as folder:
            path = os.path.join(folder, "source.cpp")
            with open(path, "w", encoding="utf-8") as file:
                file.write(source)
            command = "c++ -std=c++17 -Wall %s -o source.o -c %s" % (options, path)
            with open(os.path.join(folder, "compile_commands.json"), "w", encoding="utf-8") as file:
                json.dump([{"directory": folder, "file": path, "command": command}], file)
            return self.run_script(folder, path)

    def run_script(self, *arguments):
        result = subprocess.run([SCRIPT, *arguments], capture_output=True, text=True, check=False)
        if result.returncode == 77:
            self.skipTest(result.stderr)
        return result

    def assert_found(self, result, message):
        self.assertEqual(result.returncode, 1, result.stderr)
        self.assertIn(message, result.stderr)

    def test_a_right_file_passes(self):
        result = self.check("#include <vector>\nstd::vector<int> numbers() { return {SIZE}; }\n", "-DSIZE=3")
        self.assertEqual(result.returncode, 0, result.stderr)

    def test_what_only_the_other_library_has_is_found(self):
        self.assert_found(self.check("#include <ext/stdio_filebuf.h>\n"), "ext/stdio_filebuf.h")

    def test_a_warning_is_found(self):
        self.assert_found(self.check("int one() { int unused; return 1; }\n"), "unused")

    def test_what_qt_calls_deprecated_is_not_there(self):
        guard = "#define QT_VERSION 0x060400\n#if QT_DISABLE_DEPRECATED_UP_TO >= 0x060400\n#error hidden\n#endif\n"
        self.assert_found(self.check(guard), "hidden")

    def test_a_file_that_is_not_built_is_named(self):
        with tempfile.TemporaryDirectory() as folder:
            with open(os.path.join(folder, "compile_commands.json"), "w", encoding="utf-8") as file:
                file.write("[]")
            self.assert_found(self.run_script(folder, "nowhere.cpp"), "nowhere.cpp")

    def test_wrong_usage_is_told(self):
        result = self.run_script("/nonexistent")
        self.assertEqual(result.returncode, 2)
        self.assertIn("usage:", result.stderr)


if __name__ == "__main__":
    unittest.main()
