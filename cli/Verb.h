// SPDX-License-Identifier: Apache-2.0
#pragma once

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
};

/// Says what an installer package offers to a build.
Verb checkVerb();

/// Makes a customized installer package.
Verb buildVerb();

/// Prints the settings that a file holds.
Verb showVerb();
