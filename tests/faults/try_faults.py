#!/usr/bin/env python3
# SPDX-License-Identifier: Apache-2.0
"""try_faults.py [--every | --sample COUNT] [--kinds KIND,...] [--place TEXT] [SCENARIO...]

Lets one file operation after another fail in pct and in the commands that it starts, and looks at what is left: no output
is half-written, what lay there before is as it was, and the next run works. Without --every only COUNT operations of each
kind of failure are tried, evenly spread, in each scenario. With --place only those on paths that hold the text count.
Prints a line for each scenario and kind, and each promise that did not hold; the exit status is 1 when there is one.

PCT, PCT_HOSTTOOLS, PCT_FAULTS_LIBRARY and PCT_SAMPLE say where the programs, the library and a vendor's package are."""

import argparse
import hashlib
import os
import pathlib
import re
import shutil
import signal
import struct
import subprocess
import sys
import tempfile

PCT = os.environ["PCT"]
PKGUTIL = os.environ["PCT_HOSTTOOLS"] + "/pkgutil"
LIBRARY = os.environ["PCT_FAULTS_LIBRARY"]
SAMPLE = os.environ["PCT_SAMPLE"]
KINDS = ("error", "full", "short", "kill")
UUID = re.compile(rb"[0-9A-F]{8}(-[0-9A-F]{4}){3}-[0-9A-F]{12}")
OLD = b"what lay there before\n"
DOCUMENT = b"""<?xml version="1.0" encoding="UTF-8"?>
<PelixPDFEditor><Profstore><Preferences><Preference Text="StartPage" Disable="1"/></Preferences></Profstore></PelixPDFEditor>
"""


def digest(path):
    """Of a file, or of everything below a folder; None when there is nothing."""
    if not os.path.lexists(path):
        return None
    if path.is_dir() and not path.is_symlink():
        parts = [f"{entry.relative_to(path)} {digest(entry)}" for entry in sorted(path.rglob("*"))]
        return hashlib.sha256("\n".join(parts).encode()).hexdigest()
    return hashlib.sha256(path.read_bytes()).hexdigest()


class Scenario:
    """A command in a folder of its own, with what it reads and what it writes."""

    inputs = ("vendor.pkg", "settings.xml")
    outputs = ("made.pkg",)
    replaces = False

    def command(self, folder):
        raise NotImplementedError

    def prepare(self, folder):
        shutil.copyfile(SAMPLE, folder / "vendor.pkg")
        (folder / "settings.xml").write_bytes(DOCUMENT)
        if self.replaces:
            for name in self.outputs:
                (folder / name).write_bytes(OLD)


class Build(Scenario):
    outputs = ("made.pkg", "kept.xml")

    def command(self, folder):
        words = [PCT, "build", "--product", "editor", "--input", folder / "vendor.pkg", "--config", folder / "settings.xml",
                 "--output", folder / "made.pkg", "--keep-config", folder / "kept.xml"]
        return words + ["--force"] * self.replaces


class ReplacingBuild(Build):
    replaces = True


class Profile(Scenario):
    outputs = ("made.mobileconfig",)

    def command(self, folder):
        words = [PCT, "profile", "--product", "editor", "--config", folder / "settings.xml",
                 "--identifier", "org.example.faults", "--uuid", "5F0A6D3E-4B9C-4D0E-8A51-0C1B2D3E4F50",
                 "--output", folder / "made.mobileconfig"]
        return words + ["--force"] * self.replaces


class ReplacingProfile(Profile):
    replaces = True


class Expand(Scenario):
    inputs = ("vendor.pkg",)
    outputs = ("expanded",)

    def command(self, folder):
        return [PKGUTIL, "--expand", folder / "vendor.pkg", folder / "expanded"]


class Flatten(Scenario):
    inputs = ("expanded",)

    def prepare(self, folder):
        super().prepare(folder)
        subprocess.run([PKGUTIL, "--expand", folder / "vendor.pkg", folder / "expanded"], check=True)

    def command(self, folder):
        return [PKGUTIL, "--flatten", folder / "expanded", folder / "made.pkg"]


SCENARIOS = {"build": Build(), "replacing-build": ReplacingBuild(), "profile": Profile(),
             "replacing-profile": ReplacingProfile(), "expand": Expand(), "flatten": Flatten()}


