#!/usr/bin/env python3
# SPDX-License-Identifier: Apache-2.0
"""check-workflows.py FOLDER: what holds for each workflow in the folder. Tells what does not, and exits with 1."""

import pathlib
import re
import sys

import yaml

PINNED_ACTION = re.compile(r"^[\w-]+/[\w-]+@v[0-9]+$")
OWN_SCRIPT = re.compile(r"(?:^|[\s;])((?:\./|packaging/|scripts/)[\w./-]+)")


def step_problems(step, root):
    action = step.get("uses")
    if action and not PINNED_ACTION.match(action):
        yield f"the action {action} is not pinned to a major version"
    if action and action.startswith("actions/checkout@") and step.get("with", {}).get("persist-credentials") is not False:
        yield "a checkout leaves its credentials to the steps that follow"
    for script in OWN_SCRIPT.findall(step.get("run", "")):
        if not (root / script).is_file():
            yield f"{script} is started and does not exist"
    if "secrets." in step.get("run", ""):
        yield "a secret stands in a command line instead of the environment"


def problems(workflow, root):
    if workflow.get("permissions") != {"contents": "read"}:
        yield "the permissions are not those of a reader"
    for name, job in workflow["jobs"].items():
        if "timeout-minutes" not in job:
            yield f"the job {name} has no time limit"
        if "permissions" in job:
            yield f"the job {name} has permissions of its own"
        for step in job["steps"]:
            yield from (f"the job {name}: {problem}" for problem in step_problems(step, root))


def main(folder):
    root = folder.parent.parent
    files = sorted(folder.glob("*.yml"))
    found = [f"{file}: {problem}" for file in files for problem in problems(yaml.safe_load(file.read_text()), root)]
    if not files:
        found = [f"{folder}: no workflows"]
    print(*found, sep="\n", end="\n" if found else "")
    return 1 if found else 0


if __name__ == "__main__":
    sys.exit(main(pathlib.Path(sys.argv[1]).resolve()))
