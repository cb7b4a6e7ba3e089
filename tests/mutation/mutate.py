#!/usr/bin/env python3
# SPDX-License-Identifier: Apache-2.0
"""mutate.py [--count N] [--seed S] [--jobs J] [--folders config,package,profile] [--near] [--only NUMBER,...] WORK

Asks whether the tests would notice a mistake. In a copy of the sources below WORK, conditions are negated, results
turned round, statements dropped and members of the record swapped, N of them drawn by chance. Each lies behind a number
in one build. The tests run once without a mistake and tell which mutants they reach; then each mutant meets the tests
that reach it, the near and quick ones first, until one fails. Tests of programs and windows run for the rest only, and
with --near not at all.

A failure counts when the same test passes without the mutant right afterwards, a test that does not end only when it
then passes well within the limit. tests/mutation/survivors.md lists by hand what no test notices, and why; a survivor
that is not listed makes the run fail. WORK keeps the build and what was reached; results.txt in it has all mutants."""

import argparse
import collections
import concurrent.futures
import functools
import json
import os
import pathlib
import re
import resource
import shutil
import signal
import subprocess
import sys
import tempfile
import threading
import time

sys.dont_write_bytecode = True
import mutations as places

HERE = pathlib.Path(__file__).resolve().parent
ROOT = HERE.parents[1]

# The folders below tests/ whose tests can reach what is mutated, near and far. Tests over other commands run the same
# sources once more.
NEAR = ("config", "package", "profile")
FAR = ("pages", "cli", "app")
LEFT_OUT = {"apple-like"}
GIBIBYTE = 1 << 30

Test = collections.namedtuple("Test", "name folder command environment unset directory")
Outcome = collections.namedtuple("Outcome", "failure ended seconds")


def copy_sources(sources, chosen):
    """The files that git knows as they are now, the mutated ones mutated. What is the same is not touched."""
    by_file = collections.defaultdict(list)
    for mutation in chosen:
        by_file[str(mutation.file)].append(mutation)
    names = subprocess.run(["git", "ls-files", "-z", "--cached", "--others", "--exclude-standard"], cwd=ROOT, check=True,
                           capture_output=True, encoding="utf-8").stdout.split("\0")
    for name in filter(None, names):
        origin, copy = ROOT / name, sources / name
        if not origin.is_file():
            continue
        content = origin.read_bytes()
        if name in by_file:
            content = places.mutated(content.decode(), by_file[name]).encode()
        if not copy.is_file() or copy.read_bytes() != content:
            copy.parent.mkdir(parents=True, exist_ok=True)
            copy.write_bytes(content)
            shutil.copymode(origin, copy)


def configure(sources, folder):
    """As the preset "ci", so that a cache of compilers hits what is not mutated."""
    subprocess.run(["cmake", "--preset", "ci", "-B", folder], cwd=sources, check=True, capture_output=True)


def build(folder, places_of_tests):
    """What the compiler complains about, or nothing."""
    targets = ["hosttools", "pct", *(f"tests/{place}/all" for place in places_of_tests)]
    result = subprocess.run(["ninja", "-C", folder, "-k", "0", *targets], capture_output=True, encoding="utf-8")
    return result.stdout if result.returncode != 0 else ""


def build_mutants(work, folder, count, seed, folders):
    """Builds with as many mutants as wanted; for one that does not compile another is drawn, and it is remembered."""
    memory = work / "not-compiling.json"
    broken = set(json.loads(memory.read_text())) if memory.exists() else set()
    while True:
        candidates = [each for each in places.all_mutations(ROOT, folders) if places.name_of(each) not in broken]
        chosen = places.drawn(candidates, count, seed)
        copy_sources(work / "sources", chosen)
        configure(work / "sources", folder)
        errors = build(folder, NEAR)
        if not errors:
            return chosen
        more = {places.name_of(each) for each in places.not_compiling(chosen, errors)}
        if not more:
            sys.exit(errors[-4000:])
        broken |= more
        memory.write_text(json.dumps(sorted(broken)))


def program_of(test):
    return next(part for part in test.command if "/build/ci/" in part)


