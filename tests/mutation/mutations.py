# SPDX-License-Identifier: Apache-2.0
"""Finds the places where a small mistake can be made, and writes the mistakes into the sources."""

import collections
import hashlib
import pathlib
import re

HEADER = "tests/mutation/Mutant.h"

# `start` and `end` are the part of the line that gives way to `replacement`, in which "<n>" is the mutant's number.
# `same` counts the mutations before it that read alike: what a mutation is called by does not depend on line numbers.
Mutation = collections.namedtuple("Mutation", "number file line start end kind text same replacement")


def name_of(mutation):
    again = f" ({mutation.same + 1})" if mutation.same else ""
    return f"{mutation.file}: {mutation.kind}: {mutation.text}{again}"


def closing(text, start):
    """Where the bracket that opens at `start` closes on the same line, or -1."""
    depth = 0
    for at in range(start, len(text)):
        depth += {"(": 1, ")": -1}.get(text[at], 0)
        if depth == 0:
            return at
    return -1


def negated_conditions(line, _before, _members):
    for match in re.finditer(r"\b(?:if|while) \(", line):
        start = match.end() - 1
        end = closing(line, start)
        condition = line[start + 1:end]
        if end < 0 or ";" in condition or re.search(r"[^=!<>]=[^=]", condition) or line.lstrip().startswith("#"):
            continue
        yield start + 1, end, "negated condition", f"isMutant(<n>) != static_cast<bool>({condition})"


def turned_results(line, _before, _members):
    for match in re.finditer(r"\breturn (true|false);", line):
        yield match.start(1), match.end(1), "turned result", f"isMutant(<n>) != {match[1]}"
    match = re.fullmatch(r"(\s+return )(!?[\w.:>()-]+(?: [=!<>]=? [\w.:'>()-]+)?);\s*", line)
    if match and re.search(r" [=!<>]=? |^!", match[2]):
        yield match.start(2), match.end(2), "turned result", f"isMutant(<n>) != ({match[2]})"


def dropped_statements(line, before, _members):
    if not before.rstrip().endswith((";", "{", "}", ":", ")", "else")):
        return  # goes on what stands before
    match = re.fullmatch(r"(\s{4,})((?:[A-Za-z_][\w.:]*|[\w.]+->\w+)\(.*\));\s*", line)
    if match and closing(match[2], match[2].index("(")) == len(match[2]) - 1 and "Q_" not in line and "qC" not in line:
        yield match.start(2), match.end(2), "dropped statement", f"isMutant(<n>) ? void() : static_cast<void>({match[2]})"


# A member of the record as an argument of a template, as a pointer, and in a record at hand.
MEMBERS = (re.compile(r"\b\w+<&(?:Data|EditorXmlData)::(?P<member>\w+)>"),
           re.compile(r"(?<!<)&(?:Data|EditorXmlData)::(?P<member>\w+)"), re.compile(r"\bdata\.(?P<member>\w+)\b"))


def swapped_members(line, _before, members):
    for pattern in MEMBERS:
        for match in pattern.finditer(line):
            for other in members.get(match["member"], []):
                swapped = match[0].replace("::" + match["member"], "::" + other).replace("." + match["member"], "." + other)
                yield match.start(), match.end(), f"swapped with {other}", f"(isMutant(<n>) ? {swapped} : {match[0]})"


KINDS = (negated_conditions, turned_results, dropped_statements, swapped_members)


def record_members(root):
    """Each member of the record, with the one of the same type that it could be mistaken for."""
    by_type = collections.defaultdict(list)
    record = (root / "config/EditorXmlData.h").read_text().partition("struct EditorXmlData")[2]
    for match in re.finditer(r"^    (bool|int|QString) (\w+)", record, re.MULTILINE):
        by_type[match[1]].append(match[2])
    return {member: [mates[(place + 1) % len(mates)]]
            for mates in by_type.values() if len(mates) > 1 for place, member in enumerate(mates)}


def mutations_in(root, folders):
    """(file, line, start, end, kind, text, replacement) of everything that can be changed."""
    members = record_members(root)
    for folder in folders:
        for path in sorted((root / folder).rglob("*")):
            if path.suffix not in (".cpp", ".mm") or "_mac" in path.name:
                continue
            before = ";"
            for place, line in enumerate(path.read_text().splitlines()):
                if not line.strip() or line.strip().startswith("//"):
                    continue
                for kind in KINDS:
                    for start, end, name, replacement in kind(line, before, members):
                        yield path.relative_to(root), place, start, end, name, line.strip(), replacement
                before = line


def all_mutations(root, folders):
    seen = collections.Counter()
    found = []
    for number, (file, line, start, end, kind, text, replacement) in enumerate(mutations_in(root, folders), 1):
        alike = (file, kind, text)
        found.append(Mutation(number, file, line, start, end, kind, text, seen[alike], replacement))
        seen[alike] += 1
    return found


def drawn(mutations, count, seed):
    """Drawn by what they are called, so that a change of the sources elsewhere draws no others. One on a line at most:
    they must not get into each other's way."""
    by_chance = sorted(mutations, key=lambda each: hashlib.sha256(f"{seed} {name_of(each)}".encode()).digest())
    by_line = {}
    for mutation in by_chance:
        by_line.setdefault((mutation.file, mutation.line), mutation)
    return sorted(list(by_line.values())[:count])


def mutated(text, mutations):
    """The text of a file with its mutants, each behind its number. There is one line more than before, at the top."""
    lines = text.splitlines()
    for mutation in mutations:
        line = lines[mutation.line]
        changed = mutation.replacement.replace("<n>", str(mutation.number))
        lines[mutation.line] = line[:mutation.start] + changed + line[mutation.end:]
    return f'#include "{HEADER}"\n' + "\n".join(lines) + "\n"


def not_compiling(chosen, errors):
    """The mutants that are nearest to the places that the compiler complains about."""
    wrong = []
    for path, line in re.findall(r"^(?:\S*/)?((?:config|package|profile)/\S+?):(\d+):\d+: error", errors, re.MULTILINE):
        near = [each for each in chosen if each.file == pathlib.Path(path)]
        wrong += sorted(near, key=lambda each: abs(each.line + 2 - int(line)))[:1]
    return wrong
