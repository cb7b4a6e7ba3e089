// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "core/Result.h"
#include "package/contents/Digest.h"

#include <QList>
#include <QString>

#include <optional>

/// What the table of contents of a flat package says of a file, folder or link in it.
struct ContentsEntry
{
    QString path;   ///< with slashes
    QString type;   ///< as the table has it: "file", "directory", "symlink", "hardlink", …
    QString target; ///< of a link; of a further name of a file that file's path
    std::optional<int> mode;
    std::optional<qint64> uid;
    std::optional<qint64> gid;
    qint64 offset = 0; ///< in the package file
    qint64 length = 0; ///< as it is packed
    qint64 size = 0;
    Checksum checksum; ///< of what it unpacks to; empty when the table has none
    QString encoding;  ///< how it is packed

    bool isFile() const { return type == QLatin1String("file"); }
    /// Whether it is the archive of install scripts of a component, or of a package that is a component.
    bool isScripts() const;
};

/// What a flat package holds, by its table of contents.
struct TableOfContents
{
    QString package;              ///< path of the file
    QList<ContentsEntry> entries; ///< in the table's order; paths may repeat

    /// The first entry with the path, or null.
    const ContentsEntry *find(const QString &path) const;

    /// What an entry unpacks to. A way of packing that is not known has no bytes.
    Bytes bytesOf(const ContentsEntry &entry) const;

    /// Reads the table of a package. Its checksum and signature are for others to judge.
    static Result<TableOfContents> read(const QString &package);
};

/// The contents of a small file in a package, such as "Distribution".
Result<QByteArray> contentsOf(const TableOfContents &table, const ContentsEntry &entry);
