# SPDX-License-Identifier: Apache-2.0
"""A sample of what try_faults.py tries; and it finds out who does not keep the promises."""

import os
import pathlib
import subprocess
import tempfile
import unittest

TRY = pathlib.Path(__file__).resolve().with_name("try_faults.py")


def try_faults(*arguments, **environment):
    return subprocess.run([TRY, *arguments], capture_output=True, encoding="utf-8", env={**os.environ, **environment})


class Faults(unittest.TestCase):
    def test_a_failing_file_operation_leaves_nothing_half_done(self):
        result = try_faults("--sample", "5")
        print(result.stdout)
        self.assertEqual(result.returncode, 0, result.stdout + result.stderr)

    def test_a_command_that_writes_in_place_is_found_out(self):
        with tempfile.TemporaryDirectory() as folder:
            command = pathlib.Path(folder) / "pkgutil"
            command.write_text('#!/bin/sh\nmkdir "$3" && cp "$2" "$3/one" && cp "$2" "$3/two"\n')
            command.chmod(0o755)
            result = try_faults("--every", "--kinds", "error,kill", "expand", PCT_HOSTTOOLS=folder)
        self.assertEqual(result.returncode, 1, result.stdout + result.stderr)
        self.assertIn("expanded is half-written", result.stdout)


if __name__ == "__main__":
    unittest.main()
