// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "package/contents/ScriptsArchive.h"
#include "package/PackageInspection.h"

#include <QStringList>

#include <optional>

struct EditorXmlData;
struct Product;

/// What one release of a vendor's package is, as far as a deployment cares.
struct Release
{
    TableOfContents table;
    ScriptsInspection inspection;
    ScriptsMembers scripts;
    QString minimumSystem;     ///< of macOS, by the Distribution; may be empty
    QStringList architectures; ///< by the Distribution; may be empty
    /// Paths in the payload, when they were asked for.
    std::optional<QStringList> payload;

    /// Reads a package; the folder must exist, be empty and belong to the caller. Blocks on external
    /// commands.
    static Result<Release> read(const QString &package, const Product &product, bool readsPayload,
                                const QString &privateFolder);
};

/// Entries by path, without the archives of install scripts, which are compared member by member:
/// "Scripts/NAME" of those of the product.
struct ReleaseChanges
{
    QStringList added;
    QStringList removed;
    QStringList changed;
};
ReleaseChanges changesBetween(const Release &older, const Release &newer, const Product &product);

/// A setting that had an effect with the older release and has none with the newer one.
struct LostSetting
{
    QString name;
    QString text; ///< why, as a clause
};

/// Plug-ins are judged only where both payloads were read.
QList<LostSetting> settingsLost(const Release &older, const Release &newer, const EditorXmlData &settings);