class Trial:
    """One scenario, again and again, each time in a new folder."""

    def __init__(self, scenario, place):
        self.scenario = scenario
        self.place = place
        self.old = hashlib.sha256(OLD).hexdigest() if scenario.replaces else None
        with tempfile.TemporaryDirectory() as name:
            self.folder = self.prepared(name)
            result, self.operations = self.run("error", 0)
            if result.returncode != 0:
                raise SystemExit(f"the command fails by itself: {result.stderr}")
            self.complete = self.outputs()

    def prepared(self, name):
        folder = pathlib.Path(name).resolve() / "files"
        folder.mkdir()
        (folder / "tmp").mkdir()
        self.scenario.prepare(folder)
        return folder

    def outputs(self):
        return {name: self.content(self.folder / name) for name in self.scenario.outputs}

    @staticmethod
    def content(path):
        """A profile's payload has a new identity in each run; all the rest counts."""
        if path.suffix == ".mobileconfig" and path.is_file():
            return hashlib.sha256(UUID.sub(b"(a UUID)", path.read_bytes())).hexdigest()
        return digest(path)

    def run(self, kind, at):
        """The result and how many operations there were; none fails when `at` is 0."""
        with tempfile.NamedTemporaryFile() as counter:
            counter.write(struct.pack("i", 0))
            counter.flush()
            environment = {**os.environ, "SOURCE_DATE_EPOCH": "1700000000", "TMPDIR": str(self.folder / "tmp"),
                           "LD_PRELOAD": LIBRARY, "PCT_FAULT_FOLDER": str(self.folder), "PCT_FAULT_PLACE": self.place,
                           "PCT_FAULT_KIND": kind, "PCT_FAULT_AT": str(at), "PCT_FAULT_COUNTER": counter.name}
            result = subprocess.run(self.scenario.command(self.folder), env=environment, capture_output=True,
                                    encoding="utf-8", errors="replace", cwd=self.folder, timeout=60)
            counter.seek(0)
            return result, struct.unpack("i", counter.read(4))[0]

    def broken_promises(self, kind, at):
        """What did not hold when the operation failed, and whether there still was such an operation."""
        with tempfile.TemporaryDirectory() as name:
            self.folder = self.prepared(name)
            before = {name: digest(self.folder / name) for name in self.scenario.inputs}
            result, operations = self.run(kind, at)
            broken = [f"{name} was changed" for name in self.scenario.inputs if digest(self.folder / name) != before[name]]
            broken += self.bad_ends(result, kind) + self.bad_outputs(result)
            return broken + self.bad_next_run(), operations >= at

    @staticmethod
    def bad_ends(result, kind):
        if result.returncode < 0 and not (kind == "kill" and result.returncode == -signal.SIGKILL):
            return [f"it was ended by signal {-result.returncode}"]
        if result.returncode > 0 and not result.stderr.strip():
            return ["it failed without a message"]
        return []

    def bad_outputs(self, result):
        found = self.outputs()
        broken = [f"{name} is half-written" for name, content in found.items()
                  if content not in (self.old, self.complete[name])]
        if result.returncode == 0 and found != self.complete:
            broken.append("it succeeded without its output")
        return broken

    def bad_next_run(self):
        """Without --force an output that was made must go first, as its user would do."""
        if not self.scenario.replaces:
            for name in self.scenario.outputs:
                path = self.folder / name
                shutil.rmtree(path) if path.is_dir() else path.unlink(missing_ok=True)
        result, _ = self.run("error", 0)
        if result.returncode != 0:
            return [f"the next run fails: {result.stderr.strip()}"]
        return [] if self.outputs() == self.complete else ["the next run makes something else"]


def chosen(trial, sample):
    """The operations to try: every one, or as many as asked for, evenly spread."""
    if sample is None:
        return range(1, 1_000_000)
    step = max(1, trial.operations // sample)
    return range(1 + step // 2, trial.operations + 1, step)


def try_scenario(name, kinds, place, sample):
    trial = Trial(SCENARIOS[name], place)
    failures = 0
    for kind in kinds:
        tried = 0
        for at in chosen(trial, sample):
            broken, was_reached = trial.broken_promises(kind, at)
            if not was_reached:
                break
            tried += 1
            failures += len(broken)
            for promise in broken:
                print(f"{name}, {kind} at operation {at}: {promise}", flush=True)
        print(f"{name}: {kind} at {tried} of {trial.operations} operations", flush=True)
    return failures


def main():
    parser = argparse.ArgumentParser(usage=__doc__)
    parser.add_argument("--every", action="store_true")
    parser.add_argument("--sample", type=int, default=6)
    parser.add_argument("--kinds", default=",".join(KINDS))
    parser.add_argument("--place", default="")
    parser.add_argument("scenarios", nargs="*")
    options = parser.parse_args()
    sample = None if options.every else options.sample
    failures = sum(try_scenario(name, options.kinds.split(","), options.place, sample)
                   for name in options.scenarios or SCENARIOS)
    return 1 if failures else 0


if __name__ == "__main__":
    sys.exit(main())
