// SPDX-License-Identifier: Apache-2.0
#include "core/QtCompatibility.h"

#include <QCoreApplication>
#include <QLibraryInfo>

void QtCompatibility::useHighDpiPixmaps()
{
    QCoreApplication::setAttribute(Qt::AA_UseHighDpiPixmaps, true);
}

QString QtCompatibility::translationsFolder()
{
    return QLibraryInfo::location(QLibraryInfo::TranslationsPath);
}
