// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "cli/ExitCode.h"
#include "cli/Option.h"
#include "core/Result.h"

#include <QJsonObject>
#include <QLatin1String>
#include <QList>
#include <QString>

#include <vector>

class Console;
class VerbLine;

/// One verb of `pct` and all that is said about it: the command line is read by it, and help, completions
/// and manual are made from it. -h and --help are part of every verb.
struct Verb
{
    QLatin1String name;    ///< a verb below another one is named with it: "config set"
    QLatin1String summary; ///< its line in lists of verbs

    /// Does the work and returns the exit code. Called only with a line that has no problem. Null for a verb
    /// that does nothing itself but has others below it.
    int (*run)(const VerbLine &line, Console &console) = nullptr;

    QString description{}; ///< plain text, one paragraph of help and manual
    QList<Option> options{};
    QList<Operand> operands{};

    /// What is wrong with a line that fits all this nevertheless, or empty; null when nothing can be.
    Result<> (*furtherCheck)(const VerbLine &line) = nullptr;

    int trouble = ExitCode::refused; ///< exit code when it could not begin, or its output not be written

    /// What --json writes when it could not begin; null for a verb whose JSON says nothing of problems.
    QJsonObject (*refusal)(const VerbLine &line, const Problem &problem) = nullptr;
};

/// The verbs in the order in which they are listed.
using VerbTable = std::vector<Verb>;

/// The verb of this full name, or null.
const Verb *findVerb(const VerbTable &table, const QString &name);

/// The verbs that follow the words `name`; those of the first level follow no words.
VerbTable verbsBelow(const VerbTable &table, const QString &name);

/// The last word of its name.
QString lastWord(const Verb &verb);

/// The verbs of `pct`. One row each; what a verb takes and does is in the file of its name.
const VerbTable &pctVerbs();

Verb checkVerb();
Verb buildVerb();
Verb profileVerb();
Verb plistVerb();
Verb showVerb();
Verb previewVerb();
Verb compareVerb();
Verb diffVerb();
Verb driftVerb();
Verb identitiesVerb();
Verb verifyVerb();
Verb configVerb();
Verb configNewVerb();
Verb configSetVerb();
Verb configUnsetVerb();
Verb configGetVerb();
Verb configNamesVerb();
Verb configCommandsVerb();
Verb signVerb();
Verb notarizeVerb();
Verb projectVerb();
Verb projectBuildVerb();
Verb projectCheckVerb();
Verb projectInitVerb();
Verb projectListVerb();
Verb projectSchemaVerb();
Verb lintVerb();
Verb schemaVerb();
