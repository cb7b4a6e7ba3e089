#!/usr/bin/env python3
# SPDX-License-Identifier: Apache-2.0
"""mutate.py [--count N] [--seed S] [--jobs J] [--folders config,package,profile] WORK

Asks whether the tests would notice a mistake. In a copy of the last commit below WORK, conditions are negated, results
turned round, statements dropped and members of the record swapped, N of them drawn by chance. Each lies behind a number
in one build; the tests that its folder can affect run with one number after another, nearest first, until one fails.
Prints a line for each mutant and the share that was noticed, and writes WORK/survivors.txt. A build that exists in WORK
is used again: remove it after a change of the sources.

Some mutants change nothing that can be seen, so not every survivor is a gap in the tests."""

import argparse
import collections
import os
import pathlib
import random
import re
import shutil
import subprocess
import sys

ROOT = pathlib.Path(__file__).resolve().parents[2]
HERE = "tests/mutation/Mutant.h"

# Which tests a folder's mistakes can reach, nearest first: patterns for ctest.
TESTS = {
    "config": ("^tst_(AttributeOrder|Config|DefaultPlugins|EditorXml|Product|Xml|Record)", "^tst_(CollectRecord|EverySetting|WindowAndPct)",
               "^tst_(Profile|ConfigGenerator|Pct)", "^tst_(Package|OpenPackage|BuildSteps)"),
    "package": ("^tst_(Build|Package|Script)", "^tst_Pct", "^tst_(OpenPackage|WindowAndPct)"),
    "profile": ("^tst_(Cocoa|ConfigGenerator|Profile|Property|Payload|Hostile|LastOpen|SignDialog|Foundation|Signed)",
                "^tst_Pct", "^tst_(EverySetting|WindowAndPct)"),
}

# (number of the line, from, to): the text in between is replaced by another with the mutant's number in it
Mutation = collections.namedtuple("Mutation", "file line start end kind replacement")


def closing(text, start):
    """Where the bracket that opens at `start` closes on the same line, or -1."""
    depth = 0
    for at in range(start, len(text)):
        depth += {"(": 1, ")": -1}.get(text[at], 0)
        if depth == 0:
            return at
    return -1


def negated_conditions(line):
    for match in re.finditer(r"\b(?:if|while) \(", line):
        start = match.end() - 1
        end = closing(line, start)
        condition = line[start + 1:end]
        if end < 0 or ";" in condition or re.search(r"[^=!<>]=[^=]", condition) or line.lstrip().startswith("#"):
            continue
        yield start + 1, end, "negated condition", f"isMutant(@) != static_cast<bool>({condition})"


def turned_results(line):
    for match in re.finditer(r"\breturn (true|false);", line):
        yield match.start(1), match.end(1), "turned result", f"isMutant(@) != {match[1]}"
    match = re.fullmatch(r"(\s+return )(!?[\w.:>()-]+(?: [=!<>]=? [\w.:'>()-]+)?);\s*", line)
    if match and re.search(r" [=!<>]=? |^!", match[2]):
        yield match.start(2), match.end(2), "turned result", f"isMutant(@) != ({match[2]})"


def dropped_statements(line):
    match = re.fullmatch(r"(\s{4,})((?:[A-Za-z_][\w.:]*|[\w.]+->\w+)\(.*\));\s*", line)
    if match and closing(match[2], match[2].index("(")) == len(match[2]) - 1 and "Q_" not in line and "qC" not in line:
        yield match.start(2), match.end(2), "dropped statement", f"isMutant(@) ? void() : static_cast<void>({match[2]})"


# A member of the record as an argument of a template, as a pointer, and in a record at hand.
MEMBERS = (re.compile(r"\b\w+<&(?:Data|EditorXmlData)::(?P<member>\w+)>"), re.compile(r"&EditorXmlData::(?P<member>\w+)"),
           re.compile(r"\bdata\.(?P<member>\w+)\b"))


def swapped_members(line, members):
    for pattern in MEMBERS:
        for match in pattern.finditer(line):
            mates = members.get(match["member"])
            if mates:
                other = mates[(mates.index(match["member"]) + 1) % len(mates)]
                swapped = match[0].replace("::" + match["member"], "::" + other).replace("." + match["member"], "." + other)
                yield match.start(), match.end(), "swapped member", f"(isMutant(@) ? {swapped} : {match[0]})"


def record_members(root):
    """Each member of the record, with all of the same type."""
    by_type = collections.defaultdict(list)
    for match in re.finditer(r"^    (bool|int|QString) (\w+)", (root / "config/EditorXmlData.h").read_text(), re.MULTILINE):
        by_type[match[1]].append(match[2])
    return {member: members for members in by_type.values() for member in members if len(members) > 1}


def mutations_of(root, path, members):
    for number, line in enumerate((root / path).read_text().splitlines()):
        if line.strip().startswith("//"):
            continue
        found = [*negated_conditions(line), *turned_results(line), *dropped_statements(line), *swapped_members(line, members)]
        if found:
            yield from (Mutation(path, number, *each) for each in found)


def all_mutations(root, folders):
    members = record_members(root)
    for folder in folders:
        for path in sorted((root / folder).rglob("*")):
            if path.suffix in (".cpp", ".mm") and "_mac" not in path.name:
                yield from mutations_of(root, path.relative_to(root), members)


