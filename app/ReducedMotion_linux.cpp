// SPDX-License-Identifier: Apache-2.0
#include "app/ReducedMotion.h"

#include <QSettings>
#include <QStandardPaths>

bool prefersReducedMotion()
{
    // Where the large desktops keep it for programs that are not of their kind.
    for (const char *version : {"gtk-4.0", "gtk-3.0"}) {
        const QString file = QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation) +
                             QStringLiteral("/%1/settings.ini").arg(QLatin1String(version));
        const QSettings settings(file, QSettings::IniFormat);
        if (!settings.value(QStringLiteral("Settings/gtk-enable-animations"), true).toBool())
            return true;
    }
    return false;
}
