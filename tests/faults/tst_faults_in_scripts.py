# SPDX-License-Identifier: Apache-2.0
"""Each operation on the scripts of the package, one after another: a sample of all would miss most of them."""

import unittest

from tst_faults import try_faults


class FaultsInScripts(unittest.TestCase):
    def test_scripts_that_cannot_be_edited_make_no_package(self):
        result = try_faults("--every", "--kinds", "error", "--place", "Editor.pkg/Scripts/", "build")
        print(result.stdout)
        self.assertEqual(result.returncode, 0, result.stdout + result.stderr)
        self.assertRegex(result.stdout, "error at [1-9]")


if __name__ == "__main__":
    unittest.main()
