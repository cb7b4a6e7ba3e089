// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "cli/ExitCode.h"
#include "cli/VerbLine.h"

#include <QLatin1String>

class Console;

/// One verb of `pct`. The verbs are listed in Verbs.cpp.
struct Verb
{
    QLatin1String name;
    QLatin1String summary; ///< its line in the general help

    VerbSyntax (*syntax)();

    /// Does the work and returns the exit code. Called only with a line that has no problem.
    int (*run)(const VerbLine &line, Console &console);

    int trouble = ExitCode::refused; ///< exit code when its output could not be written
};

/// Says what an installer package offers to a build.
Verb checkVerb();

/// Makes a customized installer package.
Verb buildVerb();

/// Makes a configuration profile.
Verb profileVerb();

/// Prints the settings that a file holds.
Verb showVerb();

/// Says in which settings two files differ.
Verb diffVerb();

/// Lists the identities that can sign a profile.
Verb identitiesVerb();
