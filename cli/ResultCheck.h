// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "cli/Console.h"
#include "cli/Option.h"
#include "package/verification/ResultVerification.h"

#include <QJsonObject>

class VerbLine;

// What verbs say of a customized package and the vendor's that it was made of.

/// What came of comparing the two, as far as it came.
struct ResultCheck
{
    Result<> verdict;
    std::optional<ResultVerification> verification;
};

/// --vendor and what goes with it.
QList<Option> resultOptions();

/// That the others come with --vendor.
Result<> checkResultOptions(const VerbLine &line);

/// Judges the package of a line that has --vendor or --provenance.
ResultCheck checkResult(const VerbLine &line);

/// The same for a package at any path.
ResultCheck checkResult(const VerificationRequest &request);

QJsonObject verificationObject(const ResultVerification &verification);
QList<Console::Row> verificationRows(const ResultVerification &verification);
