// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "core/Result.h"
#include "package/verification/Deviation.h"

#include <QByteArray>

#include <optional>

/// A file by the name and the SHA-256 that a statement has of it; without digits where it is not known.
struct StatedFile
{
    QString name;
    QByteArray sha256;
};

/// Of what a package was made.
struct ProvenanceFacts
{
    StatedFile package;
    QString product;
    StatedFile vendor;
    StatedFile settings;              ///< without a digest for the defaults
    StatedFile document;              ///< that the package carries
    std::optional<qint64> sourceDate; ///< SOURCE_DATE_EPOCH of the build
    QString toolVersion;
};

/// The file by its name, with its digest; nothing for no path.
Result<StatedFile> statedFile(const QString &path);

/// An in-toto statement with SLSA provenance v1. Equal facts give equal bytes: neither the time of the run
/// nor the folders of the machine are part of it.
QByteArray provenanceStatement(const ProvenanceFacts &facts);

/// In what a statement contradicts the facts that are known: the package, and where their digests are there
/// the vendor's package and the settings. Codes: "provenance-unreadable", "provenance-type",
/// "provenance-parameter", "provenance-package", "provenance-vendor", "provenance-settings". A statement
/// proves nothing by itself: who vouches for it has to sign it.
Deviations contradictions(const QByteArray &statement, const ProvenanceFacts &known);
