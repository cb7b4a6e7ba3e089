// SPDX-License-Identifier: Apache-2.0
#include "project/Placeholders.h"

#include "core/NearestWord.h"
#include "core/PrintableText.h"

#include <QRegularExpression>

namespace {

const QString opening = QStringLiteral("${");

QStringList knownNames()
{
    return {Placeholders::variant, Placeholders::product, Placeholders::vendorVersion};
}

const QRegularExpression &form()
{
    static const QRegularExpression placeholder(QStringLiteral("\\$\\{([^{}]*)\\}"));
    return placeholder;
}

} // namespace

bool Placeholders::areIn(const QString &text)
{
    return text.contains(opening);
}

Result<> Placeholders::check(const QString &text)
{
    QString rest = text;
    for (auto matches = form().globalMatch(text); matches.hasNext();) {
        const QString name = matches.next().captured(1);
        if (!knownNames().contains(name))
            return Problem{{},
                           QStringLiteral("there is no ${%1}%2; there are ${%3}")
                               .arg(printableStart(name, 64), nearestHint(name, knownNames()),
                                    knownNames().join(QStringLiteral("}, ${")))};
    }
    rest.remove(form());
    return areIn(rest) ? Result<>(Problem{{}, QStringLiteral("\"${\" has no end")}) : Result<>();
}

QString Placeholders::filled(const QString &text, const Values &values)
{
    QString result = text;
    for (auto value = values.begin(); value != values.end(); ++value)
        result.replace(opening + value.key() + QLatin1Char('}'), value.value());
    return result;
}
