// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QString>
#include <QStringList>

class QMimeData;

/// The files of a drag or drop.
namespace DroppedFiles {

/// The local path of every URL, in order; empty for a URL that is no local file.
QStringList paths(const QMimeData *data);

/// The first local file whose suffix (what follows the last dot) is `suffix`, case included; empty for none.
QString firstWithSuffix(const QMimeData *data, const QString &suffix);

/// Notes in the log which file was dropped.
void log(const QString &path);

} // namespace DroppedFiles