def folder_of(graph, node):
    """The folder below tests/ that declares the test, be it through a function that stands elsewhere."""
    while node is not None:
        match = re.search(r"/tests/(.+)/CMakeLists\.txt$", graph["files"][graph["nodes"][node]["file"]])
        if match:
            return match[1]
        node = graph["nodes"][node].get("parent")
    return ""


def tests_in(folder, places_of_tests):
    listed = json.loads(subprocess.run(["ctest", "--show-only=json-v1"], cwd=folder, check=True, capture_output=True).stdout)
    for each in listed["tests"]:
        properties = {item["name"]: item["value"] for item in each["properties"]}
        place = folder_of(listed["backtraceGraph"], each["backtrace"])
        if place.split("/")[0] not in places_of_tests or LEFT_OUT.intersection(properties.get("LABELS", [])):
            continue
        unset = [change.split("=")[0] for change in properties.get("ENVIRONMENT_MODIFICATION", []) if change.endswith("=unset:")]
        environment = dict(pair.split("=", 1) for pair in properties.get("ENVIRONMENT", []))
        yield Test(each["name"], place, each["command"], environment, unset, properties["WORKING_DIRECTORY"])


def stop(process):
    """Ends a test and what it has started; a display gets the time to clean up."""
    for how in (signal.SIGTERM, signal.SIGKILL):
        try:
            os.killpg(process.pid, how)
            process.wait(3)
        except (ProcessLookupError, subprocess.TimeoutExpired):
            pass


def bounded():
    """A mistake may want all the memory or disk that there is."""
    resource.setrlimit(resource.RLIMIT_DATA, (4 * GIBIBYTE, 4 * GIBIBYTE))
    resource.setrlimit(resource.RLIMIT_FSIZE, (GIBIBYTE, GIBIBYTE))


def started(test, temporary, variables):
    environment = {**os.environ, **test.environment, **variables, "TMPDIR": temporary}
    for name in test.unset:
        environment.pop(name, None)
    return subprocess.Popen(test.command, cwd=test.directory, env=environment, stdout=subprocess.PIPE, text=True,
                            stderr=subprocess.STDOUT, errors="replace", start_new_session=True, preexec_fn=bounded)


def watched(process, limit):
    """What a test says of its first failure, at which it is stopped, or how it ends, and whether it ends in time."""
    late = threading.Timer(limit, stop, [process])
    late.start()
    failure = next((line.strip() for line in process.stdout if line.startswith(("FAIL!", "QFATAL"))), "")
    if failure:
        stop(process)
    code = process.wait()
    ended = late.is_alive()
    late.cancel()
    stop(process)
    if code != 0 and not failure:
        failure = f"ended with {code}" if ended else f"not ended after {limit:.0f} s"
    return failure, ended


def run(test, limit, **variables):
    """Runs a test up to its first failure, with a temporary folder that goes with it."""
    start = time.monotonic()
    with tempfile.TemporaryDirectory(prefix="pct-mutant-", ignore_cleanup_errors=True) as temporary:
        failure, ended = watched(started(test, temporary, variables), limit)
    return Outcome(failure, ended, time.monotonic() - start)


class Reach:
    """Which test reaches which mutants, and how long it takes. Kept while the programs are the same."""

    def __init__(self, work, folder):
        self.path = work / "reached.json"
        self.program = folder / "bin/pct"
        self.kept = json.loads(self.path.read_text()) if self.path.exists() else {}

    def stamp(self, test):
        return [pathlib.Path(program).stat().st_mtime_ns for program in (program_of(test), self.program)]

    def learn(self, test):
        if self.kept.get(test.name, {}).get("stamp") == self.stamp(test):
            return
        with tempfile.NamedTemporaryFile(prefix="pct-reached-") as trace:
            outcome = run(test, 400, PCT_MUTANT_TRACE=trace.name)
            numbers = sorted({int(line) for line in trace.read().split()})
        if outcome.failure:
            print(f"{test.name} fails without any mutant and is left out: {outcome.failure}", flush=True)
        self.kept[test.name] = {"stamp": self.stamp(test), "seconds": outcome.seconds,
                                "reached": [] if outcome.failure else numbers}

    def learn_all(self, tests, pool):
        list(pool.map(self.learn, tests))
        self.path.write_text(json.dumps(self.kept))

    def seconds(self, test):
        return self.kept[test.name]["seconds"]

    def tests_for(self, mutation, tests):
        """The quick ones first; a test of another folder may take a fifth of the time of a near one."""
        def cost(test):
            return self.seconds(test) * (1 if test.folder.split("/")[0] == mutation.file.parts[0] else 5)
        return sorted((test for test in tests if mutation.number in self.kept[test.name]["reached"]), key=cost)


