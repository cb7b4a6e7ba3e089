// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "package/contents/TableOfContents.h"

#include <QMap>

/// A member of an archive of install scripts.
struct ScriptsMember
{
    QString type; ///< "file", "directory", "symlink" or "other"
    int permissions = 0;
    qint64 uid = 0;
    qint64 gid = 0;
    qint64 size = 0;
    QByteArray sha256;  ///< digits; of a link that of its target
    QByteArray content; ///< of a script and a document up to 16 MiB; empty for all else

    bool isFile() const { return type == QLatin1String("file"); }
};

/// By path; the folder itself is ".".
using ScriptsMembers = QMap<QString, ScriptsMember>;

/// Reads a whole archive of install scripts. A problem when it cannot be read, has a path twice, or unpacks
/// to more than 512 MiB.
Result<ScriptsMembers> readScripts(const TableOfContents &table, const ContentsEntry &entry);
