// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "cli/FileWarning.h"
#include "cli/Option.h"
#include "core/OutputFile.h"
#include "core/Result.h"

#include <QJsonObject>
#include <QList>

class Console;
class VerbLine;

// What the verbs have in common that make a signed package, --output, of another one, their operand.

/// How one of them ended.
struct SignedOutcome
{
    Result<> result;
    QList<FileWarning> warnings;
};

/// That one file is an installer package and the other can be made of it.
Result<> checkSignedPaths(const VerbLine &line);

/// The place of the output.
OutputFile signedOutput(const VerbLine &line);

/// What --json writes.
QJsonObject signedOutcomeObject(const VerbLine &line, const SignedOutcome &outcome);

/// Tells how it ended, and gives the exit code.
int tellSignedOutcome(const VerbLine &line, SignedOutcome outcome, Console &console);

/// --force, --json and --quiet.
QList<Option> signedOutputOptions(const QString &whenItFails);