def notices(test, mutation, usual_seconds):
    """What the test says about the mutant, or nothing. Without the mutant it must pass here and now."""
    limit = 10 * usual_seconds + 20
    outcome = run(test, limit, PCT_MUTANT=str(mutation.number))
    if not outcome.failure:
        return ""
    check = run(test, limit, PCT_MUTANT="0")
    if check.failure or (not outcome.ended and check.seconds > limit / 3):
        print(f"{test.name} is not to be relied on here: {check.failure or check.seconds}", flush=True)
        return ""
    return f"{test.name}: {outcome.failure}"


def first_notice(reach, tests, mutation):
    reaching = reach.tests_for(mutation, tests)
    found = next(filter(None, (notices(test, mutation, reach.seconds(test)) for test in reaching)), "")
    print(f"{mutation.number}: {places.name_of(mutation)}\n    {mutation.file}:{mutation.line + 1}: "
          + (found or f"not noticed by {len(reaching)} tests"), flush=True)
    return found


def try_all(reach, folder, chosen, reaches, jobs):
    """What is said of each mutant, empty where nothing is."""
    said = dict.fromkeys(chosen, "")
    for places_of_tests in reaches:
        if errors := build(folder, places_of_tests):
            sys.exit(errors[-4000:])
        tests = list(tests_in(folder, places_of_tests))
        left = [mutation for mutation in chosen if not said[mutation]]
        with concurrent.futures.ThreadPoolExecutor(jobs) as pool:
            reach.learn_all(tests, pool)
            said.update(zip(left, pool.map(functools.partial(first_notice, reach, tests), left)))
    return said


def listed_survivors():
    """The names in survivors.md; each stands in a line of its own behind "- ", between double backquotes."""
    text = (HERE / "survivors.md").read_text() if (HERE / "survivors.md").exists() else ""
    return set(re.findall(r"^- ``(.+?)``", text, re.MULTILINE))


def print_table(said):
    print("folder   mutants  noticed  share")
    rows = collections.defaultdict(list)
    for mutation, notice in said.items():
        rows[mutation.file.parts[0]].append(bool(notice))
        rows["all"].append(bool(notice))
    for name in sorted(rows, key=lambda name: (name == "all", name)):
        print(f"{name:<8} {len(rows[name]):>7} {sum(rows[name]):>8} {100 * sum(rows[name]) / len(rows[name]):>5.1f}%")


def parsed():
    parser = argparse.ArgumentParser(usage=__doc__)
    parser.add_argument("--count", type=int, default=200)
    parser.add_argument("--seed", type=int, default=1)
    parser.add_argument("--jobs", type=int, default=os.cpu_count())
    parser.add_argument("--folders", default="config,package,profile")
    parser.add_argument("--near", action="store_true", help="only the tests of config, package and profile")
    parser.add_argument("--only", help="numbers of mutants, as an earlier run has printed them")
    parser.add_argument("work", type=pathlib.Path)
    return parser.parse_args()


def main():
    options = parsed()
    work = options.work.resolve()
    folder = work / "sources/build/ci"
    chosen = build_mutants(work, folder, options.count, options.seed, options.folders.split(","))
    if options.only:
        numbers = {int(number) for number in options.only.split(",")}
        chosen = [each for each in chosen if each.number in numbers]
    said = try_all(Reach(work, folder), folder, chosen, (NEAR,) if options.near else (NEAR, FAR), options.jobs)
    (work / "results.txt").write_text("".join(
        f"{mutation.number}: {places.name_of(mutation)}: {notice or 'SURVIVES'}\n" for mutation, notice in said.items()))
    print_table(said)
    unlisted = {places.name_of(mutation) for mutation, notice in said.items() if not notice} - listed_survivors()
    sys.exit("survivors that are not listed:\n" + "\n".join(sorted(unlisted)) if unlisted else 0)


if __name__ == "__main__":
    main()
