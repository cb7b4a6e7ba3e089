// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "app/Translation.h"

#include <QCoreApplication>
#include <QTranslator>

/// Shows German texts while it lives.
class GermanTexts
{
public:
    GermanTexts()
    {
        if (!installTranslation(*QCoreApplication::instance(), QStringLiteral("de")))
            qFatal("there is no German translation");
    }
    ~GermanTexts() { removeTranslators(); }
    GermanTexts(const GermanTexts &) = delete;
    GermanTexts &operator=(const GermanTexts &) = delete;

    /// Translators leave the application when they are deleted.
    static void removeTranslators() { qDeleteAll(installed()); }

    static QList<QTranslator *> installed()
    {
        return QCoreApplication::instance()->findChildren<QTranslator *>();
    }
};
