// SPDX-License-Identifier: Apache-2.0
#include "app/QtTranslations.h"

#include <QLibraryInfo>

QString qtTranslationsFolder()
{
    return QLibraryInfo::location(QLibraryInfo::TranslationsPath);
}
