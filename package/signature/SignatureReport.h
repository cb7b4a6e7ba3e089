// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "core/Result.h"
#include "package/signature/CertificateChain.h"
#include "package/signature/SignatureTimestamp.h"

#include <QDateTime>
#include <QList>
#include <QString>
#include <QStringList>

#include <optional>

/// Whether a part of a signature is there and right.
enum class Held { Absent, Yes, No };

/// All that is told of a package's signature.
struct SignatureReport
{
    bool isSigned = false;
    Held digest = Held::Absent; ///< of the table of contents
    Held rsa = Held::Absent;
    Held cms = Held::Absent;
    QList<CertificateInfo> chain; ///< the signer first
    TrustAnchor anchor = TrustAnchor::None;
    std::optional<SignatureTimestamp> timestamp;
    QDateTime judgedAt; ///< UTC: the timestamp's time, when it counts, or now
    QString team;       ///< of the signer
    bool hasTicket = false;
    QStringList breaks; ///< why it does not hold, as clauses; none when it does
    QStringList doubts; ///< why it should not be trusted although it holds, as clauses

    bool holds() const { return isSigned && breaks.isEmpty(); }
    bool isTrusted() const { return holds() && doubts.isEmpty(); }
};

/// Reads and judges the signature of a flat package. Blocks for as long as its table of contents takes;
/// members are not read. A problem only for what cannot be read or is no flat package.
Result<SignatureReport> reportSignature(const QString &package, const TrustAnchors &anchors);
