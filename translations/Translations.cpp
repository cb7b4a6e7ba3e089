// SPDX-License-Identifier: Apache-2.0
#include "translations/Translations.h"

#include <QDir>

void initPctTranslations()
{
    Q_INIT_RESOURCE(translations);
}
