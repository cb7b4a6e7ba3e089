# SPDX-License-Identifier: Apache-2.0
"""The steps of the container file work in a bare root: pct runs there as a user without rights."""

import os
import pathlib
import subprocess
import tempfile
import unittest

from surroundings import BUILD, ROOT, SAMPLE, run

CANNOT_WORK_HERE = 77


class Container(unittest.TestCase):
    def test_pct_checks_and_builds_in_it(self):
        with tempfile.TemporaryDirectory() as folder:
            run("cpack", "-G", "DEB", "-D", "CPACK_COMPONENTS_ALL=pct", "-B", folder, cwd=BUILD, env={**os.environ})
            (package,) = pathlib.Path(folder).glob("pelix-pct_*.deb")
            result = subprocess.run([ROOT / "scripts/try-container.sh", package, SAMPLE],
                                    capture_output=True, encoding="utf-8")
        if result.returncode == CANNOT_WORK_HERE:
            self.skipTest(result.stderr.strip())
        self.assertEqual(result.returncode, 0, result.stdout + result.stderr)
        self.assertTrue(result.stdout.endswith("the container's steps work\n"), result.stdout)


if __name__ == "__main__":
    unittest.main()
