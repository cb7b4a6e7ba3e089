// SPDX-License-Identifier: Apache-2.0
#include "core/QtCompatibility.h"

#include <QLibraryInfo>

void QtCompatibility::useHighDpiPixmaps()
{
    // Qt 6 always does, and the attribute that asks for it is deprecated.
}

QString QtCompatibility::translationsFolder()
{
    return QLibraryInfo::path(QLibraryInfo::TranslationsPath);
}
