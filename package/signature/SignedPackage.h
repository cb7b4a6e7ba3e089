// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "core/Result.h"

#include <QByteArray>
#include <QList>
#include <QStringList>

#include <optional>

/// A signature as a package has it.
struct PackageSignatureBytes
{
    QByteArray bytes;               ///< the reserved zeros behind it included
    QList<QByteArray> certificates; ///< DER, the signer's first
};

/// What a flat package holds about who signed it, as it stands there and without any judgement.
struct SignedPackage
{
    QByteArray digest;       ///< of the compressed table of contents, computed here
    QByteArray storedDigest; ///< what the package says that it is
    std::optional<PackageSignatureBytes> rsa;
    std::optional<PackageSignatureBytes> cms;
    bool hasTicket = false; ///< of the notary service, stapled to the end
    QStringList flaws;      ///< why a signature could not be read, as clauses about the package

    bool isSigned() const { return rsa || cms || !flaws.isEmpty(); }

    /// Reads the table of contents once, in a time and memory that hostile packages cannot enlarge. A problem
    /// only for what cannot be read or is no flat package.
    static Result<SignedPackage> read(const QString &path);
};
