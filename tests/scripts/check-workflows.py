#!/usr/bin/env python3
# SPDX-License-Identifier: Apache-2.0
"""check-workflows.py FOLDER: what holds for each workflow in the folder, and for the other files of the platform beside
it. Tells what does not, and exits with 1."""

import pathlib
import re
import sys

import yaml

# A tag can be moved to other code, a commit cannot; the comment is for people.
PINNED_ACTION = re.compile(r"uses: [\w-]+/[\w-]+@[0-9a-f]{40} # v\d+\.\d+\.\d+$")
OWN_SCRIPT = re.compile(r"(?:^|[\s;])((?:\./|packaging/|scripts/)[\w./-]+)")
READER = {"contents": "read"}
# Only who publishes a release may more: write the release, and sign who made what.
MORE_PERMISSIONS = {("release.yml", "publish"): {"contents": "write", "id-token": "write", "attestations": "write"}}


def step_problems(step, root):
    action = step.get("uses", "")
    if action.startswith("actions/checkout@") and step.get("with", {}).get("persist-credentials") is not False:
        yield "a checkout leaves its credentials to the steps that follow"
    for script in OWN_SCRIPT.findall(step.get("run", "")):
        if not (root / script).is_file():
            yield f"{script} is started and does not exist"
    if "secrets." in step.get("run", ""):
        yield "a secret stands in a command line instead of the environment"


def job_problems(file, name, job, root):
    if "timeout-minutes" not in job:
        yield "it has no time limit"
    if job.get("permissions", READER) != MORE_PERMISSIONS.get((file.name, name), READER):
        yield "its permissions are not exactly those that it needs"
    for step in job["steps"]:
        yield from step_problems(step, root)


def workflow_problems(file, root):
    text = file.read_text()
    for line in text.splitlines():
        if "uses:" in line and not PINNED_ACTION.search(line):
            yield f"\"{line.strip()}\" is not pinned to a commit with its version behind it"
    workflow = yaml.safe_load(text)
    if workflow.get("permissions") != READER:
        yield "the permissions are not those of a reader"
    for name, job in workflow["jobs"].items():
        yield from (f"the job {name}: {problem}" for problem in job_problems(file, name, job, root))


def form_problems(file):
    form = yaml.safe_load(file.read_text())
    if file.name == "config.yml":
        return
    if not {"name", "description", "body"} <= form.keys():
        yield "a form has a name, a description and a body"
    for field in form.get("body", []):
        if field["type"] != "markdown" and not {"id", "attributes"} <= field.keys():
            yield f"a field has no id or nothing that describes it: {field}"


def all_problems(folder):
    root = folder.parent.parent
    for file in sorted(folder.glob("*.yml")):
        yield from (f"{file}: {problem}" for problem in workflow_problems(file, root))
    for file in sorted((folder.parent / "ISSUE_TEMPLATE").glob("*.yml")):
        yield from (f"{file}: {problem}" for problem in form_problems(file))
    updates = yaml.safe_load((folder.parent / "dependabot.yml").read_text())["updates"]
    if [entry["package-ecosystem"] for entry in updates] != ["github-actions"]:
        yield "dependabot.yml does not keep the actions up to date"


def main(folder):
    found = list(all_problems(folder))
    if not list(folder.glob("*.yml")):
        found.append(f"{folder}: no workflows")
    print(*found, sep="\n", end="\n" if found else "")
    return 1 if found else 0


if __name__ == "__main__":
    sys.exit(main(pathlib.Path(sys.argv[1]).resolve()))
