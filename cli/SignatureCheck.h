// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "cli/Console.h"
#include "core/Result.h"
#include "package/signature/SignatureReport.h"

#include <QJsonObject>
#include <QList>
#include <QString>

struct Option;
class VerbLine;

// What verbs say of the signature of a package, and what they may demand of it.

/// What is demanded of a signature beyond that it does not lie.
struct SignatureDemands
{
    bool isSigned = false; ///< it is there, holds and is trusted
    QString team;          ///< the same, and this is the signer's team; empty for any
    QString anchors;       ///< file with further trust anchors, or empty

    bool isTrusted() const { return isSigned || !team.isEmpty(); }
};

/// --require-signed, the team's option and --trust-anchors.
QList<Option> demandOptions(QLatin1String teamOption);
SignatureDemands demandsOf(const VerbLine &line, QLatin1String teamOption);

/// Reads and judges the signature; a problem also for trust anchors that cannot be read.
Result<SignatureReport> signatureOf(const QString &package, const SignatureDemands &demands);

/// Whether the demands are met, in a line that says why not. A signature that does not hold meets only no
/// demands.
Result<> meets(const QString &package, const SignatureReport &report, const SignatureDemands &demands);

/// A warning "signature-broken" when there is a signature that does not hold.
QList<BuildWarning> signatureWarnings(const SignatureReport &report);

QJsonObject signatureObject(const SignatureReport &report);
QList<Console::Row> signatureRows(const SignatureReport &report);
