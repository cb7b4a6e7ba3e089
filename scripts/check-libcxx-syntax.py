#!/usr/bin/python3
# SPDX-License-Identifier: Apache-2.0
"""check-libcxx-syntax.py BUILD-FOLDER [FILE...]

Compiles, as far as to know that they are right, the C++ sources that a Mac compiles, too, with what a Mac has: clang,
its own C++ library (libc++) and Qt 6, and without anything that this Qt calls deprecated. A warning is an error. The
sources and their options are those of a configured and built folder; files named are checked instead of all.

Exit status: 0 all right, 1 mistakes found, 2 wrong usage, 77 clang or libc++ is missing. PCT_CLANG is the compiler.
"""
import concurrent.futures
import json
import os
import re
import shlex
import subprocess
import sys
import tempfile

ROOT = os.path.dirname(os.path.dirname(os.path.abspath(__file__)))
COMPILER = os.environ.get("PCT_CLANG", "clang++")
# Only Linux compiles these.
ELSEWHERE = re.compile(r"_linux\.cpp$|^(build|hosttools|welcome/webview/engine|tests/(hosttools|packaging))/"
                       r"|^tests/fuzz/fuzz_(cpio|toc)\.cpp$")
# Both names that Qt has had for it. Qt warns where it does not know its own version yet.
WITHOUT_DEPRECATED = ["-DQT_DISABLE_DEPRECATED_BEFORE=QT_VERSION", "-DQT_DISABLE_DEPRECATED_UP_TO=QT_VERSION"]
ALWAYS = ["-stdlib=libc++", "-Werror", "-Wno-#warnings", "-Wno-unused-command-line-argument",
          "-Wno-gnu-zero-variadic-macro-arguments", "-Wno-c++20-extensions"]


def compiler_works():
    probe = subprocess.run([COMPILER, "-stdlib=libc++", "-fsyntax-only", "-x", "c++", "-"], input=b"#include <vector>\n",
                           capture_output=True, check=False)
    return probe.returncode == 0


def options_of(command):
    """The options that matter to the language, and the precompiled header's source if there is one."""
    words, options, header = iter(shlex.split(command)), [], None
    for word in words:
        if word == "-isystem":
            options += [word, next(words)]
        elif word == "-include":
            header = next(words)
        elif re.match(r"-[DIW]|-std=|-fPIC", word) and word != "-Winvalid-pch":
            options.append(word)
    return options, header


def run(arguments):
    try:
        result = subprocess.run([COMPILER, *arguments, *ALWAYS], capture_output=True, text=True, check=False)
    except FileNotFoundError:
        return "%s is missing\n" % COMPILER
    return "" if result.returncode == 0 else result.stderr or "%s failed\n" % " ".join(arguments)


class Check:
    def __init__(self, commands, work):
        self.commands, self.work, self.headers = commands, work, {}

    def precompile(self, header):
        """Clang's own form of a header that the build precompiled with another compiler."""
        target = next(entry for entry in self.commands if entry["file"] == header + ".cxx")
        options, _ = options_of(target["command"])
        output = os.path.join(self.work, "%d.pch" % len(self.headers))
        self.headers[header] = output
        return run([*options, *WITHOUT_DEPRECATED, "-Wno-pragma-system-header-outside-header",
                    "-x", "c++-header", header, "-o", output])

    def source(self, entry):
        options, header = options_of(entry["command"])
        precompiled = ["-include-pch", self.headers[header]] if header else []
        return run([*options, *WITHOUT_DEPRECATED, *precompiled, "-fsyntax-only", entry["file"]])


def is_portable(path):
    relative = os.path.relpath(path, ROOT)
    return path.endswith(".cpp") and not relative.startswith("..") and not ELSEWHERE.search(relative)


def wanted(commands, files):
    """One entry for each source, also for those that several targets compile."""
    entries = {entry["file"]: entry for entry in commands}
    if not files:
        return [entry for path, entry in entries.items() if is_portable(path)]
    missing = [name for name in files if os.path.abspath(name) not in entries]
    if missing:
        sys.exit("check-libcxx-syntax: no source of this build: %s" % ", ".join(missing))
    return [entries[os.path.abspath(name)] for name in files]


def check(commands, files):
    entries = wanted(commands, files)
    headers = sorted({header for _, header in (options_of(entry["command"]) for entry in entries) if header})
    with tempfile.TemporaryDirectory() as work, concurrent.futures.ThreadPoolExecutor(os.cpu_count()) as pool:
        checker = Check(commands, work)
        problems = [*pool.map(checker.precompile, headers)]
        if not any(problems):
            problems = [*pool.map(checker.source, entries)]
    sys.stderr.write("".join(problems))
    return len(entries), any(problems)


def main(arguments):
    try:
        with open(os.path.join(arguments[0], "compile_commands.json"), encoding="utf-8") as file:
            commands = json.load(file)
    except (IndexError, OSError):
        print("usage: check-libcxx-syntax.py BUILD-FOLDER [FILE...]", file=sys.stderr)
        return 2
    if not compiler_works():
        print("check-libcxx-syntax: needs clang and libc++-dev", file=sys.stderr)
        return 77
    count, failed = check(commands, arguments[1:])
    if count == 0 or failed:
        return 1
    print("check-libcxx-syntax: %d files are right" % count)
    return 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
