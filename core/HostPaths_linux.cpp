// SPDX-License-Identifier: Apache-2.0
#include "core/HostPaths.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>

namespace {

QString standInFolder()
{
    const QString configured = qEnvironmentVariable("PCT_HOSTTOOLS");
    if (!configured.isEmpty())
        return configured;
    return QDir::cleanPath(QCoreApplication::applicationDirPath() + QStringLiteral("/../libexec/pct"));
}

} // namespace

QString HostPaths::command(const QString &nameOrPath)
{
    const QFileInfo wanted(nameOrPath);
    if (!wanted.isAbsolute() || wanted.isExecutable())
        return nameOrPath;
    return standInFolder() + QLatin1Char('/') + wanted.fileName();
}

void HostPaths::putStandInsFirst()
{
    const QByteArray folder = QFile::encodeName(standInFolder());
    const QByteArray path = qgetenv("PATH");
    if (path == folder || path.startsWith(QByteArray(folder + ':')))
        return;
    qputenv("PATH", path.isEmpty() ? folder : folder + ':' + path);
}

QString HostPaths::managedPreferences()
{
    return qEnvironmentVariable("PCT_MANAGED_PREFERENCES", QStringLiteral("/Library/Managed Preferences"));
}
