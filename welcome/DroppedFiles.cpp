// SPDX-License-Identifier: Apache-2.0
#include "welcome/DroppedFiles.h"

#include "core/Logging.h"

#include <QFileInfo>
#include <QMimeData>
#include <QUrl>

QStringList DroppedFiles::paths(const QMimeData *data)
{
    QStringList paths;
    const QList<QUrl> urls = data->urls();
    for (const QUrl &url : urls)
        paths.append(url.toLocalFile());
    return paths;
}

QString DroppedFiles::firstWithSuffix(const QMimeData *data, const QString &suffix)
{
    const QStringList candidates = paths(data);
    for (const QString &path : candidates) {
        if (QFileInfo(path).suffix() == suffix)
            return path;
    }
    return {};
}

void DroppedFiles::log(const QString &path)
{
    qCDebug(logWelcome) << "Dropped file:" << path;
}
