// SPDX-License-Identifier: Apache-2.0
#include "cli/description/Descriptions.h"

QString filledForm(QString form, const QHash<QString, QStringList> &parts)
{
    for (auto part = parts.begin(); part != parts.end(); ++part)
        form.replace(QStringLiteral("@%1@\n").arg(part.key()),
                     part.value().join(QLatin1Char('\n')) + QLatin1Char('\n'));
    return form;
}

QString quoted(const QString &text)
{
    return QLatin1Char('\'') + QString(text).replace(QLatin1Char('\''), QStringLiteral("'\\''")) +
           QLatin1Char('\'');
}

QStringList wordsBelow(const VerbTable &table, const QString &name)
{
    QStringList words;
    for (const Verb &verb : verbsBelow(table, name))
        words << lastWord(verb);
    return words;
}
