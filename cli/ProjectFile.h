// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "cli/Option.h"
#include "project/Project.h"

class VerbLine;

/// The operand of verbs that work on a project.
Operand projectOperand();

/// Whether the name of a file says that it is one: YAML, or one of those below.
bool isProjectFile(const QString &path);

/// Reads the project that the line names, or that of the working folder: "pct-project.yaml",
/// "pct-project.yml" or "pct-project.json".
Result<Project> readProject(const VerbLine &line);
