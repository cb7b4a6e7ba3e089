// SPDX-License-Identifier: Apache-2.0
#include "app/Translation.h"

#include "core/QtCompatibility.h"
#include "profile/UserDefaults.h"
#include "translations/Translations.h"

#include <QCoreApplication>
#include <QLocale>
#include <QTranslator>

#include <memory>

namespace {

const QLatin1String systemLanguage("system");

QLocale localeOf(const QString &language)
{
    return language == systemLanguage ? QLocale::system() : QLocale(language);
}

bool isEnglish(const QString &language)
{
    return language.section(QLatin1Char('-'), 0, 0) == QLatin1String("en");
}

bool install(QCoreApplication &application, const QString &catalogue, const QString &language,
             const QString &folder)
{
    auto translator = std::make_unique<QTranslator>(&application);
    return translator->load(catalogue + QLatin1Char('_') + language, folder) &&
           QCoreApplication::installTranslator(translator.release());
}

} // namespace

QString chosenLanguage()
{
    const QByteArray variable("PCT_LANGUAGE");
    return qEnvironmentVariableIsSet(variable) ? qEnvironmentVariable(variable) : readLanguageChoice();
}

bool installTranslation(QCoreApplication &application, const QString &language)
{
    if (language.isEmpty())
        return true;
    initPctTranslations();
    // In the order of preference: who reads English rather than German gets English.
    const QStringList wanted = localeOf(language).uiLanguages();
    for (QString candidate : wanted) {
        if (isEnglish(candidate))
            return true;
        candidate.replace(QLatin1Char('-'), QLatin1Char('_'));
        if (!install(application, QStringLiteral("pct"), candidate, QStringLiteral(":/translations")))
            continue;
        // The buttons and dialogs that Qt makes; without its catalogue they stay English.
        install(application, QStringLiteral("qtbase"), candidate, QtCompatibility::translationsFolder());
        return true;
    }
    return language == systemLanguage;
}
