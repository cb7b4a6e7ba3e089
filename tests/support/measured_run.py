# SPDX-License-Identifier: Apache-2.0
"""Programs that are run within limits of processor time and memory.

A process begins with the peak of memory of the one that it was forked from. That is a small one here: this file, run as
a program of its own, which writes exit code, seconds and mebibytes to standard error behind what the measured one wrote.
"""
import json
import os
import resource
import subprocess
import sys

SECONDS = 5 * int(os.environ.get("PCT_COST_FACTOR", "1"))
MEBIBYTES = 256 * int(os.environ.get("PCT_COST_FACTOR", "1"))


class Run:
    """How a program ended; processor time and memory are those of all that it started, too."""

    def __init__(self, arguments, environment):
        done = subprocess.run([sys.executable, "-I", "-S", __file__, *arguments], stdin=subprocess.DEVNULL, check=True,
                              capture_output=True, env=environment)
        self.stdout = done.stdout.decode(errors="replace")
        self.stderr, usage = done.stderr.decode(errors="replace").rsplit("\n", 1)
        self.returncode, self.seconds, self.mebibytes = json.loads(usage)

    def is_within_limits(self):
        return self.seconds <= SECONDS and self.mebibytes <= MEBIBYTES


def run(arguments, environment=None, before=lambda: None):
    """The first of three runs within the limits, or the last: other load makes runs dearer, never cheaper."""
    for _ in range(3):
        before()
        result = Run(arguments, environment)
        if result.is_within_limits():
            break
    return result


def measure(arguments):
    code = subprocess.run(arguments, check=False).returncode
    used = resource.getrusage(resource.RUSAGE_CHILDREN)
    usage = json.dumps([code, used.ru_utime + used.ru_stime, used.ru_maxrss / 1024])
    os.write(2, b"\n" + usage.encode())


if __name__ == "__main__":
    measure(sys.argv[1:])