def drawn(mutations, count, seed):
    """One on a line at most, so that they do not get into each other's way."""
    by_line = {}
    for mutation in random.Random(seed).sample(mutations, len(mutations)):
        by_line.setdefault((mutation.file, mutation.line), mutation)
    return sorted(list(by_line.values())[:count])


def write_mutants(originals, sources, chosen, left_out):
    """The files with all mutants but those that do not compile; numbers stay as they are."""
    by_file = collections.defaultdict(list)
    for number, mutation in enumerate(chosen, 1):
        by_file[mutation.file].append((number, mutation))
    for path, numbered in by_file.items():
        lines = (originals / path).read_text().splitlines()
        for number, mutation in numbered:
            if number not in left_out:
                line = lines[mutation.line]
                lines[mutation.line] = line[:mutation.start] + mutation.replacement.replace("@", str(number)) + line[mutation.end:]
        text = "\n".join(lines) + "\n"
        text = text.replace("#include", f'#include "{HERE}"\n#include', 1)
        if (sources / path).read_text() != text:
            (sources / path).write_text(text)


def build(folder):
    """Runs the build, and gives the files and lines that do not compile."""
    result = subprocess.run(["cmake", "--build", folder, "--", "-k", "0"], capture_output=True, encoding="utf-8")
    wrong = set(re.findall(r"^(?:\S*/)?((?:config|package|profile)/\S+?):(\d+):\d+: error", result.stdout, re.MULTILINE))
    if result.returncode != 0 and not wrong:
        sys.exit(result.stdout[-4000:])
    return {(pathlib.Path(path), int(line) - 2) for path, line in wrong}


def build_mutants(originals, sources, folder, chosen):
    left_out = set()
    while True:
        write_mutants(originals, sources, chosen, left_out)
        wrong = build(folder)
        if not wrong:
            return left_out
        more = {number for number, mutation in enumerate(chosen, 1) if (mutation.file, mutation.line) in wrong}
        if not more - left_out:
            sys.exit(f"these lines do not compile: {sorted(wrong)}")
        left_out |= more


def ctest(folder, pattern, jobs, number):
    environment = {**os.environ, "PCT_MUTANT": str(number)}
    command = ["ctest", "--test-dir", folder, "-R", pattern, "-E", "AppleSyntax", "--stop-on-failure", "--timeout", "120",
               "--parallel", str(jobs)]
    return subprocess.run(command, env=environment, capture_output=True, encoding="utf-8")


def killer(folder, mutation, jobs, number):
    """The first test that fails with the mutant, or None."""
    for pattern in TESTS[mutation.file.parts[0]]:
        result = ctest(folder, pattern, jobs, number)
        if result.returncode != 0:
            failed = re.search(r"^\s*\d+ - (\S+)", result.stdout, re.MULTILINE)
            return failed[1] if failed else "?"
    return None


def try_all(originals, folder, chosen, left_out, jobs):
    survivors = []
    for number, mutation in enumerate(chosen, 1):
        if number in left_out:
            continue
        line = (originals / mutation.file).read_text().splitlines()[mutation.line].strip()
        place = f"{number}: {mutation.file}:{mutation.line + 1}: {mutation.kind}: {line}"
        found_by = killer(folder, mutation, jobs, number)
        print(f"{place}: {found_by or 'SURVIVES'}", flush=True)
        if not found_by:
            survivors.append(place)
    return survivors


def require_sound_tests(folder, folders, jobs):
    for name in folders:
        for pattern in TESTS[name]:
            result = ctest(folder, pattern, jobs, 0)
            if result.returncode != 0:
                sys.exit(f"tests fail without any mutant:\n{result.stdout[-2000:]}")


def main():
    parser = argparse.ArgumentParser(usage=__doc__)
    parser.add_argument("--count", type=int, default=200)
    parser.add_argument("--seed", type=int, default=1)
    parser.add_argument("--jobs", type=int, default=os.cpu_count())
    parser.add_argument("--folders", default="config,package,profile")
    parser.add_argument("work", type=pathlib.Path)
    options = parser.parse_args()
    folders = options.folders.split(",")
    work = options.work.resolve()
    sources, originals, folder = work / "sources", work / "originals", work / "build"
    if not folder.exists():
        for target in (sources, originals):
            shutil.rmtree(target, ignore_errors=True)
            subprocess.run(["git", "clone", "--quiet", "--shared", ROOT, target], check=True)
        shutil.copyfile(ROOT / HERE, sources / HERE)
        subprocess.run(["cmake", "-S", sources, "-B", folder, "-G", "Ninja", "-DCMAKE_BUILD_TYPE=Release"], check=True,
                       capture_output=True)
    chosen = drawn(list(all_mutations(originals, folders)), options.count, options.seed)
    left_out = build_mutants(originals, sources, folder, chosen)
    require_sound_tests(folder, folders, options.jobs)
    survivors = try_all(originals, folder, chosen, left_out, options.jobs)
    tried = len(chosen) - len(left_out)
    (work / "survivors.txt").write_text("".join(line + "\n" for line in survivors))
    print(f"{tried - len(survivors)} of {tried} mutants were noticed ({100 * (tried - len(survivors)) / tried:.1f} %), "
          f"{len(left_out)} did not compile")


if __name__ == "__main__":
    main()
